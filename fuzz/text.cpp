// Text of any bytes in a UTF-8 and a two-byte code set: the vector kernels must give what stepping
// one character at a time gives.
#include <cstdint>
#include <string>
#include <vector>

#include "pack.h"

namespace {

void compare(vel_locale *locale, const std::string &text) {
    int32_t size = static_cast<int32_t>(text.size());
    std::vector<vel_wchar> stepped;
    int32_t at = 0;
    while (at < size) {
        vel_wchar value = 0;
        int32_t length = tuk_vel_full_mblen(locale, text.data() + at, size - at);
        if (length < 0) break;
        tuk_vel_full_mbtowc(locale, &value, text.data() + at, size - at);
        stepped.push_back(value);
        at += length;
    }
    std::vector<vel_wchar> decoded(text.size() + 2, 0xDEADBEEF);
    int32_t count = tuk_vel_im_mbfstowcfs(locale, decoded.data(), text.data(), size, size + 1);
    if (at == size && size > 0) {
        check(count == static_cast<int32_t>(stepped.size()), "decoded count");
        check(tuk_vel_im_mbfslen(locale, text.data(), size) == count, "length");
    } else if (size > 0) {
        check(count == -1, "invalid text is refused");
    }
    for (size_t i = 0; i < stepped.size(); ++i) check(decoded[i] == stepped[i], "decoded value");
    check(decoded.back() == 0xDEADBEEF, "nothing is written past the limit");
    if (at != size || size == 0) return;
    std::string back(text.size() + 4, '\x55');
    int32_t bytes = tuk_vel_full_wcstombs(locale, back.data(), decoded.data(), count, size);
    check(bytes == size && back.compare(0, text.size(), text) == 0, "round trip");
    check(back[text.size()] == '\x55', "nothing is written past the text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static vel_locale *const locales[] = {load("en_us.utf8"), load("ja_jp.eucjp")};
    std::string text(reinterpret_cast<const char *>(data), size);
    for (vel_locale *locale : locales) compare(locale, text);
    return 0;
}
