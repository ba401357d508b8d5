// The short specification ll_tt.codeset@modifier, alone or as the entry of a long one, and the
// object file name ll_tt\hhhh[modifier].lco that it stands for.
#pragma once

#include "names/text.h"
#include "vels/registry.h"

namespace vel {

constexpr size_t language_length = 5; // ll_tt
constexpr size_t max_file_modifier = 4;
constexpr size_t max_piece_fname =
    language_length + sizeof "\\hhhh" - 1 + max_file_modifier + sizeof ".lco" - 1;

// A short specification within a longer text.
struct piece {
    const char *text;     // begins with ll_tt
    const char *codeset;  // null when there is none
    const char *modifier; // without its "@"
    const char *end;
    size_t codeset_length;
    size_t modifier_length;

    size_t length() const { return static_cast<size_t>(end - text); }
};

enum class codeset_rule {
    required,  // there must be a code set, of a form that can be looked up
    optional,  // there may be one, of that form
    unchecked, // there may be one of any length and form: it will not be looked up
};

// How many characters at the beginning have the form ll_tt: 5 when all is well.
size_t language_prefix(const char *text);
// Finds the parts of the piece at the beginning of the text. What follows the piece is not looked
// at, nor is the length of the modifier.
bool scan_piece(const char *text, codeset_rule rule, piece &result);
// The number of a piece's code set; VEL_CS_INVALID with the error number of vel_cs_name2cs_num.
uint16_t piece_codeset(void *context, const piece &piece, const char *path);

// An object file name within a longer text.
struct fname_parts {
    const char *text; // begins with ll_tt
    uint16_t number;
    const char *modifier;
    size_t modifier_length; // at most 4
};

// -1 without an error number when there is no separator after the territory.
int32_t scan_fname(void *context, const char *text, fname_parts &result);

// Parses one short piece with a code set and writes its file name; both cursors move on.
int32_t vel_lc_piece2fname(void *context, const char **in, char **out, uint16_t *number,
                           const char *path);
// Writes the directory and the byte 0xFF, or nothing when it is null or empty; returns the new end.
char *vel_append_dir_prefix(char *out, const char *dir);

// The code sets of several pieces, which must be one and the same.
class common_codeset {
public:
    bool add(uint16_t number) {
        if (number_ == VEL_CS_INVALID) number_ = number;
        return number == number_;
    }
    uint16_t number() const { return number_; }

private:
    uint16_t number_ = VEL_CS_INVALID;
};

} // namespace vel
