#include "objfile/object_header.h"

#include <cstring>

namespace vel {
namespace {

constexpr int32_t line_size = 128;
constexpr int32_t fixed_header_lines = 3;

// A decimal number that has at most a few digits; 0 for none, and larger than any for more.
int32_t small_number(const char *digits) {
    int32_t value = 0;
    for (; is_digit(*digits) && value < INT32_MAX / 20; ++digits)
        value = value * 10 + *digits - '0';
    return value;
}

} // namespace

bool next_line_is(text_reader &stream, const char *expected) {
    char line[line_size];
    if (!stream.gets(line, sizeof line)) return false;
    size_t length = strlen(line);
    if (length > 0 && line[length - 1] == '\n') line[length - 1] = '\0';
    return strcmp(line, expected) == 0;
}

bool skip_header_lines(text_reader &stream) {
    char line[line_size];
    if (!stream.gets(line, sizeof line)) return false;
    const char *equals = strchr(line, '=');
    int32_t lines = equals ? small_number(equals + 1) : 0;
    if (lines < fixed_header_lines) return false;
    for (int32_t i = fixed_header_lines; i < lines; ++i) {
        if (!stream.gets(line, sizeof line)) return false;
    }
    return true;
}

} // namespace vel
