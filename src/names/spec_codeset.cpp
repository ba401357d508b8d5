// The code set that a locale specification names.
#include "names/long_form.h"

namespace vel {
namespace {

// The file names of pieces are not needed, so each is written over the last.
int32_t common_number(const char *text, const char *path, common_codeset &codeset) {
    text_out nowhere{nullptr};
    return walk_long_form(nullptr, text, closed_form, nowhere, [&](const char *&cursor) {
        char fname[max_piece_fname + 1];
        char *end = fname;
        uint16_t number;
        if (vel_lc_piece2fname(nullptr, &cursor, &end, &number, path) != 0) return -1;
        return codeset.add(number) ? 0 : -1;
    });
}

// Not a whole piece, so perhaps a bare code-set name: the first attempt stores no number.
uint16_t short_form_number(void *context, const char *text, const char *path) {
    char fname[max_piece_fname + 1];
    char *end = fname;
    uint16_t number;
    bool parsed = vel_lc_piece2fname(nullptr, &text, &end, &number, path) == 0;
    if (parsed && !*text) return number;
    return vel_cs_name2cs_num(context, text, path);
}

} // namespace
} // namespace vel

using namespace vel;

uint16_t vel_lc_spec2cs_num(void *context, const char *spec, const char *path) {
    spec_copy copy(spec);
    if (!is_long_form(copy.text)) return short_form_number(context, copy.text, path);
    common_codeset codeset;
    if (common_number(copy.text, path, codeset) == 0) return codeset.number();
    refuse(context);
    return VEL_CS_INVALID;
}
