// Writing integers.
#include "charmap/ascii_units.h"
#include "ext/error.h"
#include "numeric/digits.h"
#include "numeric/grouping.h"
#include "numeric/thousands.h"
#include "record/portable.h"
#include "vels/multibyte.h"
#include "vels/number.h"

namespace vel {
namespace {

constexpr int32_t max_digits = 32;
constexpr int32_t max_written = 256; // bytes, with the terminator

// Writes the digits of a number in a base; their number.
int32_t vel_format_digits(char *out, uint32_t value, uint32_t base) {
    if (base == 10) {
        int32_t count = digit_count(value);
        put_digits(out, value, count);
        return count;
    }
    int32_t count = 1;
    for (uint32_t rest = value / base; rest; rest /= base) ++count;
    for (int32_t i = count; i > 0; value /= base) {
        out[--i] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[value % base];
    }
    return count;
}

// A string of the locale in the units of the output.
template <typename Unit> struct unit_text {
    const Unit *units;
    int32_t length;
};

// How the units of an output hold characters.
template <typename Unit> class unit_form;

template <> class unit_form<vel_wchar> {
public:
    explicit unit_form(const vel_locale *locale) : locale_(locale) {}
    static constexpr int32_t most = INT32_MAX;
    int32_t width() const { return 1; } // units of a portable character, or of the terminator
    void put(vel_wchar *out, char ascii) const { *out = value_of(locale_, ascii); }
    void terminate(vel_wchar *out) const { *out = 0; }
    const vel_wchar *separator_units() const { return locale_->numeric_marks.thousands_sep; }
    unit_text<vel_wchar> separator() const {
        return {separator_units(), locale_->numeric_marks.thousands_sep_length};
    }

private:
    const vel_locale *locale_;
};

template <> class unit_form<char> {
public:
    explicit unit_form(const vel_locale *locale)
        : locale_(locale), width_(characters_of(locale).shortest) {}
    static constexpr int32_t most = max_written;
    int32_t width() const { return width_; }
    void put(char *out, char ascii) const {
        vel_wchar value = value_of(locale_, ascii);
        if (width_ == 1) {
            *out = static_cast<char>(value);
        } else {
            put_packed(as_bytes(out), value, static_cast<uint32_t>(width_));
        }
    }
    void terminate(char *out) const { put_terminator(characters_of(locale_), as_bytes(out)); }
    const char *separator_units() const { return locale_->conventions.numeric.thousands_sep.bytes; }
    unit_text<char> separator() const {
        int32_t length = 0;
        const number_marks &marks = locale_->numeric_marks;
        for (int32_t i = 0; i < marks.thousands_sep_length; ++i) {
            length += characters_of(locale_).code_bytes(marks.thousands_sep[i]);
        }
        return {separator_units(), length};
    }

private:
    const vel_locale *locale_;
    int32_t width_;
};

struct number {
    uint32_t magnitude;
    bool negative;
};

// A number in base 10 as it mostly is written. False when that is not known to do.
template <typename Unit>
bool put_quickly(const vel_locale *locale, const unit_form<Unit> &form, Unit *out, int32_t room,
                 number value, int32_t &written) {
    if (room < thousands_room + 2 || !has_ascii_units<Unit>(locale)) return false;
    short_text<Unit> separator;
    if (!short_text<Unit>::make(form.separator_units(), separator) || separator.length == 0 ||
        !has_groups_of_three(locale->conventions.numeric.grouping)) {
        return false;
    }
    *out = '-';
    Unit *end = put_thousands(out + value.negative, value.magnitude, separator);
    *end = 0;
    written = static_cast<int32_t>(end - out);
    return true;
}

struct number_digits {
    char ascii[max_digits];
    int32_t count;
    bool negative;
};

template <typename Unit>
int32_t put_plain(const unit_form<Unit> &form, Unit *out, const number_digits &digits) {
    Unit *at = out;
    if (digits.negative) {
        form.put(at, '-');
        at += form.width();
    }
    for (int32_t i = 0; i < digits.count; ++i, at += form.width()) form.put(at, digits.ascii[i]);
    form.terminate(at);
    return static_cast<int32_t>(at - out);
}

// Writes from the end. The needed room counts "-" among the characters that are grouped, so that
// -123 asks for the room of a separator that it does not have.
template <typename Unit>
int32_t put_grouped(const vel_locale *locale, const unit_form<Unit> &form, Unit *out, int32_t room,
                    const number_digits &digits) {
    const vel_grouping &grouping = locale->conventions.numeric.grouping;
    const unit_text<Unit> separator = form.separator();
    if (room > form.most) room = form.most;
    int64_t characters = digits.count + digits.negative;
    const int32_t separators = count_separators(grouping, digits.count);
    const int32_t counted =
        digits.negative ? count_separators(grouping, digits.count + 1) : separators;
    int64_t needed = (characters + 1) * form.width() + int64_t{separator.length} * counted;
    if (needed > room) {
        if (room >= form.width()) form.terminate(out);
        return 0;
    }
    int32_t length =
        static_cast<int32_t>(characters) * form.width() + separator.length * separators;
    Unit *at = out + length;
    form.terminate(at);
    group_sizes sizes(grouping);
    for (int32_t left = digits.count;;) {
        int32_t group = sizes.next();
        bool is_last = group <= 0 || group >= left;
        for (int32_t stop = is_last ? 0 : left - group; left > stop;) {
            at -= form.width();
            form.put(at, digits.ascii[--left]);
        }
        if (is_last) break;
        for (int32_t i = separator.length; i > 0;) *--at = separator.units[--i];
    }
    if (digits.negative) form.put(out, '-');
    return length;
}

template <typename Unit>
int32_t format(const vel_locale *locale, Unit *out, int32_t room, number value, int32_t base,
               int32_t grouping) {
    const unit_form<Unit> form(locale);
    int32_t written;
    if (grouping && base == 10 && put_quickly(locale, form, out, room, value, written)) {
        return written;
    }
    if (base < 2 || base > 36) {
        form.terminate(out);
        return 0;
    }
    number_digits digits;
    digits.negative = value.negative;
    digits.count = vel_format_digits(digits.ascii, value.magnitude, static_cast<uint32_t>(base));
    return grouping ? put_grouped(locale, form, out, room, digits) : put_plain(form, out, digits);
}

int32_t format_multibyte(vel_locale *locale, char *out, int32_t room, number value, int32_t base,
                         int32_t grouping) {
    if (characters_of(locale).empty()) return fail(locale, VEL_EILSEQ); // not even digits
    return format(locale, out, room, value, base, grouping);
}

number signed_number(int32_t value) {
    uint32_t bits = static_cast<uint32_t>(value);
    return {value < 0 ? 0 - bits : bits, value < 0};
}

} // namespace
} // namespace vel

using namespace vel;

void vel_ltowcs(vel_locale *locale, vel_wchar *out, int32_t length, int32_t value, int32_t base,
                int32_t grouping) {
    format(locale, out, length, signed_number(value), base, grouping);
}

void vel_ultowcs(vel_locale *locale, vel_wchar *out, int32_t length, uint32_t value, int32_t base,
                 int32_t grouping) {
    format(locale, out, length, {value, false}, base, grouping);
}

int32_t vel_ltombs(vel_locale *locale, char *out, int32_t length, int32_t value, int32_t base,
                   int32_t grouping) {
    return format_multibyte(locale, out, length, signed_number(value), base, grouping);
}

int32_t vel_ultombs(vel_locale *locale, char *out, int32_t length, uint32_t value, int32_t base,
                    int32_t grouping) {
    return format_multibyte(locale, out, length, {value, false}, base, grouping);
}
