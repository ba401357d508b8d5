#include "numeric/number_text.h"

#include "numeric/grouping.h"
#include "vels/multibyte.h"

namespace vel {

group_fault group_lengths::check(const number_style &style) const {
    group_sizes sizes(style.grouping);
    for (int32_t i = count_ - 1; i >= 0; --i) {
        bool is_first = i == 0;
        int32_t size = style.marks.thousands_sep_length ? sizes.next() : 0;
        if (size > 0 && lengths_[i] > size) return group_fault::missing;
        if (!is_first && lengths_[i] != size) return group_fault::misplaced;
    }
    return group_fault::none;
}

bool is_valid_behind(vel_locale *locale, const char *string, const char *rest) {
    if (locale->single_byte) return *string != 0;
    char_reader<char> text(locale, rest);
    if (text.peek() == 0) return !text.failed() && rest != string;
    return vel_im_mbslen(locale, rest) > 0;
}

} // namespace vel
