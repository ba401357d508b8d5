#include "time/scan.h"

#include "ctype/character_class.h"
#include "ext/error.h"
#include "time/names.h"
#include "time/scan_numbers.h"
#include "time/scan_quick.h"

namespace vel {
namespace {

// Formats of a locale may lead into one another without end, or into more others than anyone could
// wait for.
constexpr int32_t most_expansions = 100;

template <typename Unit> class scanner {
public:
    scanner(vel_locale *locale, const Unit *input, time_parsed &out)
        : locale_(locale), input_(locale, input), out_(out), percent_(value_of(locale, '%')) {}

    bool run(const Unit *format);
    const Unit *at() const { return input_.at(); }

private:
    using cursor = scan_cursor<Unit>;

    bool fails(int32_t number) {
        set_error(locale_, number);
        return false;
    }
    // Failure to read what the format asks for.
    bool misses(int32_t number) { return fails(is_foreign(input_) ? VEL_EILSEQ : number); }
    bool is_foreign(const cursor &text) const {
        return text.failed() || (locale_->single_byte && text.peek() > 0xFF);
    }
    bool is_blank(vel_wchar c) const { return has_class(locale_, c, VEL_CLASS_BLANK); }
    unsigned char letter_at(const cursor &format) const {
        return portable_of(locale_, format.peek());
    }

    const Unit *read_usual(const Unit *format) {
        const Unit *at = input_.at();
        quick_reader<Unit>(locale_, out_).run(format, at);
        input_.move_to(at);
        return format;
    }
    bool literal(cursor &format, vel_wchar c);
    bool conversion(cursor &format);
    bool choose(cursor &format, unsigned char letter, manner &with);
    bool prefixed(cursor &format, const manner &with);
    bool fraction_of(cursor &format, const manner &with);
    bool read(const parse_row &row, const manner &with);

    bool sign(vel_wchar value, int32_t number) {
        if (input_.peek() != value || value == 0) return misses(number);
        input_.next();
        return true;
    }
    bool number(const number_rule &rule, const manner &with);
    bool series(const char *parts, bool in_digits);
    bool expanded(const parse_row &row);
    bool fraction(int32_t fewest, int32_t most);
    bool spaces();
    bool weekday();
    bool month_name();
    bool am_pm();
    bool name_of(name_list list, int32_t *name);
    const name_list *name_of_either(const name_list (&lists)[2], int32_t *name);
    bool era_name(locale_text era_entry::*name);
    bool era_full_year();
    bool year_of_entry(const era_entry &entry);

    vel_locale *locale_;
    cursor input_;
    time_parsed &out_;
    const vel_wchar percent_;
    int32_t expansions_ = 0;
    const era_entry *entry_ = nullptr; // the era whose format of the year is tried
};

template <typename Unit> bool scanner<Unit>::run(const Unit *text) {
    const manner plain;
    cursor format(locale_, text);
    for (;;) {
        if (input_.has_ascii()) format.move_to(read_usual(format.at()));
        vel_wchar c = format.peek();
        if (c == 0) break;
        if (c != percent_) {
            if (!literal(format, c)) return false;
            continue;
        }
        format.next();
        const parse_row &row = plain_parse_row(letter_at(format));
        if (row.stands_alone()) [[likely]] {
            format.next();
            if (!read(row, plain)) return false;
        } else if (!conversion(format)) {
            return false;
        }
    }
    return !format.failed() || fails(VEL_EILSEQ);
}

// Blanks of the format stand for any number of them, also none.
template <typename Unit> bool scanner<Unit>::literal(cursor &format, vel_wchar c) {
    if (is_blank(c)) {
        while (is_blank(format.peek())) format.next();
        while (is_blank(input_.peek())) input_.next();
        return true;
    }
    if (is_foreign(format)) return fails(VEL_EILSEQ);
    format.next();
    return sign(c, VEL_ENOCONV);
}

template <typename Unit> bool scanner<Unit>::conversion(cursor &format) {
    manner with;
    char_reader<Unit> behind = format.reader();
    if (vel_parse_directive(locale_, behind, with.how, nullptr) != 0) return false;
    format.move_to(behind.at());
    return choose(format, letter_at(format), with);
}

// Goes on behind the flags. "E" and "O" are passed over where the locale has nothing for them.
template <typename Unit>
bool scanner<Unit>::choose(cursor &format, unsigned char letter, manner &with) {
    bool in_era = false;
    for (char wanted : {'E', 'O'}) {
        if (letter != wanted || in_era) continue;
        format.next();
        in_era = wanted == 'E' && locale_->time.eras.count > 0;
        with.in_digits = wanted == 'O' && locale_->time.alt_digits.count > 0;
        letter = letter_at(format);
    }
    if (format.peek() == 0) return fails(format.failed() ? VEL_EILSEQ : VEL_EFORMAT);
    const parse_row &row = in_era ? era_parse_row(letter) : plain_parse_row(letter);
    if (row.what == reading::unknown || (with.in_digits && !row.in_digits)) {
        return fails(VEL_ETIMEFMT);
    }
    format.next();
    if (with.in_digits && format.peek() == percent_) {
        cursor next = format;
        next.next();
        with.before_digits = letter_at(next) == 'O';
    }
    if (row.what == reading::prefix) return prefixed(format, with);
    return row.what == reading::fraction ? fraction_of(format, with) : read(row, with);
}

template <typename Unit> bool scanner<Unit>::read(const parse_row &row, const manner &with) {
    switch (row.what) {
    case reading::number:
        return number(*row.rule, with);
    case reading::series:
        return series(row.parts, with.in_digits);
    case reading::expanded:
        return expanded(row);
    case reading::percent:
        return sign(percent_, VEL_ETIMEFMT);
    case reading::weekday:
        return weekday();
    case reading::month_name:
        return month_name();
    case reading::am_pm:
        return am_pm();
    case reading::spaces:
        return spaces();
    case reading::era_name:
        return era_name(row.name);
    case reading::era_full_year:
        return era_full_year();
    default: // what the letter alone does not tell
        return fails(VEL_ETIMEFMT);
    }
}

// The digit behind the letter says how many are read. Formatting writes none for 0.
template <typename Unit> bool scanner<Unit>::fraction_of(cursor &format, const manner &with) {
    int32_t digit = digit_of(locale_, format.peek());
    if (digit < 0 || digit > 5) {
        return fraction(with.how.precision, with.has_width() ? with.how.width : INT32_MAX);
    }
    format.next();
    return digit == 0 || fraction(digit, with.how.width > digit ? with.how.width : digit);
}

// "iF", a fraction behind a dot, and "iY".
template <typename Unit> bool scanner<Unit>::prefixed(cursor &format, const manner &with) {
    unsigned char letter = letter_at(format);
    if (format.peek() == 0) return fails(format.failed() ? VEL_EILSEQ : VEL_EFORMAT);
    if (letter != 'F' && letter != 'Y') return fails(VEL_ETIMEFMT);
    format.next();
    if (letter == 'Y') return read(plain_parse_row(letter), with);
    int32_t digit = digit_of(locale_, format.peek());
    if (digit == 0 || digit > 5) return fails(VEL_ETIMEFMT);
    return sign(value_of(locale_, '.'), VEL_ETIME33) && fraction_of(format, with);
}

template <typename Unit> bool scanner<Unit>::number(const number_rule &rule, const manner &with) {
    int32_t value;
    if (!read_number(locale_, input_, rule, with, &value)) return misses(rule.read_error);
    if (value < rule.low || value > highest_of(locale_, rule)) return fails(rule.range_error);
    if (rule.bit == seen_weekday) {
        out_.weekday_names = nullptr;
        value %= 7;
    }
    store_number(rule, value, out_);
    return true;
}

template <typename Unit> bool scanner<Unit>::series(const char *parts, bool in_digits) {
    manner with;
    with.in_digits = in_digits;
    for (const char *part = parts; *part; ++part) {
        const parse_row &row = plain_parse_row(static_cast<unsigned char>(*part));
        bool is_number = row.what == reading::number;
        if (is_number ? !number(*row.rule, with) : !sign(value_of(locale_, *part), VEL_ENOCONV)) {
            return false;
        }
    }
    return true;
}

template <typename Unit> bool scanner<Unit>::expanded(const parse_row &row) {
    if (++expansions_ > most_expansions) return fails(VEL_EFORMAT);
    if (run(text_of(locale_->time.*row.format, Unit()))) return true;
    bool is_endless = expansions_ > most_expansions;
    return is_endless || row.error == 0 ? false : fails(row.error);
}

template <typename Unit> bool scanner<Unit>::fraction(int32_t fewest, int32_t most) {
    if (!read_fraction(locale_, input_, fewest, most, &out_.subsecond)) return misses(VEL_ETIME33);
    out_.seen |= seen_subsecond;
    return true;
}

template <typename Unit> bool scanner<Unit>::spaces() {
    const Unit *first = input_.at();
    while (has_class(locale_, input_.peek(), VEL_CLASS_SPACE)) input_.next();
    return input_.at() != first || misses(VEL_ENOCONV);
}

template <typename Unit> bool scanner<Unit>::name_of(name_list list, int32_t *name) {
    name_match<Unit> found = vel_match_name(locale_, input_.at(), list);
    if (found.name == no_name) return false;
    input_.move_to(found.behind);
    *name = found.name;
    return true;
}

// The list that the name was found in, or null. Only an abbreviation that is filled up with blanks
// can be longer than the full name. An empty name is there when nothing else is.
template <typename Unit>
const name_list *scanner<Unit>::name_of_either(const name_list (&lists)[2], int32_t *name) {
    name_match<Unit> found = vel_match_name(locale_, input_.at(), lists[0]);
    const name_list *list = &lists[0];
    if (found.name == no_name || has_padded_names(locale_, lists[1])) {
        name_match<Unit> abbreviated = vel_match_name(locale_, input_.at(), lists[1]);
        if (abbreviated.behind > found.behind) {
            found = abbreviated;
            list = &lists[1];
        }
    }
    input_.move_to(found.behind);
    *name = found.name;
    if (found.name != no_name) return list;
    for (const name_list &one : lists) {
        *name = empty_name(locale_, one);
        if (*name != no_name) return &one;
    }
    return nullptr;
}

template <typename Unit> bool scanner<Unit>::weekday() {
    static constexpr name_list lists[] = {list_days, list_abbreviated_days};
    const name_list *list = name_of_either(lists, &out_.weekday);
    if (!list) return misses(VEL_ETIME38);
    out_.weekday_names = *list == list_days ? &locale_->time.days : &locale_->time.abbreviated_days;
    out_.seen |= seen_weekday;
    return true;
}

template <typename Unit> bool scanner<Unit>::month_name() {
    static constexpr name_list lists[] = {list_months, list_abbreviated_months};
    if (!name_of_either(lists, &out_.month_name)) return misses(VEL_ETIME48);
    out_.seen = (out_.seen & ~seen_month) | seen_month_name;
    return true;
}

template <typename Unit> bool scanner<Unit>::am_pm() {
    if (!name_of(list_am_pm, &out_.am_pm)) {
        out_.am_pm = empty_name(locale_, list_am_pm);
        if (out_.am_pm == no_name) return misses(VEL_ENOCONV);
    }
    out_.hours = hour_kind::of_12;
    out_.seen |= seen_am_pm;
    return true;
}

template <typename Unit> bool scanner<Unit>::era_name(locale_text era_entry::*name) {
    int32_t found;
    if (!name_of(name == &era_entry::name ? list_eras : list_other_eras, &found)) {
        return misses(VEL_EBADLEN);
    }
    const era_entry &era = locale_->time_derived.eras[found];
    if (entry_ && !same_text(entry_->*name, era.*name)) return fails(VEL_EBADLEN);
    out_.era = &era;
    out_.era_name = name;
    out_.years = year_kind::era;
    return true;
}

// The year as one of the eras writes it. A format that asks for the year as eras write it would
// have no end.
template <typename Unit> bool scanner<Unit>::era_full_year() {
    if (entry_) return fails(VEL_EFORMAT);
    const time_derived &derived = locale_->time_derived;
    const Unit *start = input_.at();
    const time_parsed before = out_;
    const int32_t error = get_error(locale_);
    bool is_plain = false;
    for (int32_t i = 0; i < derived.era_count; ++i) {
        const era_entry &entry = derived.eras[i];
        if (entry.format.wide[0] == 0) {
            is_plain = true;
            continue;
        }
        if (year_of_entry(entry)) {
            set_error(locale_, error); // of the eras before
            return true;
        }
        if (expansions_ > most_expansions) return fails(VEL_EFORMAT);
        input_.move_to(start);
        out_ = before;
    }
    if (is_plain) return read(plain_parse_row('Y'), manner());
    return misses(VEL_ETIME41);
}

// An era's format without a year is that of its only one.
template <typename Unit> bool scanner<Unit>::year_of_entry(const era_entry &entry) {
    out_.seen &= ~seen_any_year;
    entry_ = &entry;
    bool is_read = run(text_of(entry.format, Unit()));
    entry_ = nullptr;
    if (!is_read) return false;
    if (!out_.has(seen_any_year)) {
        out_.era = &entry;
        out_.era_name = &era_entry::name;
        out_.era_year = entry.offset;
        out_.seen |= seen_era_year;
        out_.years = year_kind::era;
    }
    return true;
}

} // namespace

template <typename Unit>
const Unit *vel_ptime_scan(vel_locale *locale, const Unit *input, const Unit *format,
                           time_parsed &out) {
    scanner<Unit> scan(locale, input, out);
    return scan.run(format) ? scan.at() : nullptr;
}

template const char *vel_ptime_scan<char>(vel_locale *, const char *, const char *, time_parsed &);
template const vel_wchar *vel_ptime_scan<vel_wchar>(vel_locale *, const vel_wchar *,
                                                    const vel_wchar *, time_parsed &);

} // namespace vel
