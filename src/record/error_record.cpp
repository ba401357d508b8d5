#include "record/error_record.h"

#include "ext/error.h"

namespace vel {
namespace {

struct {
    vel_locale no_memory;
    vel_locale no_file;
} records;

} // namespace

vel_locale *error_record(int32_t number) {
    vel_locale *record = number == VEL_ENOMEM ? &records.no_memory : &records.no_file;
    record->error = number;
    set_error(record, number);
    return record;
}

bool is_error_record(const vel_locale *locale) {
    return locale == &records.no_memory || locale == &records.no_file;
}

} // namespace vel
