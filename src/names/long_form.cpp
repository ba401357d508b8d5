#include "names/long_form.h"

namespace vel {
namespace {

struct category_row {
    const char *name;
    int32_t code; // what the recogniser gives
};

// In the order of the category numbers, in which long forms are written.
constexpr category_row categories[long_form_entries] = {
    {"VEL_CTYPE", 1},    {"VEL_COLLATE", 2}, {"VEL_NUMERIC", 5},
    {"VEL_MONETARY", 4}, {"VEL_TIME", 3},    {"VEL_MESSAGES", 6},
};

} // namespace

const char *category_name(int32_t category) {
    return categories[category - VEL_CTYPE].name;
}

int32_t vel_lc_category_prefix(const char *text, int32_t *length) {
    for (const category_row &row : categories) {
        const char *end = text;
        if (!take(end, row.name)) continue;
        *length = static_cast<int32_t>(end - text);
        return row.code;
    }
    return 0;
}

bool find_pieces(const char *text, const char *(&starts)[long_form_entries]) {
    for (size_t i = 0; i < long_form_entries; ++i) {
        const char *name = strstr(text, categories[i].name);
        if (!name) return false;
        starts[i] = name + strlen(categories[i].name);
        if (!take(starts[i], " = ")) return false;
    }
    return true;
}

} // namespace vel
