// From a long form over object file names back to a specification.
#include "ext/data_file.h"
#include "ext/host_stream.h"
#include "ext/memory.h"
#include "ext/version.h"
#include "names/long_form.h"
#include "vels/names.h"

namespace vel {
namespace {

using fname_copy = input_copy<310>;

// 0 when the file opens. `dir`, with its separator, is null for the installed locales.
int32_t open_object(void *context, const char *name, size_t length, const char *dir) {
    size_t dir_length = dir ? strlen(dir) : 0;
    stack_or_heap<char, 1024> path(dir_length + length + 1);
    if (!path) return refuse(context, VEL_ENOMEM);
    if (dir) memcpy(path.data(), dir, dir_length);
    memcpy(path.data() + dir_length, name, length);
    path[dir_length + length] = '\0';
    host_stream stream(dir ? vel_open_logged(nullptr, path.data())
                           : vel_find_data_file(nullptr, path.data(), "lc", VEL_LC_VERSION));
    return stream ? 0 : refuse(context, VEL_EFORMAT);
}

int32_t open_all(void *context, const char *(&starts)[long_form_entries], const char *dir) {
    for (const char *name : starts) {
        const char *end = strstr(name, " ; ");
        size_t length = end ? static_cast<size_t>(end - name) : strlen(name);
        if (open_object(context, name, length, dir) != 0) return -1;
    }
    return 0;
}

int32_t write_spec(void *context, const char *&cursor, text_out &out) {
    fname_parts fname;
    if (scan_fname(context, cursor, fname) != 0) return -1;
    out.put_lower(fname.text, language_length);
    out.put('.');
    out.put_decimal(fname.number);
    if (fname.modifier_length) {
        out.put('@');
        out.put(fname.modifier, fname.modifier_length);
    }
    cursor = fname.modifier + fname.modifier_length;
    return take(cursor, ".lco") ? 0 : refuse(context);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_lc_fname2lc_spec(void *context, const char *long_fname, char *out, char *dir) {
    fname_copy copy(long_fname);
    const char *starts[long_form_entries];
    if (!out || !find_pieces(copy.text, starts)) return refuse(context);
    if (dir && !*dir) dir = nullptr;
    if (dir) text_out{dir + strlen(dir)}.put('\\');
    if (open_all(context, starts, dir) != 0) return -1;
    text_out spec{out};
    return walk_long_form(context, copy.text, open_form, spec,
                          [&](const char *&cursor) { return write_spec(context, cursor, spec); });
}
