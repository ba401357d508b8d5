// The parsing engine of numbers and its two faces.
#include "numeric/floats.h"
#include "numeric/format_conversion.h"
#include "numeric/parse_digits.h"
#include "numeric/parse_loop.h"
#include "vels/number.h"

namespace vel {
namespace {

// Numbers of other bases than ten may use the sign bit as a digit.
bool in_range(const integer_scan &scan, const number_directive &how) {
    const uint32_t sign_bit = how.is_short ? 0x8000 : 0x80000000;
    uint32_t greatest = sign_bit - 1 + sign_bit;
    if (how.convert.is_signed && how.convert.base == 10) greatest = sign_bit - 1;
    if (scan.value.negative) greatest = sign_bit;
    return !scan.overflow && scan.value.magnitude <= greatest;
}

item store(const integer_scan &scan, const number_directive &how, argument_list &arguments) {
    if (how.has(flag_suppress)) return item::skipped;
    const uint32_t magnitude = scan.value.magnitude;
    const uint32_t value = scan.value.negative ? 0 - magnitude : magnitude;
    if (how.is_short) {
        *va_arg(arguments.list, int16_t *) = static_cast<int16_t>(value);
    } else {
        *va_arg(arguments.list, int32_t *) = static_cast<int32_t>(value);
    }
    return item::stored;
}

template <typename Unit>
item read_integer(vel_locale *locale, char_reader<Unit> &input, const number_directive &how,
                  argument_list &arguments) {
    skip_space(locale, input);
    integer_rules rules = {how.convert.base, how.width};
    if (how.has(flag_group)) rules.groups = numeric_groups(locale);
    rules.prefixed = how.has(flag_alternate) && how.convert.base == 16;
    integer_scan scan = {};
    scan_integer(locale, input, rules, scan);
    if (scan.value.digits == 0) return stop_at(locale, input, VEL_ENOCONV);
    if (scan.misgrouped) return stop(locale, VEL_EINVAL);
    if (scan.value.negative && !how.convert.is_signed) return stop(locale, VEL_ETIMEFMT);
    if (!in_range(scan, how)) return stop(locale, VEL_ENONUM);
    return store(scan, how, arguments);
}

template <typename Unit>
item vel_scan_double(vel_locale *locale, char_reader<Unit> &input, const number_directive &how,
                     argument_list &arguments) {
    skip_space(locale, input);
    const int32_t most = how.width > 0 ? how.width : INT32_MAX;
    const scanned_double scan =
        scan_double(locale, input, most, how.has(flag_group), number_kind::numeric);
    if (scan.used == 0) {
        bool misgrouped = get_error(locale) == VEL_EINVAL;
        return stop_at(locale, input, misgrouped ? VEL_EINVAL : VEL_ENUMFMT);
    }
    if (scan.out_of_range) return stop(locale, VEL_ENONUM);
    if (how.has(flag_suppress)) return item::skipped;
    *va_arg(arguments.list, double *) = scan.value;
    return item::stored;
}

// Where text goes; nowhere when the target is null.
struct wide_target {
    vel_wchar *at;

    bool put(const vel_locale *, vel_wchar value) {
        if (at) *at++ = value;
        return true;
    }
    void terminate(const vel_locale *) {
        if (at) *at = 0;
    }
};

struct multibyte_target {
    char *at;

    bool put(const vel_locale *locale, vel_wchar value) {
        if (!at) return true;
        uint32_t n = put_character(characters_of(locale), value, as_bytes(at));
        at += n;
        return n != 0;
    }
    void terminate(const vel_locale *locale) {
        if (at) put_terminator(characters_of(locale), as_bytes(at));
    }
};

// A string ends at white space. Several characters may be any, and end where the input does.
template <typename Unit, typename Target>
item read_text(vel_locale *locale, char_reader<Unit> &input, const number_directive &how,
               Target target) {
    const bool is_string = how.convert.kind == conversion_kind::string;
    const bool is_one = !is_string && how.width < 2;
    if (is_string) skip_space(locale, input);
    int32_t left = how.width > 0 ? how.width : is_one ? 1 : INT32_MAX;
    if (input.peek() == 0) return stop_at(locale, input, VEL_ENOCONV);
    for (; left > 0 && input.peek(); --left, input.next()) {
        if (is_string && is_space(locale, input.peek())) break;
        if (!target.put(locale, input.peek())) return stop(locale, VEL_EILSEQ);
    }
    if (left > 0 && input.failed()) return stop(locale, VEL_EILSEQ);
    if (!is_one) target.terminate(locale);
    return how.has(flag_suppress) ? item::skipped : item::stored;
}

template <typename Unit>
item read_characters(vel_locale *locale, char_reader<Unit> &input, const number_directive &how,
                     argument_list &arguments) {
    void *target = how.has(flag_suppress) ? nullptr : va_arg(arguments.list, void *);
    if (how.is_long) {
        return read_text(locale, input, how, wide_target{static_cast<vel_wchar *>(target)});
    }
    return read_text(locale, input, how, multibyte_target{static_cast<char *>(target)});
}

template <typename Unit>
item read_item(vel_locale *locale, const Unit *&format, char_reader<Unit> &input,
               argument_list &arguments) {
    number_directive how;
    if (read_directive(locale, format, how, nullptr) < 0) return item::failed;
    switch (how.convert.kind) {
    case conversion_kind::integer:
        return read_integer(locale, input, how, arguments);
    case conversion_kind::floating:
        return vel_scan_double(locale, input, how, arguments);
    case conversion_kind::character:
        if (how.width < 2 || how.precision < 0) break;
        set_error(locale, VEL_ETIMEFMT);
        return item::failed;
    case conversion_kind::string:
    case conversion_kind::none:
        break;
    }
    return read_characters(locale, input, how, arguments);
}

template <typename Unit>
int32_t vel_pnum_core(vel_locale *locale, const Unit *input, const Unit *format,
                      argument_list &arguments) {
    return parse_from(locale, input, format,
                      [&](const Unit *&directive_text, char_reader<Unit> &text) {
                          return read_item(locale, directive_text, text, arguments);
                      });
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_wcspnum(vel_locale *locale, const vel_wchar *input, const vel_wchar *format, ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = vel_pnum_core(locale, input, format, arguments);
    va_end(arguments.list);
    return count;
}

int32_t vel_mbspnum(vel_locale *locale, const char *input, const char *format, ...) {
    argument_list arguments;
    va_start(arguments.list, format);
    int32_t count = vel_pnum_core(locale, input, format, arguments);
    va_end(arguments.list);
    return count;
}
