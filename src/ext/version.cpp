// Version queries and the texts of error numbers.
#include "ext/version.h"

#include "vels/errors.h"
#include "vels/host.h"

const char *vel_version(void) {
    return "velslib-3.13.TC2";
}
const char *vel_cm_version(void) {
    return VEL_CM_VERSION;
}
const char *vel_lc_version(void) {
    return VEL_LC_VERSION;
}
const char *vel_cv_version(void) {
    return VEL_CV_VERSION;
}

namespace {

struct error_text {
    int32_t number;
    const char *text;
};

constexpr error_text error_texts[] = {
    {0, "no error"},
    {VEL_EILSEQ, "invalid or incomplete character"},
    {VEL_EFAULT, "a required pointer is null"},
    {VEL_ENOMEM, "out of memory"},
    {VEL_ENOPRINT, "negative count or index, or bad direction"},
    {VEL_EBADPOS, "position outside the string"},
    {VEL_ENONUM, "no number in the string"},
    {VEL_EINVAL, "invalid argument"},
    {VEL_ENOFILE, "data file not found"},
    {VEL_EBADLEN, "length or index out of range"},
    {VEL_EBADFILE, "not a readable object file of the expected type"},
    {VEL_ENOTFOUND, "item not found"},
    {VEL_EIO, "input or output failed"},
    {VEL_E2BIG, "output buffer too small"},
    {VEL_EFORMAT, "malformed format, or a named data file cannot be opened"},
    {VEL_EEOF, "end of file"},
    {VEL_EREAD, "the stream ended without saying why"},
    {VEL_ENOCAT, "category not loaded in the source locale"},
    {VEL_ECATLOADED, "category already loaded in the destination locale"},
    {VEL_EBADMODE, "unexpected mode"},
    {VEL_ELONGKEY, "table key too long"},
    {VEL_ETIMEFMT, "unknown conversion, or text and format disagree"},
    {VEL_ETIME23, "fraction of a second out of range"},
    {VEL_ETIME24, "second out of range"},
    {VEL_ETIME25, "minute out of range"},
    {VEL_ETIME26, "hour out of range"},
    {VEL_ETIME27, "day of the month out of range"},
    {VEL_ETIME28, "weekday out of range"},
    {VEL_ETIME29, "day of the year missing or out of range"},
    {VEL_ETIME30, "month out of range"},
    {VEL_ETIME31, "year out of range"},
    {VEL_ETIME33, "fraction of a second expected"},
    {VEL_ETIME34, "second expected"},
    {VEL_ETIME35, "minute expected"},
    {VEL_ETIME36, "hour expected"},
    {VEL_ETIME37, "day of the month expected"},
    {VEL_ETIME38, "weekday expected, or not the weekday of the date"},
    {VEL_ETIME40, "month expected"},
    {VEL_ETIME41, "year expected"},
    {VEL_ETIME42, "time field not convertible"},
    {VEL_ENUMFMT, "bad number format"},
    {VEL_ENOCONV, "nothing could be converted, or the text differs from the format"},
    {VEL_ETIME47, "time field out of range"},
    {VEL_ETIME48, "month name expected"},
    {VEL_EBADSIGN, "the locale has an unusable sign"},
    {VEL_ECALENDAR, "unknown calendar"},
    {VEL_EVERSION, "object file of another format version"},
    {VEL_ESYMNAME, "unknown symbolic character name"},
    {VEL_ELOCALE, "locale could not be created"},
    {VEL_EMIXEDLEN, "one string counted, the other terminated"},
    {VEL_ENOERA, "no era entries, or an empty character table"},
    {VEL_ECODESET, "categories of different code sets"},
};

} // namespace

const char *vel_strerror(int32_t number) {
    for (const error_text &entry : error_texts) {
        if (entry.number == number) return entry.text;
    }
    return "unknown error";
}
