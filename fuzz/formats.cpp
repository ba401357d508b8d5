// Formats and texts of any bytes through the number, money and time languages: nothing is written
// past a buffer, and the measured length of a time format is never exceeded.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "pack.h"

namespace {

constexpr int32_t room = 1024;
constexpr size_t longest = 256; // of a format and of a text
constexpr char guard = '\x55';

// A buffer of a size that the input chooses, with a guard behind it.
struct guarded {
    explicit guarded(int32_t wanted) : size(wanted) { memset(bytes, guard, sizeof bytes); }
    ~guarded() { check(bytes[size] == guard, "nothing is written past the buffer"); }

    int32_t size;
    char bytes[room + 8];
};

void format_time(vel_locale *locale, const std::string &format, int32_t size) {
    const vel_time_record time = {123456, 59, 58, 23, 29, 1, 124, 4, 59, 0, {0, 0}};
    guarded out(size);
    int32_t written = vel_mbsftime(locale, out.bytes, out.size, format.c_str(), &time);
    if (written <= 0) return;
    int32_t measured = vel_mbsfmtexpand(locale, 1, format.c_str());
    check(measured >= written, "no text is longer than measured");
}

void format_money(vel_locale *locale, const std::string &format, int32_t size) {
    if (std::ranges::count(format, '%') > 4) return;
    guarded out(size);
    vel_mbsfmon(locale, out.bytes, out.size, format.c_str(), -1234567.895, 0.0, 1e300, 0.005);
}

// The input gives what stands between "%" and the letter, so that the arguments are of its type.
void format_number(vel_locale *locale, std::string format, int32_t size) {
    std::erase_if(format, [](char c) { return c == '%' || c == '*' || (c >= 'A' && c <= 'z'); });
    guarded out(size);
    for (char letter : {'d', 'x', 'o', 'u'}) {
        std::string whole = "%" + format + letter;
        vel_mbsfnum(locale, out.bytes, out.size, whole.c_str(), -1234567);
    }
    for (char letter : {'f', 'e', 'G'}) {
        std::string whole = "%" + format + letter;
        vel_mbsfnum(locale, out.bytes, out.size, whole.c_str(), -12345.678e150);
    }
    std::string whole = "%" + format + "s";
    vel_mbsfnum(locale, out.bytes, out.size, whole.c_str(), "text");
}

void parse(vel_locale *locale, const std::string &format, const std::string &text) {
    vel_time_record time = {};
    vel_mbsptime(locale, text.c_str(), format.c_str(), &time, 'C');
    double amounts[4];
    if (std::ranges::count(format, '%') > 4) return;
    vel_mbspmon(locale, text.c_str(), format.c_str(), amounts, amounts + 1, amounts + 2,
                amounts + 3);
    alignas(8) static char targets[4][(longest + 1) * sizeof(vel_wchar)];
    vel_mbspnum(locale, text.c_str(), format.c_str(), targets[0], targets[1], targets[2],
                targets[3]);
    char *end = nullptr;
    vel_mbstod(locale, text.c_str(), &end, 1);
    vel_mbstol(locale, text.c_str(), &end, 0, 1);
}

} // namespace

// The first two bytes choose the buffer's size; a zero byte ends the format and begins the text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static vel_locale *const locales[] = {load("en_us.utf8"), load("ja_jp.eucjp"),
                                          load("en_us.037")};
    if (size < 2) return 0;
    int32_t out_size = (data[0] | data[1] << 8) % (room + 1);
    std::string whole(reinterpret_cast<const char *>(data + 2), size - 2);
    size_t end = std::min(whole.find('\0'), whole.size());
    std::string format = whole.substr(0, std::min(end, longest));
    std::string text = end < whole.size() ? whole.substr(end + 1) : whole;
    text.resize(std::min({text.size(), text.find('\0'), longest}));
    for (vel_locale *locale : locales) {
        format_time(locale, format, out_size);
        format_money(locale, format, out_size);
        format_number(locale, format, out_size);
        parse(locale, format, text);
    }
    return 0;
}
