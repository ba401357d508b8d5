// Opening and releasing conversions.
#include <cstring>

#include "conv/read.h"
#include "ext/data_file.h"
#include "ext/error.h"
#include "ext/version.h"
#include "vels/names.h"
#include "vels/registry.h"

namespace vel {
namespace {

constexpr char directory_word[] = "cv";
constexpr char extension[] = ".cvo";
constexpr size_t max_fname = 1023;
constexpr size_t max_number_fname = sizeof "ffffffff.cvo";

// They stand in for a handle where none could be made.
struct {
    vel_cv no_memory;
    vel_cv no_file;
    vel_cv unknown;
} error_records;

int32_t fail_without_record(vel_cv **handle, int32_t number) {
    vel_cv *record = number == VEL_ENOMEM   ? &error_records.no_memory
                     : number == VEL_EINVAL ? &error_records.unknown
                                            : &error_records.no_file;
    record->error = number;
    *handle = record;
    return fail(record, number);
}

bool is_error_record(const vel_cv *cv) {
    return cv == &error_records.no_memory || cv == &error_records.no_file ||
           cv == &error_records.unknown;
}

vel_cv *make_conversion() {
    vel_cv *cv = make_host<vel_cv>().release();
    if (cv) set_error(cv, 0);
    return cv;
}

// Part of a text.
struct name_part {
    const char *text;
    size_t length;

    bool operator==(const name_part &other) const {
        return length == other.length && memcmp(text, other.text, length) == 0;
    }
};

name_part whole(const char *text) {
    return {text, strlen(text)};
}

name_part codeset_of(const char *specification) {
    const char *dot = strchr(specification, '.');
    const char *codeset = dot ? dot + 1 : "";
    return {codeset, strcspn(codeset, " @")};
}

int32_t open_by_names(vel_cv **handle, const name_part &to, const name_part &from) {
    if (to == from) return fail_without_record(handle, VEL_ENOFILE);
    if (from.length > max_fname || to.length > max_fname ||
        from.length + to.length + sizeof extension > max_fname) {
        return fail_without_record(handle, VEL_ENOFILE);
    }
    char fname[max_fname + 1];
    char *end = fname;
    memcpy(end, from.text, from.length);
    end += from.length;
    *end++ = '_';
    memcpy(end, to.text, to.length);
    memcpy(end + to.length, extension, sizeof extension);
    return vel_iconv_open1(handle, fname);
}

// With a directory the file is opened there and nowhere else.
void *open_by_numbers(vel_cv *cv, const char *fname, bool in_directory) {
    return in_directory ? vel_open_logged(cv, fname)
                        : vel_find_data_file(cv, fname, directory_word, VEL_CV_VERSION);
}

int32_t load_by_numbers(vel_cv **handle, uint16_t to, uint16_t from, const char *directory) {
    size_t prefix = directory ? strlen(directory) + 1 : 0;
    stack_or_heap<char, 512> fname(prefix + max_number_fname);
    vel_cv *cv = fname ? make_conversion() : nullptr;
    if (!cv) return fail_without_record(handle, VEL_ENOMEM);
    *handle = cv;
    vel_cs_nums2cv_fname(cv, from, to, fname.data(), directory);
    bool in_directory = directory && *directory;
    return vel_cv_read(open_by_numbers(cv, fname.data(), in_directory), cv) == 0 ? 1 : -1;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_iconv_open(vel_cv **handle, const char *to, const char *from) {
    if (!handle) return -1;
    if (!to || !from) return fail_without_record(handle, VEL_ENOFILE);
    return open_by_names(handle, whole(to), whole(from));
}

int32_t vel_iconv_open1(vel_cv **handle, const char *file_name) {
    if (!handle) return -1;
    vel_cv *cv = make_conversion();
    if (!cv) return fail_without_record(handle, VEL_ENOMEM);
    *handle = cv;
    void *file =
        file_name ? vel_find_data_file(cv, file_name, directory_word, VEL_CV_VERSION) : nullptr;
    return vel_cv_read(file, cv);
}

int32_t vel_cv_open(vel_cv **handle, const char *spec_to, const char *spec_from) {
    if (!handle) return -1;
    name_part to = codeset_of(spec_to ? spec_to : "");
    name_part from = codeset_of(spec_from ? spec_from : "");
    if (to.length == 0 || from.length == 0) return fail_without_record(handle, VEL_ENOFILE);
    if (to == from) {
        *handle = nullptr;
        return 0;
    }
    return open_by_names(handle, to, from) == 0 ? 1 : -1;
}

int32_t vel_cv_load(vel_cv **handle, const char *spec_to, const char *spec_from,
                    const char *registry, const char *directory) {
    if (!handle) return -1;
    uint16_t to = vel_lc_spec2cs_num(nullptr, spec_to, registry);
    uint16_t from = vel_lc_spec2cs_num(nullptr, spec_from, registry);
    if (to == VEL_CS_INVALID || from == VEL_CS_INVALID) {
        return fail_without_record(handle, VEL_EINVAL);
    }
    if (to == from) {
        *handle = nullptr;
        return 0;
    }
    return load_by_numbers(handle, to, from, directory);
}

int32_t vel_cv_unload(vel_cv *cv) {
    if (!cv) return -1;
    if (is_error_record(cv)) return 0;
    release_entries(cv->table);
    release_entries(cv->shift_table);
    vel_free(cv->byte_map);
    vel_free(const_cast<void *>(cv->runs.facts));
    vel_free(cv);
    return 0;
}
