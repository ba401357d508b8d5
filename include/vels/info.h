/*
 * What a locale says of itself: its words, formats and conventions by item number, the conventions
 * of numbers and money as one block, and how long the text of a time format can become.
 *
 * Nothing here copies or allocates: every pointer leads into the locale and is valid until the
 * category it comes from is set anew or the locale is released.
 */
#ifndef VELS_INFO_H
#define VELS_INFO_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* A string of a locale in both forms. Neither is ever null; they are not to be written to. */
typedef struct vel_text {
    char *bytes;
    vel_wchar *wide;
} vel_text;

/*
 * Digit grouping: `count` sizes, the one next to the decimal point first; -1 ends grouping, and
 * without it the last size repeats. A count of 0 is no grouping.
 */
typedef struct vel_grouping {
    int32_t count;
    int32_t sizes[15];
} vel_grouping;

typedef struct vel_numeric_conventions {
    vel_text decimal_point;
    vel_text thousands_sep;
    vel_grouping grouping;
    vel_text positive_sign;
    vel_text negative_sign;
} vel_numeric_conventions;

/* Numbers that the locale does not give are 127. */
typedef struct vel_monetary_conventions {
    vel_text int_curr_symbol; /* three letters and the separator */
    vel_text currency_symbol;
    vel_text mon_decimal_point;
    vel_text mon_thousands_sep;
    vel_grouping grouping;
    vel_text positive_sign;
    vel_text negative_sign;
    int32_t int_frac_digits;
    int32_t frac_digits;
    int32_t p_cs_precedes;  /* 1: the symbol stands before a positive amount */
    int32_t p_sep_by_space; /* 0: none, 1: between symbol and amount, 2: between sign and symbol */
    int32_t n_cs_precedes;
    int32_t n_sep_by_space;
    int32_t p_sign_posn; /* 0: parentheses, 1: before all, 2: behind all, 3, 4: at the symbol */
    int32_t n_sign_posn;
} vel_monetary_conventions;

/* yesexpr, noexpr, yesstr and nostr, then four strings that are empty. */
typedef struct vel_messages_conventions {
    vel_text texts[8];
} vel_messages_conventions;

typedef struct vel_conventions {
    vel_numeric_conventions numeric;
    vel_monetary_conventions monetary;
    vel_messages_conventions messages;
} vel_conventions;

/* --- Items by number -------------------------------------------------------------------------- */

/* The days and months of a list have consecutive numbers: VEL_ITEM_DAY_1 + 6 is Saturday. */
#define VEL_ITEM_D_T_FMT 0        /* format of date and time */
#define VEL_ITEM_DAY_1 1          /* names of seven days, Sunday first */
#define VEL_ITEM_ABDAY_1 8        /* the same, abbreviated */
#define VEL_ITEM_MON_1 15         /* names of up to twenty months */
#define VEL_ITEM_ABMON_1 35       /* the same, abbreviated */
#define VEL_ITEM_DECIMAL_POINT 55 /* decimal point of numbers */
#define VEL_ITEM_THOUSANDS_SEP 56 /* thousands separator of numbers */
#define VEL_ITEM_YESSTR 57        /* an answer that means yes */
#define VEL_ITEM_NOSTR 58         /* an answer that means no */
#define VEL_ITEM_CRNCYSTR 59      /* currency symbol behind - (before an amount) or + (after it) */
#define VEL_ITEM_CODESET 60       /* name of the code set of VEL_CTYPE */
#define VEL_ITEM_D_FMT 61         /* format of a date */
#define VEL_ITEM_T_FMT 62         /* format of a time */
#define VEL_ITEM_T_FMT_AMPM 63    /* format of a time of twelve hours */
#define VEL_ITEM_AM_STR 64
#define VEL_ITEM_PM_STR 65
#define VEL_ITEM_ERA 66 /* entries of the eras, joined by ; */
#define VEL_ITEM_ERA_D_FMT 67
#define VEL_ITEM_ERA_D_T_FMT 68
#define VEL_ITEM_ERA_T_FMT 69
#define VEL_ITEM_ALT_DIGITS 70 /* joined by ; */
#define VEL_ITEM_YESEXPR 71    /* regular expression for answers that mean yes */
#define VEL_ITEM_NOEXPR 72
#define VEL_ITEM_CALENDAR 73 /* name of the calendar and a line end, in ASCII: "gregorian\n" */

/*
 * The string of an item. What the locale does not have is an empty string.
 *
 * Null with VEL_EBADLEN for a month beyond those of the locale. Null without an error number for
 * any other number that is not listed above, for VEL_ITEM_CALENDAR when no calendar is loaded, and
 * for a null locale.
 */
VEL_API const char *vel_nl_langinfo(vel_locale *locale, int32_t item);
/* The same as a wide string. */
VEL_API const vel_wchar *vel_wc_nl_langinfo(vel_locale *locale, int32_t item);

/* The string of one of the seven formats of dates and times: VEL_ITEM_D_T_FMT, _D_FMT, _T_FMT,
   _T_FMT_AMPM, _ERA_D_FMT, _ERA_D_T_FMT, _ERA_T_FMT. For any other number, and for a null locale,
   an empty string. Never null. */
VEL_API const char *vel_get_ltime_fmts(vel_locale *locale, int32_t item);

/* --- Conventions ------------------------------------------------------------------------------ */

/* The conventions of numbers, money and answers. Null for a null locale, without an error number.
 */
VEL_API const vel_conventions *vel_localeconv(vel_locale *locale);

/* --- Length of formatted times ---------------------------------------------------------------- */

/*
 * The largest number of bytes that formatting a time by this multibyte format can give, terminator
 * excluded. `mode` has to be 1.
 *
 * -1 without an error number when `mode` is not 1; with VEL_EFORMAT when `format` is null,
 * VEL_E2BIG when the number does not fit, and otherwise with the number of the formatter that
 * refuses the format, such as VEL_ETIMEFMT at an unknown conversion.
 */
VEL_API int32_t vel_mbsfmtexpand(vel_locale *locale, int32_t mode, const char *format);
/* The largest number of characters, for a wide format; otherwise as vel_mbsfmtexpand. */
VEL_API int32_t vel_wcsfmtexpand(vel_locale *locale, int32_t mode, const vel_wchar *format);

VEL_END_DECLS

#endif
