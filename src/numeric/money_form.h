// The form of an amount: in which order its parts stand, and what they are.
#pragma once

#include "numeric/format_double.h"
#include "numeric/money_directive.h"

namespace vel {

enum class amount_sign : bool { positive, negative };

// The order of the parts, a letter each: S the symbol, V the digits, - the sign, a blank the
// separator, and parentheses. Parts that are empty are left out.
struct money_form {
    char parts[8];
    const vel_wchar *symbol;
    int32_t symbol_length;
    vel_wchar separator;
    mark sign;

    // What stands before the digits.
    int32_t columns_before(const vel_locale *locale) const;
    int32_t columns(const vel_locale *locale, char part) const;
};

money_form form_of(const vel_locale *locale, const money_directive &how, amount_sign sign);

// The point and the groups of amounts.
decimal_style money_style(const vel_locale *locale, const money_directive &how);
// How many digits stand behind the point.
int32_t money_places(const vel_locale *locale, const money_directive &how);

} // namespace vel
