// The length of text without its trailing blanks.
#include "ctype/lookup.h"
#include "string/walk.h"
#include "vels/ctype.h"
#include "vels/string.h"

namespace vel {
namespace {

// Blanks in bytes, white space in wide text; of both, what is no control character.
bool is_dropped(uint32_t cell, int32_t mask) {
    return class_bits(cell, mask) && !class_bits(cell, VEL_CLASS_CNTRL);
}

// The start of the character that ends at `end`, in valid text.
const unsigned char *character_before(const vel_locale *locale, const unsigned char *end) {
    --end;
    if (locale->single_byte) return end;
    while ((*end & 0xC0) == 0x80) --end;
    return end;
}

// Where characters are found backwards only the blanks themselves need to be looked at.
walked<unsigned char> trim_backwards(const vel_locale *locale, byte_range text) {
    walked<unsigned char> rest = walk(locale, text, whole_text);
    while (rest.end > text.begin) {
        const unsigned char *last = character_before(locale, rest.end);
        if (!is_dropped(characters_of(locale).walk(last).cell, VEL_CLASS_BLANK)) break;
        rest.end = last;
        --rest.characters;
    }
    return rest;
}

walked<unsigned char> trim_forwards(const vel_locale *locale, byte_range text) {
    walked<unsigned char> rest{text.begin, 0, 0};
    size_t pending = 0; // blanks that trail so far
    stepper<unsigned char> at(locale, text);
    for (valued_walk here; (here = at.peek()).used;) {
        at.skip(here);
        ++pending;
        if (is_dropped(here.cell, VEL_CLASS_BLANK)) continue;
        rest.end = at.at();
        rest.characters += pending;
        pending = 0;
    }
    rest.error = at.error();
    return rest;
}

walked<unsigned char> trim(const vel_locale *locale, byte_range text) {
    if (int32_t number = fault_of(text)) return {nullptr, 0, number};
    return is_self_synchronising(locale) ? trim_backwards(locale, text)
                                         : trim_forwards(locale, text);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_mbsntslen(vel_locale *locale, const char *string) {
    return tuk_vel_mbsntslen(locale, string, -1);
}

int32_t tuk_vel_mbsntslen(vel_locale *locale, const char *string, int32_t nbytes) {
    walked<unsigned char> rest = trim(locale, range_of(string, nbytes));
    return rest.error ? fail(locale, rest.error) : static_cast<int32_t>(rest.characters);
}

int32_t vel_mbsntsbytes(vel_locale *locale, const char *string) {
    return tuk_vel_mbsntsbytes(locale, string, -1);
}

int32_t tuk_vel_mbsntsbytes(vel_locale *locale, const char *string, int32_t nbytes) {
    walked<unsigned char> rest = trim(locale, range_of(string, nbytes));
    return rest.error ? fail(locale, rest.error)
                      : static_cast<int32_t>(rest.end - as_bytes(string));
}

int32_t vel_wcsntslen(vel_locale *locale, const vel_wchar *wide) {
    return tuk_vel_wcsntslen(locale, wide, -1);
}

int32_t tuk_vel_wcsntslen(vel_locale *locale, const vel_wchar *wide, int32_t nvalues) {
    wide_range text = range_of(wide, nvalues);
    if (int32_t number = fault_of(text)) return fail_text(locale, number);
    size_t length = walk(locale, text, whole_text).characters;
    if (!locale) return static_cast<int32_t>(length); // nothing is known to be white space
    // A value without a character is in no class, and no reason to fail.
    while (length > 0 &&
           is_dropped(characters_of(locale).find_code(wide[length - 1]), VEL_CLASS_SPACE)) {
        --length;
    }
    return static_cast<int32_t>(length);
}
