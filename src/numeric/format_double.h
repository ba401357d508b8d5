// Floating numbers in formatted text.
#pragma once

#include "numeric/decimal.h"
#include "numeric/directive.h"
#include "numeric/format_digits.h"

namespace vel {

// How a category writes its numbers.
struct decimal_style {
    digit_groups groups;
    mark point;
};

// A locale without a decimal point must not lose it: 1.5 is not 15.
inline mark point_mark(const locale_text &point) {
    return {&point, '.'};
}

// Writes a value with `places` digits behind the point; the point stands also before none of them
// when `always_point` is set.
struct fixed_digits {
    decimal digits;
    int32_t places;
    bool always_point;

    int32_t before_point() const { return digits.point > 0 ? digits.point : 1; }
    bool has_point() const { return places > 0 || always_point; }
    int64_t columns(const vel_locale *locale, const decimal_style &style) const;
    template <typename Unit>
    void put(const vel_locale *locale, char_writer<Unit> &out, const decimal_style &style);
};

// Writes a double under a directive in the style of C's letter f, e or g. VEL_E2BIG for a width of
// 100 or more.
template <typename Unit>
void put_double(const vel_locale *locale, char_writer<Unit> &out, double value, char style,
                const directive &how);

} // namespace vel
