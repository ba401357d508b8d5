#include "locale/create.h"

#include <cstring>

#include "ext/data_file.h"
#include "ext/error.h"
#include "ext/host_stream.h"
#include "ext/memory.h"
#include "ext/version.h"
#include "locale/category.h"
#include "locale/complete.h"
#include "locale/object.h"
#include "record/category.h"
#include "record/error_record.h"
#include "vels/locale.h"

namespace vel {
namespace {

constexpr char default_file[] = "default.lco";

void make_all_null(vel_locale *locale) {
    locale->case_growth = 1.0;
    locale->reserved_growth = 1.0;
    for (int32_t i = 0; i < category_count; ++i) make_null(locale, i);
}

// The directory stands before the name as it was given, without a separator of ours.
void *open_beside(vel_locale *locale, const char *directory, bool *out_of_memory) {
    size_t length = strlen(directory);
    stack_or_heap<char, 512> path(length + sizeof default_file);
    *out_of_memory = !path;
    if (!path) return fail_null(locale, VEL_ENOMEM);
    memcpy(path.data(), directory, length);
    memcpy(path.data() + length, default_file, sizeof default_file);
    return _vel_ext_fopen(path.data(), "r");
}

void *open_default(vel_locale *locale, const char *directory) {
    if (directory) {
        bool out_of_memory;
        void *stream = open_beside(locale, directory, &out_of_memory);
        if (stream || out_of_memory) return stream;
    }
    return vel_find_data_file(locale, default_file, "lc", VEL_LC_VERSION);
}

int32_t read_default(void *stream, vel_locale *locale) {
    if (!read_object(stream, locale)) return -1;
    for (auto &name : locale->file_names) memcpy(name, default_file, sizeof default_file);
    return complete_locale(locale);
}

} // namespace

vel_locale *make_record() {
    void *block = vel_alloc(sizeof(vel_locale));
    if (!block) return nullptr;
    vel_locale *locale = new (block) vel_locale();
    set_error(locale, 0);
    make_all_null(locale);
    return locale;
}

vel_locale *ready_error_record(int32_t number) {
    vel_locale *record = error_record(number);
    make_all_null(record);
    return record;
}

void destroy_record(vel_locale *locale) {
    for (int32_t i = 0; i < category_count; ++i) free_category(locale, i);
    destroy_record_alone(locale);
}

void destroy_record_alone(vel_locale *locale) {
    release_byte_tables(locale);
    release_time_derived(locale);
    release_query_texts(locale);
    vel_free(locale);
}

} // namespace vel

int32_t vel_create_null_locale_4(vel_locale **locale) {
    if (!locale) return -1;
    *locale = vel::make_record();
    if (*locale) return 0;
    *locale = vel::ready_error_record(VEL_ENOMEM);
    return -1;
}

int32_t vel_createlocale_4(vel_locale **locale) {
    return vel_createlocale2_4(locale, nullptr);
}

int32_t vel_createlocale2_4(vel_locale **locale, const char *directory) {
    if (vel_create_null_locale_4(locale) != 0) return -1;
    vel::host_stream stream(vel::open_default(*locale, directory));
    if (stream) return vel::read_default(stream.get(), *locale);
    int32_t number = vel::get_error(*locale);
    vel::destroy_record(*locale);
    *locale = vel::ready_error_record(number == VEL_ENOMEM ? VEL_ENOMEM : VEL_ENOFILE);
    return -1;
}
