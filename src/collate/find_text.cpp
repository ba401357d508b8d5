// From the strings of callers to text.
#include "collate/faces.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

size_t encoded_room(const vel_locale *locale, wide_text wide) {
    size_t count = static_cast<size_t>(wide.end - wide.at);
    size_t longest = static_cast<size_t>(characters_of(locale).longest);
    return count * longest + 1;
}

int32_t decode_into(vel_locale *locale, vel_wchar *out, const char *string, int32_t length,
                    int32_t count) {
    if (count == 0) return 0;
    if (length == -1) return locale->decode(locale, out, string, count);
    return locale->decode_counted(locale, out, string, length, count);
}

} // namespace

wide_text find_text(const vel_wchar *wide, int32_t length) {
    if (length == -1) length = vel_wcslen(wide);
    return {wide, wide + (length > 0 ? length : 0)};
}

decoded_text::decoded_text(vel_locale *locale, const char *string, int32_t length)
    : count_(tuk_vel_im_mbfslen(locale, string, length)),
      values_(count_ < 0 ? 0 : static_cast<size_t>(count_) + 1), ok_(count_ >= 0) {
    if (!ok_) return;
    if (!values_) {
        set_error(locale, VEL_ENOMEM);
        ok_ = false;
        return;
    }
    ok_ = decode_into(locale, values_.data(), string, length, count_) >= 0;
    values_[static_cast<size_t>(count_)] = 0;
}

encoded_text::encoded_text(vel_locale *locale, wide_text wide)
    : bytes_(encoded_room(locale, wide)), ok_(false) {
    if (!bytes_) {
        set_error(locale, VEL_ENOMEM);
        return;
    }
    auto encode = locale->single_byte ? tuk_vel_is_wcstombs : tuk_vel_full_wcstombs;
    int32_t room = static_cast<int32_t>(encoded_room(locale, wide));
    length_ =
        encode(locale, bytes_.data(), wide.at, static_cast<int32_t>(wide.end - wide.at), room);
    if (length_ < 0) return;
    bytes_[static_cast<size_t>(length_)] = '\0';
    ok_ = true;
}

} // namespace vel
