// A locale object is
//
//   FILE_TYPE=locale_object
//   COMPILER_VERSION=11
//   HEADER_LENGTH=<header lines, these three included>
//   ... further header lines, for people
//   <name of the code set>
//
// and six sections, each opened by its marker line. Readers are found through the marker, so what
// stands between sections does not matter.
//
// Contract. A locale whose categories were read here is safe to use whatever the file holds: each
// category reader states what it guarantees, and a category that cannot keep it is null. No number
// of the file is taken as a size. Beside the work of the readers each byte is looked at once.
#include "locale/object.h"

#include <cstring>

#include "ext/diag.h"
#include "ext/error.h"
#include "ext/version.h"
#include "locale/category.h"
#include "objfile/object_header.h"
#include "vels/registry.h"

namespace vel {
namespace {

constexpr int32_t line_size = 128;
constexpr int32_t whole_object_line_size = 32; // of the lines looked at for the next marker
constexpr char file_type[] = "FILE_TYPE=locale_object";
constexpr char compiler_version[] = "COMPILER_VERSION=" VEL_LC_VERSION;

// The line is cut at 20 bytes, and the last of what is there is taken for the newline.
bool read_codeset_name(text_reader &stream, char (&name)[codeset_name_size]) {
    vel_skip_space(stream);
    if (!stream.gets(name, sizeof name)) return false;
    size_t length = strlen(name);
    if (length < 2) return false;
    name[length - 1] = '\0';
    return true;
}

// 0, or the error number.
int32_t read_header(text_reader &stream, char (&codeset)[codeset_name_size]) {
    if (!next_line_is(stream, file_type)) return VEL_EBADFILE;
    if (!next_line_is(stream, compiler_version)) return VEL_EVERSION;
    if (!skip_header_lines(stream) || !read_codeset_name(stream, codeset)) return VEL_EBADFILE;
    return 0;
}

void set_codeset(vel_locale *locale, int32_t index, const char (&codeset)[codeset_name_size]) {
    memcpy(locale->codeset_names[index], codeset, sizeof codeset);
}

// Equal names need no look-up, so objects of a code set that the registry lacks load too. Names
// that the registry does not know are different code sets, though both look-ups give the same
// number then; and no name at all, that of a null CTYPE, is none.
bool same_codeset(const char *a, const char *b) {
    if (!*a || !*b) return false;
    if (strcmp(a, b) == 0) return true;
    uint16_t number = vel_cs_name2cs_num(nullptr, a, nullptr);
    return number != VEL_CS_INVALID && number == vel_cs_name2cs_num(nullptr, b, nullptr);
}

void record_failure(const char *message) {
    if (message) vel_diag(message);
}

// Finds the section, reads it and makes what is derived from it. False with the category null
// again but for its names, and the number stored if there is one.
bool load_section(text_reader &stream, vel_locale *locale, int32_t index, bool alone) {
    const category_row &row = categories[index];
    if (!stream.skip_to_line(row.marker, alone ? line_size : whole_object_line_size)) {
        set_error(locale, VEL_EBADFILE);
        return false;
    }
    section in(stream);
    bool read = row.read(in, locale);
    if (read && row.initialise(locale) >= 1) return true;
    row.release(locale);
    if (read) {
        record_failure(row.uninitialised);
    } else {
        record_failure(alone ? row.unreadable_alone : row.unreadable);
        if (in.error != 0) set_error(locale, in.error);
    }
    return false;
}

} // namespace

bool read_object(void *file, vel_locale *locale) {
    text_reader stream(file);
    char codeset[codeset_name_size];
    int32_t error = read_header(stream, codeset);
    if (error != 0) {
        set_error(locale, error);
        return false;
    }
    for (int32_t i = 0; i < category_count; ++i) set_codeset(locale, i, codeset);
    for (int32_t i = 0; i < category_count; ++i) {
        if (load_section(stream, locale, i, false)) continue;
        if (get_error(locale) == 0) set_error(locale, VEL_ELOCALE);
        return false;
    }
    return true;
}

// CTYPE is compared with itself: it sets the code set that the other categories have to have.
// Those that are loaded already are not looked at, although they may now be of another one. A host
// that changes the code set category by category has to begin with CTYPE, and what it has not yet
// set still works: it is only text of the old code set.
bool read_category(void *file, vel_locale *locale, int32_t index) {
    text_reader stream(file);
    char codeset[codeset_name_size];
    int32_t error = read_header(stream, codeset);
    if (error == 0) {
        set_codeset(locale, index, codeset);
        const char *ctype = locale->codeset_names[category_index(VEL_CTYPE)];
        if (!same_codeset(codeset, ctype)) error = VEL_ECODESET;
    }
    if (error != 0) set_error(locale, error);
    if (error == 0 && load_section(stream, locale, index, true)) return true;
    make_null(locale, index);
    return false;
}

} // namespace vel
