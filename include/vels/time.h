/*
 * Dates and times as text: formatting, the calendars that they are given in, the century of a
 * two-digit year, and reading them back.
 *
 * A vel_time_record holds a date of the Gregorian calendar. In a locale of another calendar (Hebrew
 * or Islamic) formatting converts it, and every conversion of the format shows the day, month, year,
 * weekday and day of the year of that calendar. Eras are looked up by the Gregorian date.
 *
 * Undefined behaviour: a null locale (except where stated), buffers shorter than their size, text
 * and formats without a terminator.
 */
#ifndef VELS_TIME_H
#define VELS_TIME_H

#include "vels/types.h"

VEL_BEGIN_DECLS

/* --- Formatting ------------------------------------------------------------------------------- */

/*
 * Writes a time under a multibyte format into `buffer` of `size` bytes, terminator included, and
 * gives the bytes written, terminator excluded. That may be 0 without a failure: set the error
 * number to 0 first where an empty result is possible.
 *
 * Between "%" and the letter of a conversion may stand flags, a width in columns and "." with a
 * precision, as in number formats: "-" puts the padding behind, "0" pads with zeros. The precision
 * of a number is its least digits, that of a name its most columns.
 *
 *   %a %A  weekday, abbreviated and in full      %d  day, two digits
 *   %b %h  month, abbreviated                    %e  day, with a blank in place of the zero
 *   %B     month in full                         %m  month, two digits
 *   %p     the AM or PM string                   %y  year of the century, two digits
 *   %c     date and time as the locale has it    %Y  year, four digits
 *   %x %X  date, time                            %C %g  century
 *   %r     12-hour time                          %j  day of the year, from 1, three digits
 *   %D     %m/%d/%y                              %u %w  weekday from 1 (Monday) to 7, from 0
 *   %R %T  %H:%M, %H:%M:%S                               (Sunday) to 6, two digits
 *   %H %I  hour of 24, of 12, two digits         %n %t %%  newline, tab, "%"
 *   %M %S  minute, second, two digits
 *   %F     microseconds, six digits; %F0 to %F5 keep the first 0 to 5
 *   %iF    "." and the fraction in two digits; %iF1 to %iF5 in 1 to 5
 *   %iY    as %Y
 *
 * %Ec %Ex %EX are the locale's era forms of date and time, %EY the year as the era writes it, %EC
 * and %Eg the first and second name of the era, %Ey the year in the era. %O before one of
 * d e H I m M S u w y j C D R T writes each number with the locale's own digits, and plainly when
 * the locale's list does not reach as far. Without eras the locale ignores the E, without digits of
 * its own the O.
 *
 * 0 on failure; what had been written then stays, without a terminator. VEL_EFORMAT: a null format,
 * one that ends inside a conversion, or locale formats that lead into one another without end;
 * VEL_EFAULT: a null buffer or time; VEL_E2BIG: `size` is too small; VEL_EILSEQ: the format is no
 * text of the code set; VEL_ENUMFMT: "." without a precision; VEL_ETIMEFMT: an unknown conversion;
 * VEL_EBADLEN: no era holds the date. A field that is used and out of range: VEL_ETIME23 (fraction,
 * 0 to 999999), 24 (second, 0 to 59), 25 (minute, 0 to 59), 26 (hour, 0 to 23), 27 (day, 1 to 99),
 * 28 (weekday, 0 to 6), 29 (day of the year), 30 (month), 31 (year, -1900 to 8099; a date outside
 * the range of the calendar). VEL_ETIME41: the text of %Y does not fit. VEL_ECALENDAR: the locale's
 * calendar has no conversion.
 */
VEL_API int32_t vel_mbsftime(vel_locale *locale, char *buffer, int32_t size, const char *format,
                             const vel_time_record *time);

/* The same for a wide format and buffer, with size and result in characters. */
VEL_API int32_t vel_wcsftime(vel_locale *locale, vel_wchar *buffer, int32_t size,
                             const vel_wchar *format, const vel_time_record *time);

/* --- Calendars -------------------------------------------------------------------------------- */

/*
 * Converts a Gregorian date into the calendar of the locale: day, month, name of the month, year,
 * weekday and day of the year; the other members are copied. In a Gregorian locale, or one without
 * VEL_TIME, all are copied unchecked. `to` may be `from`.
 *
 * Returns 0. -1 with all of `*to` 0 otherwise: VEL_ETIME27 (day outside 1 to 99), VEL_ETIME30
 * (month), VEL_ETIME31 (a date outside 1 January 1 to 23 February 10000 for the Hebrew calendar, 18
 * July 622 to 20 October 10323 for the Islamic one), VEL_ECALENDAR (no conversion).
 */
VEL_API int32_t vel_cal_gregorian_to_local(vel_locale *locale, const vel_time_work *from,
                                           vel_time_work *to);

/*
 * Converts back. A `month` of -1 stands for the month whose name has the position `month_name`. A
 * day beyond the end of its month is one of the next month.
 *
 * -1 as above; the ranges are 18 Tevet 3761 to the year 14213, and the years 1 to 9999.
 */
VEL_API int32_t vel_cal_local_to_gregorian(vel_locale *locale, const vel_time_work *from,
                                           vel_time_work *to);

/* The number of entries in the locale's list of eras; -1 for a null locale. */
VEL_API int32_t vel_get_era_count(const vel_locale *locale);

/* --- The century of a two-digit year ---------------------------------------------------------- */

/*
 * The century, such as 19 or 20, that a year of two digits belongs to, by a rule:
 *
 *   'C'  the one that brings the date closest to the reference date
 *   'F'  the reference date's own, or the next when the date would not lie after it
 *   'P'  the reference date's own, or the one before when the date would not lie before it
 *   'R'  (and any other) the reference date's own
 *
 * A month or day of 0 is that of the reference date, 29 February is 1 March in other than leap
 * years, and a year above 99 has its own century. The reference date is the current date. In a
 * locale of another calendar the result is that of vel_alt_getcentury.
 *
 * -1 with VEL_ETIME30 (month above 12), VEL_ETIME27 (day above 31), VEL_ETIME31 (the century would
 * be negative), VEL_EINVAL (the host does not tell the date).
 */
VEL_API int32_t vel_getcentury(vel_locale *locale, uint16_t month, uint16_t day, uint16_t year,
                               int32_t rule);

/* The same with a reference date, which counts when none of its three parts is 0. */
VEL_API int32_t vel_getcentury_internal(vel_locale *locale, uint16_t month, uint16_t day,
                                        uint16_t year, uint16_t reference_month,
                                        uint16_t reference_day, uint16_t reference_year,
                                        int32_t rule);

/* The century of this age in the locale's calendar: 57 in the Hebrew one, 14 in the Islamic one, 0
   in any other, whatever the date and the rule. */
VEL_API int32_t vel_alt_getcentury(vel_locale *locale, uint16_t month, uint16_t day, uint16_t year,
                                   int32_t rule);

/* Sets the date that counts as the current one in the whole process; returns 0. Call it and the
   next while no other thread reads dates. */
VEL_API int32_t vel_set_current_time(uint16_t day, uint16_t month, uint16_t year);

/* Makes the host's date the current one again; returns 0. */
VEL_API int32_t vel_reset_time(void);

/* --- Parsing ---------------------------------------------------------------------------------- */

/*
 * Reads a time from multibyte text under a format, and gives a pointer to the first character that
 * was not read. Fields that the format does not mention keep the values of `*time`, which is
 * written only on success.
 *
 * The conversions are those of vel_mbsftime, and what that writes is read back under the same
 * format. Names are matched in any case, in full or abbreviated whichever the format asks for, and
 * of names that begin alike the longest counts. A width limits the digits of a number, a precision
 * says how many it must have; without either, numbers have the digits that formatting writes at
 * most. %F reads any number of digits and keeps six, %F1 to %F5 read so many. Blanks in the format
 * stand for any number of blanks, also none; %n and %t for at least one character of white space.
 *
 *   - Hours of %I are those of the morning or afternoon when %p is read as well, and stay otherwise.
 *   - A year of two digits alone gets its century by vel_getcentury with the date read and the rule
 *     `flags`, such as 'C'. %C alone is the first year of the century.
 *   - Year, month and day together are checked; the weekday is compared, or filled in. Without %j,
 *     the day of the year is filled in as well, counted from 1 although formatting counts from 0.
 *   - %Ey counts in the era that %EC, %Eg or %EY names, else in the first of the locale's list that
 *     holds the date. The format %EY tries the eras in turn.
 *   - In a locale of another calendar, what is read is converted from that calendar, and the parts
 *     of the date that are not read are those of `*time` in that calendar.
 *
 * Null on failure. VEL_EFORMAT: a null format, one that ends inside a conversion, or locale formats
 * that lead into one another without end; VEL_EFAULT: a null input or time; VEL_EILSEQ: text or
 * format are no text of the code set where they are read; VEL_ENUMFMT: "." without a precision;
 * VEL_ETIMEFMT: an unknown conversion, "%" does not stand in the text, or %r does not match it;
 * VEL_ENOCONV: the text differs from the format, or has no AM or PM string or no white space;
 * VEL_ECALENDAR: the locale's calendar has no conversion. Where the text has no number or name of
 * its kind: VEL_ETIME33 (fraction), 34 (second), 35 (minute), 36 (hour), 37 (day), 38 (weekday), 40
 * (month), 41 (year or century), 48 (name of a month), 29 (day of the year), VEL_EBADLEN (name of an
 * era). Where it is out of range: VEL_ETIME24 (second), 25 (minute), 26 (hour), 27 (day, also of the
 * month read), 28 (%u), 29 (day of the year), 30 (month), 31 (century; a year that the result or the
 * era cannot have), VEL_EBADLEN (%w, %y, %Y). VEL_ETIME38: the weekday is not that of the date.
 */
VEL_API char *vel_mbsptime(vel_locale *locale, const char *input, const char *format,
                           vel_time_record *time, int32_t flags);

/* The same with a reference date for the century, as for vel_getcentury_internal; null for none. */
VEL_API char *vel_mbsptime_internal(vel_locale *locale, const char *input, const char *format,
                                    vel_time_record *time, const vel_date *reference,
                                    int32_t flags);

/* As vel_mbsptime for wide text and format. */
VEL_API vel_wchar *vel_wcsptime(vel_locale *locale, const vel_wchar *input,
                                const vel_wchar *format, vel_time_record *time, int32_t flags);

/* As vel_mbsptime_internal for wide text and format. */
VEL_API vel_wchar *vel_wcsptime_internal(vel_locale *locale, const vel_wchar *input,
                                         const vel_wchar *format, vel_time_record *time,
                                         const vel_date *reference, int32_t flags);

VEL_END_DECLS

#endif
