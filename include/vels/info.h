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

VEL_END_DECLS

#endif
