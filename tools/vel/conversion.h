// Conversions between code sets, opened by the names that people type.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "vels.h"

namespace vel_tool {

struct conversion_release {
    void operator()(vel_cv *cv) const { vel_cv_unload(cv); }
};
using conversion_handle = std::unique_ptr<vel_cv, conversion_release>;

inline int32_t error_of(const vel_cv *cv) {
    return *reinterpret_cast<const int32_t *>(cv);
}

// A code set as it was asked for.
struct named_code_set {
    std::string name;
    uint16_t number;

    bool is_utf8() const { return number == VEL_CS_UTF8; }
};

// Gives up when the registry does not know the name.
named_code_set find_code_set(const std::string &name);
named_code_set utf8_code_set();

// The way from one code set to another: one conversion, two by way of UTF-8 when none is installed
// for the pair, or none at all when both are the same.
struct conversion_route {
    named_code_set from, to;
    std::vector<conversion_handle> steps;
};

// Gives up with a message that says what was tried and what to do.
conversion_route open_route(const std::string &from, const std::string &to);

// What to do about data that is not there: `otherwise`, unless nothing at all is installed.
std::string advice_on_missing_data(const std::string &otherwise);

// Whether the last data file that the library asked for opened.
bool data_file_was_read();
// "cannot load WHAT": why, and by which file when one was read.
std::string data_file_failure(const std::string &what, int32_t error);

// One conversion, or null when there is none for the pair. A damaged one is a failure.
conversion_handle open_conversion(const named_code_set &from, const named_code_set &to);

} // namespace vel_tool
