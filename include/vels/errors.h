/* Error numbers, as found in error cells. The numbers are part of the interface. */
#ifndef VELS_ERRORS_H
#define VELS_ERRORS_H

#include "vels/types.h"

#define VEL_EILSEQ 1        /* invalid or incomplete character, or one the code set lacks */
#define VEL_EFAULT 2        /* a required pointer argument is null */
#define VEL_ENOMEM 3        /* memory could not be allocated */
#define VEL_ENOPRINT 4      /* a negative count or index, or a bad direction */
#define VEL_EBADPOS 5       /* a position lies outside the string */
#define VEL_ENONUM 6        /* a string to be converted to a number holds none */
#define VEL_EINVAL 7        /* an argument has an invalid value */
#define VEL_ENOFILE 8       /* a data file could not be found or opened */
#define VEL_EBADLEN 9       /* a length or index is out of range */
#define VEL_EBADFILE 11     /* an object file is of the wrong type or cannot be read */
#define VEL_ENOTFOUND 12    /* a looked-up item is not present */
#define VEL_EIO 13          /* reading or writing a host stream failed */
#define VEL_E2BIG 14        /* the output buffer is too small */
#define VEL_EFORMAT 15      /* a format is malformed; a named data file cannot be opened */
#define VEL_EEOF 16         /* end of file on a host stream */
#define VEL_EREAD 17        /* end of file that the stream itself does not report */
#define VEL_ENOCAT 18       /* a category to be copied is not loaded in the source */
#define VEL_ECATLOADED 19   /* the destination already holds the category */
#define VEL_EBADMODE 20     /* an unexpected mode character in a format item */
#define VEL_ELONGKEY 21     /* a table holds a key longer than its reader allows */
#define VEL_ETIMEFMT 22     /* time: input and format disagree */
#define VEL_ETIME23 23      /* 23 to 48: a time field out of range or not convertible */
#define VEL_ETIME24 24
#define VEL_ETIME25 25
#define VEL_ETIME26 26
#define VEL_ETIME27 27
#define VEL_ETIME28 28
#define VEL_ETIME29 29
#define VEL_ETIME30 30
#define VEL_ETIME31 31
#define VEL_ETIME33 33
#define VEL_ETIME34 34
#define VEL_ETIME35 35
#define VEL_ETIME36 36
#define VEL_ETIME37 37
#define VEL_ETIME38 38
#define VEL_ETIME40 40
#define VEL_ETIME41 41
#define VEL_ETIME42 42
#define VEL_ENUMFMT 45      /* numeric formatting: bad format */
#define VEL_ENOCONV 46      /* numeric parsing: nothing could be converted */
#define VEL_ETIME47 47
#define VEL_ETIME48 48
#define VEL_EBADSIGN 49     /* a locale object holds a sign other than "+" or "-" */
#define VEL_ECALENDAR 50    /* a locale object names an unknown calendar */
#define VEL_EVERSION 51     /* an object file is of another format version */
#define VEL_ESYMNAME 53     /* a symbolic character name cannot be resolved */
#define VEL_ELOCALE 55      /* a locale could not be created, for no more precise reason */
#define VEL_EMIXEDLEN 56    /* one of two strings is counted, the other terminated */
#define VEL_ENOERA 57       /* no era entries; an empty character table */
#define VEL_ECODESET 58     /* a category has a code set other than that of VEL_CTYPE */

VEL_BEGIN_DECLS

/*
 * A short English text for an error number, for people to read. The text is constant and never
 * null: a number that is not in the table above gives "unknown error".
 */
VEL_API const char *vel_strerror(int32_t number);

VEL_END_DECLS

#endif
