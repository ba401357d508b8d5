#pragma once

// The in-memory model of a locale source: what the readers deliver and the object writers use.
// Text is kept in code points, never in the bytes of a code set; a locale is therefore read once
// and written for many code sets. Code sets are in charmap.h, the way to get at everything is
// source_library.h.

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "velc/source/calendars.h"
#include "velc/source/code_points.h"
#include "velc/source/collate_model.h"
#include "velc/source/diagnostics.h"

namespace velc {

// Integers that a source does not give, and those it gives as -1.
inline constexpr int unset = -1;

using text_list = std::vector<std::u32string>;

// ---------------------------------------------------------------- LC_IDENTIFICATION

struct identification {
    std::u32string title, source, address, contact, email, tel, fax;
    std::u32string language, territory, audience, application, abbreviation, revision, date;
    std::vector<std::pair<std::u32string, std::string>> categories; // standard, category name
};

// ---------------------------------------------------------------- LC_CTYPE

// One class as written. Standard names: upper lower alpha digit space cntrl punct graph print
// xdigit blank; all others are the locale's own ("combining", "hanzi", "jspace").
struct char_class {
    std::string name;
    code_ranges ranges;
};

// toupper, tolower, totitle, to_inpunct, tojhira, ...; rising by `from`, one pair for each `from`.
struct char_map {
    std::string name;
    std::vector<code_pair> pairs;
};

// One substitution: a character (rarely several) and what may stand for it, best first. An empty
// replacement deletes the character.
struct translit_rule {
    std::u32string from;
    text_list to;
};

struct translit_source {
    std::vector<translit_rule> rules;  // sorted by `from`; of equal ones the last is kept
    std::vector<std::string> includes; // files whose tables are asked next, in this order
    text_list default_missing;         // last resort, best first; empty when not given
    bool empty() const { return rules.empty() && includes.empty() && default_missing.empty(); }
};

struct ctype {
    std::vector<char_class> classes; // standard classes first, then own ones as they come
    std::vector<char_map> maps;      // toupper, tolower, then the others in order of appearance
    text_list outdigits;             // ten, or none
    translit_source translit;

    // Null when the source has none of that name.
    const char_class *find_class(std::string_view name) const;
    const char_map *find_map(std::string_view name) const;
};

// The classes with everything that POSIX implies filled in: the portable letters and digits, alpha
// of upper and lower, graph and print of what they are made of, xdigit of digit, space of blank.
ctype with_implied_classes(const ctype &written);

// ---------------------------------------------------------------- LC_NUMERIC and LC_MONETARY

// Group sizes from the right as written; a final -1 means no further grouping. Empty: no grouping.
using grouping_list = std::vector<int>;

struct numeric {
    std::u32string decimal_point, thousands_sep;
    grouping_list grouping;
};

struct money_layout {
    int p_cs_precedes = unset, p_sep_by_space = unset;
    int n_cs_precedes = unset, n_sep_by_space = unset;
    int p_sign_posn = unset, n_sign_posn = unset;
};

struct monetary {
    std::u32string int_curr_symbol, currency_symbol;
    std::u32string mon_decimal_point, mon_thousands_sep;
    grouping_list mon_grouping;
    std::u32string positive_sign, negative_sign;
    int int_frac_digits = unset, frac_digits = unset;
    money_layout national;
    money_layout international; // the int_... keywords; members stay unset where not written
};

// ---------------------------------------------------------------- LC_TIME

// A date of an era; year 0 does not occur. `endless` is written -* (no beginning) or +* (no end).
struct era_date {
    enum class kind : std::uint8_t { date, beginning_of_time, end_of_time };
    kind what = kind::date;
    int year = 0, month = 0, day = 0;
};

struct era_entry {
    char direction = '+'; // '+' or '-'
    int offset = 0;
    era_date start, end;
    std::u32string name, format;
    std::u32string text; // the whole entry as written
};

struct week_rule {
    int days = unset;       // days of a week
    int first_date = unset; // yyyymmdd of a first day of a week
    int min_days = unset;   // days that the first week of a year has at least
};

struct time_format {
    calendar_system calendar = calendar_system::gregorian; // a keyword that only overlays use
    text_list day, abday;          // 7 each, Sunday first unless `week` says otherwise
    text_list mon, abmon;          // as many as the calendar has
    text_list alt_mon, ab_alt_mon; // as many, or none: month names in the nominative
    text_list am_pm;               // 2
    std::u32string d_t_fmt, d_fmt, t_fmt, t_fmt_ampm, date_fmt;
    std::vector<era_entry> era;
    std::u32string era_year, era_d_fmt, era_t_fmt, era_d_t_fmt;
    text_list alt_digits; // 0, 1, 2, ...; at most 100
    week_rule week;
    int first_weekday = unset, first_workday = unset, cal_direction = unset;
    text_list timezone;
};

// ---------------------------------------------------------------- LC_MESSAGES

struct messages {
    std::u32string yesexpr, noexpr, yesstr, nostr;
};

// ---------------------------------------------------------------- the locale

// Members are null when the source has no such category. They are shared: a locale that only copies
// a category from another one holds the same object.
struct locale_definition {
    std::string name; // file name of the source: "de_DE", "sr_RS@latin"
    std::string file; // path as opened
    std::shared_ptr<const identification> ident;
    std::shared_ptr<const velc::ctype> ctype;
    std::shared_ptr<const velc::collation> collate;
    std::shared_ptr<const velc::monetary> monetary;
    std::shared_ptr<const velc::numeric> numeric;
    std::shared_ptr<const velc::time_format> time;
    std::shared_ptr<const velc::messages> messages;
    std::vector<std::string> copied; // names of all sources that took part, sorted, without `name`
    warning_list warnings;           // of this file and of those it copies from
};

// ---------------------------------------------------------------- SUPPORTED

struct supported_locale {
    std::string name;    // as listed: "de_DE.UTF-8", "de_DE@euro"
    std::string source;  // locale source: "de_DE", "de_DE@euro"
    std::string charmap; // "UTF-8"
};

} // namespace velc
