// The trees of names that parsing searches: weekdays, months, AM and PM, digits of the locale's
// own, eras. They are built when a locale is completed.
#pragma once

#include "charmap/char_reader.h"
#include "ctype/lookup.h"
#include "time/format_walk.h"
#include "vels/ctype.h"

namespace vel {

enum name_list : int32_t {
    list_days,
    list_abbreviated_days,
    list_months,
    list_abbreviated_months,
    list_am_pm,
    list_alt_digits,
    list_eras,
    list_other_eras, // by their second names
    name_list_count,
};

constexpr int32_t no_name = -1;

// One character of names. A tree is the list of the nodes at which names begin; the block of the
// trees starts with a root for each list, so that 0 stands for no node. The name of a root is the
// empty one; its value tells whether a name of the list begins or ends in blanks.
struct name_node {
    vel_wchar value;  // in lower case
    int32_t name;     // position in its list of the name that ends here, or no_name
    uint32_t child;   // the first of the nodes that follow
    uint32_t sibling; // the next one of those that stand beside it
};

inline const name_node *name_trees(const vel_locale *locale) {
    return static_cast<const name_node *>(locale->time_derived.trees);
}

// The cell of a character, at once for characters of one byte.
inline uint32_t cell_of(const sealed_table &table, vel_wchar value) {
    return value < 0x80 && table.shortest == 1 ? table.cells()[value] : table.find_code(value);
}

// The lower-case form by which names are compared. What is no character stays as it is.
inline vel_wchar folded(const vel_locale *locale, vel_wchar value) {
    if (locale->byte_lower && value < 256) return locale->byte_lower[value];
    uint32_t cell = cell_of(cases_of(locale), value);
    vel_wchar lower = is_end(cell) ? case_of<letter_case::lower>(locale, cell_value(cell)) : 0;
    return lower ? lower : value;
}

// Whether a character is in a class; what is no character is in none, and no error.
inline bool has_class(const vel_locale *locale, vel_wchar value, int32_t mask) {
    uint32_t cell = cell_of(characters_of(locale), value);
    return is_end(cell) && class_bits(cell, mask);
}

// The empty name of a list, or no_name.
inline int32_t empty_name(const vel_locale *locale, name_list list) {
    const name_node *trees = name_trees(locale);
    return trees ? trees[list].name : no_name;
}

inline bool has_padded_names(const vel_locale *locale, name_list list) {
    const name_node *trees = name_trees(locale);
    return trees && trees[list].value != 0;
}

// A name found at the beginning of text, and where the text goes on.
template <typename Unit> struct name_match {
    int32_t name;
    const Unit *behind;
};

// Looks for a name of a list, in any case. The longest one counts: some lists have names that begin
// with another one, as the Turkish Pazartesi with Pazar, or the eleventh Vietnamese month with the
// first. `shorter` takes the longest but one.
template <typename Unit>
name_match<Unit> vel_match_name(const vel_locale *locale, const Unit *text, name_list list,
                                name_match<Unit> *shorter = nullptr) {
    name_match<Unit> found = {no_name, text};
    const name_node *trees = name_trees(locale);
    const bool ascii_units = has_ascii_units<Unit>(locale);
    uint32_t at = trees ? trees[list].child : 0;
    while (at) {
        vel_wchar c = static_cast<std::make_unsigned_t<Unit>>(*text);
        if (ascii_units && c < 0x80) {
            ++text;
        } else {
            char_reader<Unit> here(locale, text);
            c = here.peek();
            if (c) here.next();
            text = here.at();
        }
        if (trees[at].value != c) { // most text is in lower case and goes the first way
            if (c == 0) break;
            c = folded(locale, c);
            while (at && trees[at].value != c) at = trees[at].sibling;
            if (!at) break;
        }
        if (trees[at].name != no_name) {
            if (shorter) *shorter = found;
            found = {trees[at].name, text};
        }
        at = trees[at].child;
    }
    return found;
}

} // namespace vel
