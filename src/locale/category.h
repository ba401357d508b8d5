// The table of categories. Whoever treats a category does it by its row: nothing else tells
// categories apart.
#pragma once

#include "locale/section.h"
#include "record/record.h"

namespace vel {

struct category_row {
    const char *variable; // its name in specifications and in the environment
    const char *marker;   // the line that opens its section

    // What is recorded when it cannot be read with the whole object, or alone, or when what is
    // derived from it cannot be made; null for nothing.
    const char *unreadable;
    const char *unreadable_alone;
    const char *uninitialised;

    void (*make_null)(vel_locale *locale);
    void (*release)(vel_locale *locale);
    // Reads the section; false with the section's error number, which may be 0.
    bool (*read)(section &in, vel_locale *locale);
    // Makes what is derived from the category that has just been read. At least 1 on success, else
    // an error number has been stored.
    int32_t (*initialise)(vel_locale *locale);
    // Takes the category of another locale by reference. Like the step above for the rest.
    int32_t (*copy)(vel_locale *to, const vel_locale *from);
};

extern const category_row categories[category_count];

// The index of the category's row, or -1.
int32_t find_category(int32_t category);

// Puts the null state in place, forgetting what was there.
void make_null(vel_locale *locale, int32_t index);
// Frees the category and leaves it null.
void free_category(vel_locale *locale, int32_t index);

bool is_loaded(const vel_locale *locale, int32_t index);

// Fills the null category from another locale's, which stays its owner. False with an error number
// stored.
bool borrow_category(vel_locale *to, const vel_locale *from, int32_t index);

} // namespace vel
