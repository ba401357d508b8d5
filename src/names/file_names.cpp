// Names of object files and message directories.
#include "names/long_form.h"
#include "vels/names.h"

namespace vel {
namespace {

constexpr size_t msg_dname_length = 10; // ll_tt\hhhh

// A long form over file names without a prefix: no more than six entries, since none is repeated.
constexpr size_t max_fnames =
    long_form_entries * (sizeof "VEL_MONETARY =  ; " - 1 + max_piece_fname) + 1;

int32_t write_fnames(void *context, const char *spec, char *buffer, const char *path,
                     const char *dir) {
    text_out out{buffer};
    common_codeset codeset;
    return walk_spec(context, spec, open_form, out, [&](const char *&cursor) {
        uint16_t number;
        out.end = vel_append_dir_prefix(out.end, dir);
        if (vel_lc_piece2fname(context, &cursor, &out.end, &number, path) != 0) return -1;
        return codeset.add(number) ? 0 : refuse(context);
    });
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_lc_spec2lc_fname(void *context, const char *spec, char *out, const char *path,
                             const char *dir) {
    if (!out) return refuse(context);
    return write_fnames(context, spec_copy(spec).text, out, path, dir);
}

int32_t vel_lc_fname2lc_pieces(void *context, const char *fname, char *lang, char *codeset,
                               char *modifier) {
    if (!lang || !codeset || !modifier) return refuse(context);
    spec_copy copy(fname);
    fname_parts parts;
    if (scan_fname(context, copy.text, parts) != 0) return -1;
    text_out language{lang};
    language.put_lower(parts.text, 3);
    language.put(to_upper(parts.text[3]));
    language.put(to_upper(parts.text[4]));
    text_out{codeset}.put_decimal(parts.number);
    *modifier = '\0';
    text_out{modifier}.put(parts.modifier, parts.modifier_length);
    return 0;
}

int32_t vel_lc_spec2msg_dname(void *context, const char *spec, char *out, const char *path,
                              const char *dir) {
    if (!out) return refuse(context);
    char fnames[max_fnames];
    if (write_fnames(context, spec_copy(spec).text, fnames, path, nullptr) != 0) return -1;
    const char *fname = fnames;
    if (is_long_form(fnames)) {
        fname = strstr(fnames, "VEL_MESSAGES = ");
        if (!fname) return refuse(context);
        fname += sizeof "VEL_MESSAGES = " - 1;
    }
    // The name begins with the prefix, of which there may be more than is wanted.
    input_copy<msg_dname_length> prefix(dir);
    char full[msg_dname_length + 1 + max_piece_fname + 1];
    text_out rest{vel_append_dir_prefix(full, prefix.text)};
    rest.put(fname, msg_dname_length);
    *out = '\0';
    text_out{out}.put(full, msg_dname_length);
    return 0;
}

void vel_cs_nums2cv_fname(void *, uint16_t from, uint16_t to, char *out, const char *dir) {
    text_out fname{vel_append_dir_prefix(out, dir)};
    fname.put_hex(from);
    fname.put_hex(to);
    fname.put(".cvo");
}
