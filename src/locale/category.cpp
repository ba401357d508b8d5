#include "locale/category.h"

#include <cstring>

#include "locale/initialise.h"
#include "locale/readers.h"
#include "record/category.h"
#include "vels/locale.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// Until a code set is loaded, strings are decoded by walking the empty table.
void make_null_ctype(vel_locale *locale) {
    null_ctype(locale);
    locale->decode = vel_im_mbstowcs;
    locale->decode_counted = tuk_vel_im_mbfstowcfs;
}

void release_whole_ctype(vel_locale *locale) {
    release_ctype(locale);
    make_null_ctype(locale);
}

int32_t copy_ctype(vel_locale *to, const vel_locale *from) {
    to->ctype = from->ctype;
    to->case_growth = from->case_growth;
    return initialise_ctype(to);
}

int32_t copy_collate(vel_locale *to, const vel_locale *from) {
    to->collate = from->collate;
    to->collate_features = from->collate_features;
    to->collate_longest_element = from->collate_longest_element;
    return 1;
}

int32_t copy_numeric(vel_locale *to, const vel_locale *from) {
    to->conventions.numeric = from->conventions.numeric;
    mark_numeric(to);
    return 1;
}

int32_t copy_monetary(vel_locale *to, const vel_locale *from) {
    to->conventions.monetary = from->conventions.monetary;
    mark_monetary(to);
    return 1;
}

// The trees of names are the destination's own, made anew when it is completed.
int32_t copy_time(vel_locale *to, const vel_locale *from) {
    to->time = from->time;
    release_time_derived(to);
    return 1;
}

int32_t copy_messages(vel_locale *to, const vel_locale *from) {
    to->conventions.messages = from->conventions.messages;
    return 1;
}

void clear_names(vel_locale *locale, int32_t index) {
    locale->codeset_names[index][0] = '\0';
    locale->file_names[index][0] = '\0';
    locale->wide_codeset_names[index][0] = 0;
    locale->wide_file_names[index][0] = 0;
}

constexpr uint32_t borrowed_bit(int32_t index) {
    return 1u << index;
}

} // namespace

const category_row categories[category_count] = {
    {"VEL_CTYPE", "### LC_CTYPE\n", nullptr, nullptr, nullptr, make_null_ctype, release_whole_ctype,
     read_ctype, initialise_ctype, copy_ctype},
    {"VEL_COLLATE", "### LC_COLLATE\n", nullptr, nullptr, nullptr, null_collate, release_collate,
     read_collate, initialise_collate, copy_collate},
    {"VEL_NUMERIC", "### LC_NUMERIC\n", "Failed to read numeric information\n",
     "Failed to read numeric information\n", "Failed to initialize numeric information\n",
     null_numeric, release_numeric, read_numeric, initialise_numeric, copy_numeric},
    {"VEL_MONETARY", "### LC_MONETARY\n", "Failed to read monetary information\n",
     "Failed to read monetary information\n", "Failed to initialize monetary information\n",
     null_monetary, release_monetary, read_monetary, initialise_monetary, copy_monetary},
    {"VEL_TIME", "### LC_TIME\n", "Failed to read time information\n",
     "Failed to read time information\n", "Failed to initialize time information\n", null_time,
     release_time, read_time, initialise_time, copy_time},
    {"VEL_MESSAGES", "### LC_MESSAGES\n", "Failed to read messages information\n",
     "Failed to initialize messages information\n", "Failed to initialize messages information\n",
     null_messages, release_messages, read_messages, initialise_messages, copy_messages},
};

int32_t find_category(int32_t category) {
    int32_t index = category_index(category);
    return category >= VEL_CTYPE && index < category_count ? index : -1;
}

void make_null(vel_locale *locale, int32_t index) {
    categories[index].make_null(locale);
    locale->borrowed &= ~borrowed_bit(index);
    clear_names(locale, index);
}

void free_category(vel_locale *locale, int32_t index) {
    if (!(locale->borrowed & borrowed_bit(index))) categories[index].release(locale);
    make_null(locale, index);
}

bool is_loaded(const vel_locale *locale, int32_t index) {
    return locale->codeset_names[index][0] && locale->file_names[index][0];
}

bool borrow_category(vel_locale *to, const vel_locale *from, int32_t index) {
    to->borrowed |= borrowed_bit(index);
    if (categories[index].copy(to, from) < 1) return false;
    memcpy(to->codeset_names[index], from->codeset_names[index], codeset_name_size);
    memcpy(to->file_names[index], from->file_names[index], file_name_size);
    return true;
}

} // namespace vel

void vel_make_null_category(vel_locale *locale, int32_t category) {
    int32_t index = vel::find_category(category);
    if (index >= 0) vel::make_null(locale, index);
}

void vel_free_category(vel_locale *locale, int32_t category) {
    int32_t index = vel::find_category(category);
    if (index >= 0) vel::free_category(locale, index);
}
