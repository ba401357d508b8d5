// Reading the registry file. A name, blank space, a number; the rest of the line is free text, and
// a "#" where a name would begin makes the whole line a comment.
#include "names/registry.h"
#include "names/text.h"

namespace vel {
namespace {

int32_t skip_to_entry(text_reader &file) {
    for (;;) {
        int32_t c = file.get();
        if (c == '#') {
            if (!vel_skip_registry_line(file)) return end_of_file;
        } else if (!is_space(c)) {
            return c;
        }
    }
}

} // namespace

int32_t vel_read_registry_name(text_reader &file, codeset_name &name) {
    int32_t c = skip_to_entry(file);
    if (c == end_of_file) return 0;
    int32_t length = 0;
    for (; is_graph(c); c = file.get()) {
        if (length == max_codeset_name) return 0;
        name[length++] = to_lower(c);
    }
    file.unget(c);
    name[length] = '\0';
    return 1;
}

int32_t vel_skip_registry_line(text_reader &file) {
    int32_t c = file.get();
    while (c != '\n' && c != end_of_file) c = file.get();
    return c == '\n';
}

uint16_t vel_read_registry_number(void *context, text_reader &file) {
    vel_skip_space(file);
    int32_t c = file.get();
    uint16_t number = is_digit(c) ? 0 : VEL_CS_INVALID;
    for (; is_digit(c); c = file.get()) number = static_cast<uint16_t>(number * 10 + (c - '0'));
    file.unget(c);
    if (c == end_of_file || number == VEL_CS_INVALID) {
        refuse(context, VEL_EBADFILE);
        return VEL_CS_INVALID;
    }
    return number;
}

bool vel_is_decimal_string(const char *text) {
    if (!*text) return false;
    while (is_digit(*text)) ++text;
    return !*text;
}

} // namespace vel
