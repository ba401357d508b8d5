// Loading and releasing charmaps.
#include <cstdio>
#include <cstring>

#include "charmap/charmap_object.h"
#include "ext/data_file.h"
#include "ext/error.h"
#include "ext/host_stream.h"
#include "ext/version.h"
#include "vels/charmap.h"

namespace vel {
namespace {

// What handles point to when no charmap could be made: nothing that failed has to be released. They
// are charmaps without characters and names, for hosts that do not look at the result.
struct {
    vel_charmap no_memory, no_file, bad_file, bad_version;
} error_records;

uint32_t empty_bucket = no_symbol;

vel_charmap *error_record_of(int32_t number) {
    switch (number) {
    case VEL_ENOMEM:
        return &error_records.no_memory;
    case VEL_ENOFILE:
        return &error_records.no_file;
    case VEL_EVERSION:
        return &error_records.bad_version;
    default:
        return &error_records.bad_file;
    }
}

vel_charmap *error_record(int32_t number) {
    vel_charmap *record = error_record_of(number);
    record->characters = &empty_table;
    record->names.by_name.heads = record->names.by_bytes.heads = &empty_bucket;
    record->error = number;
    set_error(record, number);
    return record;
}

bool is_error_record(const vel_charmap *charmap) {
    const int32_t numbers[] = {VEL_ENOMEM, VEL_ENOFILE, VEL_EBADFILE, VEL_EVERSION};
    for (int32_t number : numbers) {
        if (charmap == error_record_of(number)) return true;
    }
    return false;
}

size_t length_of(const char *name, int32_t given) {
    if (!name) return 0;
    if (given < 1) return strlen(name);
    size_t limit = static_cast<size_t>(given);
    const void *end = memchr(name, '\0', limit);
    return end ? static_cast<size_t>(static_cast<const char *>(end) - name) : limit;
}

// The number of a code set gives the name of its file; what has no number is the name itself.
void *open_object(vel_charmap *charmap, const char *name, size_t length, const char *directory) {
    stack_or_heap<char, 512> copy(length + 1);
    if (!copy) return fail_null(charmap, VEL_ENOMEM);
    if (length > 0) memcpy(copy.data(), name, length);
    copy[length] = '\0';
    const char *file = copy.data();
    char numbered[sizeof "ffff.cmo"];
    uint16_t number = vel_lc_spec2cs_num(nullptr, file, nullptr);
    if (number != VEL_CS_INVALID) {
        snprintf(numbered, sizeof numbered, "%04x.cmo", static_cast<unsigned>(number));
        file = numbered;
    }
    if (directory) return vel_open_in(charmap, directory, file);
    return vel_find_data_file(charmap, file, "cm", VEL_CM_VERSION);
}

int32_t load(vel_charmap *charmap, const char *name, size_t length, const char *directory) {
    host_stream stream(open_object(charmap, name, length, directory));
    return stream ? read_charmap(stream.get(), *charmap) : get_error(charmap);
}

} // namespace
} // namespace vel

int32_t vel_cm_load(vel_charmap **charmap, const char *name, int32_t name_length,
                    const char *directory) {
    if (!charmap) return -1;
    auto made = vel::make_host<vel_charmap>();
    int32_t error = VEL_ENOMEM;
    if (made) {
        vel::set_error(made.get(), 0);
        error = vel::load(made.get(), name, vel::length_of(name, name_length), directory);
    }
    if (error == 0) {
        *charmap = made.release();
        return 0;
    }
    if (made) vel::release_charmap(*made);
    *charmap = vel::error_record(error);
    return -1;
}

void vel_cm_unload(vel_charmap *charmap) {
    if (!charmap || vel::is_error_record(charmap)) return;
    vel::release_charmap(*charmap);
    vel::vel_free(charmap);
}
