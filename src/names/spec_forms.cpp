// Normal, short and long forms of locale specifications.
#include "names/long_form.h"
#include "vels/names.h"

namespace vel {
namespace {

constexpr size_t max_digits = 5; // of a code-set number in decimal

// One piece in normal form, by way of its file name.
int32_t write_normal(void *context, const char *&cursor, text_out &out, common_codeset &codeset,
                     const char *path) {
    char fname[max_piece_fname + 1];
    char *end = fname;
    uint16_t number;
    if (vel_lc_piece2fname(context, &cursor, &end, &number, path) != 0) return -1;
    if (!codeset.add(number)) return refuse(context);

    char language[language_length + 1];
    char digits[max_digits + 1];
    char modifier[max_file_modifier + 1];
    char normal[sizeof language + sizeof digits + sizeof modifier];
    vel_lc_fname2lc_pieces(context, fname, language, digits, modifier);
    vel_lc_pieces2lc_spec(context, language, digits, modifier, normal);
    out.put(normal);
    return 0;
}

// The pieces of all six categories. Each must end where the text or the entry does.
bool scan_pieces(const char *text, piece (&pieces)[long_form_entries]) {
    const char *starts[long_form_entries];
    if (!find_pieces(text, starts)) return false;
    for (size_t i = 0; i < long_form_entries; ++i) {
        if (!scan_piece(starts[i], codeset_rule::optional, pieces[i])) return false;
        const char *end = pieces[i].end;
        if (*end && !take(end, " ; ")) return false;
    }
    return true;
}

bool equal_but_for_case(const piece &a, const piece &b) {
    if (a.length() != b.length()) return false;
    for (size_t i = 0; i < a.length(); ++i) {
        if (to_lower(a.text[i]) != to_lower(b.text[i])) return false;
    }
    return true;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_lc_pieces2lc_spec(void *context, const char *lang, const char *codeset,
                              const char *modifier, char *out) {
    input_copy<language_length> language(lang);
    input_copy<max_digits> digits(codeset);
    input_copy<max_file_modifier> suffix(modifier);
    if (!out || !*digits.text) return refuse(context);
    if (language_prefix(language.text) != language_length) return refuse(context);
    for (const char *digit = digits.text; *digit; ++digit) {
        if (hex_value(*digit) < 0) return refuse(context);
    }
    text_out spec{out};
    spec.put(language.text);
    spec.put('.');
    spec.put(digits.text);
    if (*suffix.text) spec.put('@');
    spec.put(suffix.text);
    return 0;
}

int32_t vel_lc_short_spec2lc_short_norm(void *context, const char *spec, char *out,
                                        const char *path) {
    spec_copy copy(spec);
    if (!out || is_long_form(copy.text)) return refuse(context);
    return vel_lc_spec2lc_norm(context, copy.text, out, path);
}

int32_t vel_lc_spec2lc_norm(void *context, const char *spec, char *out, const char *path) {
    if (!out) return refuse(context);
    spec_copy copy(spec);
    text_out normal{out};
    common_codeset codeset;
    return walk_spec(context, copy.text, six_entries, normal, [&](const char *&cursor) {
        return write_normal(context, cursor, normal, codeset, path);
    });
}

int32_t vel_lc_short2lc_long(void *context, const char *short_spec, char *out, const char *path) {
    spec_copy copy(short_spec);
    piece piece;
    if (!scan_piece(copy.text, codeset_rule::optional, piece) || *piece.end) return refuse(context);
    if (piece.codeset && piece_codeset(context, piece, path) == VEL_CS_INVALID) return -1;
    if (!out) return refuse(context);
    text_out entries{out};
    for (int32_t category = VEL_CTYPE; category <= VEL_MESSAGES; ++category) {
        if (category != VEL_CTYPE) entries.put(" ; ");
        entries.put(category_name(category));
        entries.put(" = ");
        entries.put_lower(piece.text, piece.length());
    }
    return 0;
}

int32_t vel_lc_spec2lc_short(void *context, const char *long_spec, char *out, const char *path) {
    spec_copy copy(long_spec);
    piece pieces[long_form_entries];
    if (!out || !scan_pieces(copy.text, pieces)) return refuse(context);
    for (const piece &other : pieces) {
        if (!equal_but_for_case(other, pieces[0])) return refuse(context);
    }
    if (pieces[0].codeset && piece_codeset(context, pieces[0], path) == VEL_CS_INVALID) return -1;
    text_out{out}.put_lower(pieces[0].text, pieces[0].length());
    return 0;
}

int32_t vel_lc_spec2category(void *context, const char *long_spec, int32_t category, char *out,
                             const char *path) {
    if (category < VEL_CTYPE || category > VEL_MESSAGES) return 0;
    spec_copy copy(long_spec);
    piece pieces[long_form_entries];
    if (!out || !is_long_form(copy.text) || !scan_pieces(copy.text, pieces)) return refuse(context);
    common_codeset codeset;
    for (const piece &other : pieces) {
        if (!other.codeset != !pieces[0].codeset) return refuse(context);
        if (!other.codeset) continue;
        uint16_t number = piece_codeset(context, other, path);
        if (number == VEL_CS_INVALID) return -1;
        if (!codeset.add(number)) return refuse(context);
    }
    const piece &wanted = pieces[category - VEL_CTYPE];
    text_out{out}.put(wanted.text, wanted.length());
    return 0;
}

int32_t vel_is_lc_spec(void *context, const char *spec) {
    text_out nowhere{nullptr};
    spec_copy copy(spec);
    return walk_long_form(context, copy.text, open_form, nowhere, [&](const char *&cursor) {
        size_t good = language_prefix(cursor);
        // A missing "_" is an error like any other; a missing letter stores no number.
        if (good < language_length && good != 2) return -1;
        piece piece;
        if (!scan_piece(cursor, codeset_rule::unchecked, piece)) return refuse(context);
        cursor = piece.end;
        return 0;
    });
}
