#include "names/piece.h"

#include "names/registry.h"

namespace vel {
namespace {

bool is_codeset_character(char c) {
    return is_graph(c) && c != '@' && c != ';';
}

bool can_be_looked_up(const piece &piece) {
    return piece.codeset_length > 0 && piece.codeset_length <= max_codeset_name &&
           *piece.codeset != '#';
}

} // namespace

size_t language_prefix(const char *text) {
    size_t i = 0;
    while (i < language_length && (i == 2 ? text[i] == '_' : is_letter(text[i]))) ++i;
    return i;
}

bool scan_piece(const char *text, codeset_rule rule, piece &result) {
    if (language_prefix(text) != language_length) return false;
    const char *cursor = text + language_length;
    result = {text, nullptr, cursor, cursor, 0, 0};
    if (*cursor != '.') return rule != codeset_rule::required;

    result.codeset = ++cursor;
    while (is_codeset_character(*cursor)) ++cursor;
    result.codeset_length = static_cast<size_t>(cursor - result.codeset);
    if (rule != codeset_rule::unchecked && !can_be_looked_up(result)) return false;

    if (*cursor == '@') {
        result.modifier = ++cursor;
        while (is_letter_or_digit(*cursor)) ++cursor;
        result.modifier_length = static_cast<size_t>(cursor - result.modifier);
    }
    result.end = cursor;
    return true;
}

uint16_t piece_codeset(void *context, const piece &piece, const char *path) {
    codeset_name name;
    text_out{name}.put(piece.codeset, piece.codeset_length);
    return vel_cs_name2cs_num(context, name, path);
}

int32_t scan_fname(void *context, const char *text, fname_parts &result) {
    if (language_prefix(text) != language_length) return refuse(context);
    const char *cursor = text + language_length;
    if (*cursor != '\\' && *cursor != '/') return -1;

    const char *digits = ++cursor;
    uint16_t number = 0;
    for (; cursor < digits + 4 && hex_value(*cursor) >= 0; ++cursor) {
        number = static_cast<uint16_t>(number << 4 | hex_value(*cursor));
    }
    if (cursor == digits) return refuse(context);

    size_t length = 0;
    while (length < max_file_modifier && cursor[length] && cursor[length] != '.') ++length;
    result = {text, number, cursor, length};
    return 0;
}

int32_t vel_lc_piece2fname(void *context, const char **in, char **out, uint16_t *number,
                           const char *path) {
    piece piece;
    if (!scan_piece(*in, codeset_rule::required, piece)) return refuse(context);
    *number = piece_codeset(context, piece, path);
    if (*number == VEL_CS_INVALID) return -1;
    if (piece.modifier_length > max_file_modifier) return refuse(context);

    text_out fname{*out};
    fname.put_lower(piece.text, language_length);
    fname.put('\\');
    fname.put_hex(*number);
    fname.put(piece.modifier, piece.modifier_length);
    fname.put(".lco");
    *in = piece.end;
    *out = fname.end;
    return 0;
}

char *vel_append_dir_prefix(char *out, const char *dir) {
    text_out prefix{out};
    if (dir && *dir) {
        prefix.put(dir);
        prefix.put('\xFF');
    }
    return prefix.end;
}

} // namespace vel
