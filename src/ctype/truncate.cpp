// Cutting trailing blanks off strings.
#include "ctype/lookup.h"
#include "vels/ctype.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

bool is_cut_blank(int32_t classes) {
    return (classes & VEL_CLASS_BLANK) && !(classes & VEL_CLASS_CNTRL);
}

int32_t classes_at(vel_locale *locale, const char *at) {
    constexpr int32_t asked = VEL_CLASS_BLANK | VEL_CLASS_CNTRL;
    if (locale->byte_classes) return locale->byte_classes[*as_bytes(at)] & asked;
    return vel_im_ismctype(locale, at, asked);
}

bool is_space(vel_locale *locale, vel_wchar value) {
    if (!locale->byte_classes) return vel_im_iswctype(locale, value, VEL_CLASS_SPACE);
    if (value > 0xFF) return fail_zero(locale, VEL_EILSEQ);
    return locale->byte_classes[value] & VEL_CLASS_SPACE;
}

} // namespace
} // namespace vel

using namespace vel;

char *vel_mbsntstrunc(vel_locale *locale, char *string) {
    if (!string) return fail_null(locale, VEL_EFAULT);
    char *run = nullptr;
    for (char *at = string; !vel_ismbsterm(locale, at);) {
        if (!is_cut_blank(classes_at(locale, at)))
            run = nullptr;
        else if (!run)
            run = at;
        at = locale->single_byte ? at + 1 : vel_full_mbsnext(locale, at);
        if (!at) return nullptr;
    }
    if (run) vel_mbsterm(locale, run);
    return run;
}

vel_wchar *vel_wcsntstrunc(vel_locale *locale, vel_wchar *wide) {
    if (!wide) return fail_null(locale, VEL_EFAULT);
    vel_wchar *run = nullptr;
    for (; *wide; ++wide) {
        if (!is_space(locale, *wide))
            run = nullptr;
        else if (!run)
            run = wide;
    }
    if (run) *run = 0;
    return run;
}
