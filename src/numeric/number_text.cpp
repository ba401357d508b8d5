#include "numeric/number_text.h"

#include "vels/multibyte.h"

namespace vel {

bool is_valid_behind(vel_locale *locale, const char *string, const char *rest) {
    if (locale->single_byte) return *string != 0;
    char_reader<char> text(locale, rest);
    if (text.peek() == 0) return !text.failed() && rest != string;
    return vel_im_mbslen(locale, rest) > 0;
}

} // namespace vel
