// The long specification: "NAME = piece" for each category, joined by " ; ".
#pragma once

#include "names/piece.h"

namespace vel {

constexpr size_t long_form_entries = 6;

// The name of a category, VEL_CTYPE to VEL_MESSAGES.
const char *category_name(int32_t category);

// When the text begins with a category name, stores the name's length and returns its code: 1
// CTYPE, 2 COLLATE, 3 TIME, 4 MONETARY, 5 NUMERIC, 6 MESSAGES. These are not the category numbers
// of the interface. 0 otherwise.
int32_t vel_lc_category_prefix(const char *text, int32_t *length);

inline bool is_long_form(const char *text) {
    int32_t length;
    return vel_lc_category_prefix(text, &length) != 0;
}

// Where the piece of each category begins, VEL_CTYPE first, at the first occurrence of its name
// wherever that stands. False unless all six are there, each followed by " = ".
bool find_pieces(const char *text, const char *(&starts)[long_form_entries]);

struct long_form_rules {
    size_t entries;         // exactly so many, the rest of the text being ignored; 0: to its end
    bool repeats;           // a category may occur again
    bool closing_separator; // " ; " must follow the last entry too
};
constexpr long_form_rules open_form = {0, false, false};
constexpr long_form_rules closed_form = {0, false, true};
// Normalising takes any six entries: which categories they are for is left to whoever loads them.
constexpr long_form_rules six_entries = {long_form_entries, true, true};

// Calls `entry` at each piece, which it steps over, giving 0, or -1 with the number stored. Names
// and separators are copied to `out`; what becomes of the piece is up to `entry`.
template <typename Entry>
int32_t walk_long_form(void *context, const char *cursor, const long_form_rules &rules,
                       text_out &out, Entry &&entry) {
    uint32_t seen = 0;
    for (size_t count = 1;; ++count) {
        const char *name = cursor;
        int32_t length = 0;
        int32_t category = vel_lc_category_prefix(cursor, &length);
        if (!category) return refuse(context);
        if (seen & 1u << category && !rules.repeats) return refuse(context);
        seen |= 1u << category;
        cursor += length;
        if (!take(cursor, " = ")) return refuse(context);
        out.put(name, static_cast<size_t>(cursor - name));

        if (entry(cursor) != 0) return -1;
        bool separated = take(cursor, " ; ");
        if (separated) out.put(" ; ");
        if (!separated && (rules.closing_separator || *cursor)) return refuse(context);
        if (rules.entries ? count == rules.entries : !*cursor) return 0;
    }
}

// The same for a text that may be one piece alone.
template <typename Entry>
int32_t walk_spec(void *context, const char *cursor, const long_form_rules &rules, text_out &out,
                  Entry &&entry) {
    if (is_long_form(cursor)) return walk_long_form(context, cursor, rules, out, entry);
    if (entry(cursor) != 0) return -1;
    return *cursor ? refuse(context) : 0;
}

} // namespace vel
