/*
 * Types shared by every family of the interface.
 *
 * Units, everywhere: "bytes" counts bytes of multibyte text, "characters" or "values" counts wide
 * values, "columns" counts display columns. Every length, count, index, flag and result is a
 * 32-bit signed integer unless a declaration says otherwise.
 */
#ifndef VELS_TYPES_H
#define VELS_TYPES_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#  if defined(VELS_BUILD)
#    define VEL_API __declspec(dllexport)
#  elif defined(VELS_STATIC)
#    define VEL_API
#  else
#    define VEL_API __declspec(dllimport)
#  endif
#else
#  define VEL_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
#  define VEL_BEGIN_DECLS extern "C" {
#  define VEL_END_DECLS }
#else
#  define VEL_BEGIN_DECLS
#  define VEL_END_DECLS
#endif

/*
 * A wide character: the bytes of a multibyte character packed big-endian. The one-byte character
 * 0x41 is 0x41, the two-byte character A4 A2 is 0xA4A2. A wide string ends with the value 0.
 */
typedef uint32_t vel_wchar;

/*
 * Handles. All are opaque, and the first member of each is its 32-bit error cell: after a failed
 * call, `*(const int32_t *)handle` is the error number, unless the host maps cells elsewhere with
 * an errno hook.
 */
typedef struct vel_locale vel_locale;
typedef struct vel_charmap vel_charmap;
typedef struct vel_cv vel_cv;

/* A calendar date. */
typedef struct vel_date {
    uint16_t month; /* 1 to 12 */
    uint16_t day;   /* 1 to 31 */
    uint16_t year;  /* in full */
} vel_date;

/* A broken-down time. */
typedef struct vel_time_record {
    int32_t subsecond;   /* microseconds, 0 to 999999 */
    int32_t second;      /* 0 to 59 */
    int32_t minute;      /* 0 to 59 */
    int32_t hour;        /* 0 to 23 */
    int32_t day;         /* of the month, 1 to 31 */
    int32_t month;       /* 0 to 11 */
    int32_t year;        /* since 1900, -1900 to 8099 */
    int32_t weekday;     /* since Sunday, 0 to 6 */
    int32_t yearday;     /* since 1 January, 0 to 365 */
    int32_t daylight;    /* daylight-saving flag */
    int32_t reserved[2]; /* 0 */
} vel_time_record;

/*
 * A broken-down time of any calendar, with the month twice: by its number in the year, and by the
 * position of its name in the locale's list. They differ in a calendar with leap months.
 */
typedef struct vel_time_work {
    int32_t subsecond;
    int32_t second;
    int32_t minute;
    int32_t hour;
    int32_t day;        /* of the month, from 1 */
    int32_t month;      /* from 0; 12 is the last one of a Hebrew leap year */
    int32_t month_name; /* from 0; 12 and 13 are the two Adar of a Hebrew leap year */
    int32_t year;       /* since 1900 of the calendar's own era */
    int32_t weekday;    /* since Sunday */
    int32_t yearday;    /* since the first day of the year; 384 at most */
    int32_t daylight;
    int32_t reserved[2];
} vel_time_work;

/* Categories of a locale. */
#define VEL_ALL 1
#define VEL_CTYPE 2
#define VEL_COLLATE 3
#define VEL_NUMERIC 4
#define VEL_MONETARY 5
#define VEL_TIME 6
#define VEL_MESSAGES 7

/* No code set: the failure result of every code-set look-up. */
#define VEL_CS_INVALID 0xE000
/* Frequently used code-set numbers. */
#define VEL_CS_ASCII 364
#define VEL_CS_ISO8859_1 819
#define VEL_CS_UTF8 57372

#endif
