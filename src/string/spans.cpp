// How far text consists of characters of a set, or of others.
#include <cstring>

#include "string/value_set.h"
#include "vels/string.h"

namespace vel {
namespace {

enum class until : bool { outside, member };

// Where text meets the first character outside a set or in it.
template <typename Unit> struct span_end {
    const Unit *at; // null at the end of the text
    int32_t characters;
    int32_t error;
};

// ASCII characters that no span ends at, in code sets where their bytes are nothing else. Text is
// passed by these bytes without a further look.
class passed_bytes {
public:
    passed_bytes(const vel_locale *locale, const value_set<unsigned char> &values, until wanted) {
        table_shape shape = characters_of(locale).shape;
        if (shape != table_shape::utf8 && shape != table_shape::ascii_transparent) return;
        bool others = wanted == until::member;
        memset(passed_ + 1, others, 0x7F);
        values.each_ascii([&](vel_wchar value) { passed_[value] = value != 0 && !others; });
    }

    const unsigned char *pass(const unsigned char *at, const unsigned char *end) const {
        if (!end) {
            while (passed_[*at]) ++at;
        } else {
            while (at < end && passed_[*at]) ++at;
        }
        return at;
    }

private:
    bool passed_[256] = {};
};

// Wide text has no such bytes.
struct nothing_passed {
    nothing_passed(const vel_locale *, const value_set<vel_wchar> &, until) {}
    const vel_wchar *pass(const vel_wchar *at, const vel_wchar *) const { return at; }
};

template <typename Unit>
span_end<Unit> find_end(const vel_locale *locale, text_range<Unit> text, text_range<Unit> set,
                        until wanted) {
    if (int32_t number = fault_of(text, set)) return {nullptr, 0, number};
    value_set<Unit> values;
    if (int32_t number = values.read(locale, set)) return {nullptr, 0, number};
    const std::conditional_t<sizeof(Unit) == 1, passed_bytes, nothing_passed> passed(locale, values,
                                                                                     wanted);
    stepper<Unit> at(locale, text);
    for (int32_t characters = 0;; ++characters) {
        const Unit *behind = passed.pass(at.at(), text.end());
        characters += static_cast<int32_t>(behind - at.at());
        at.move_to(behind);
        valued_walk here = at.peek();
        if (!here.used) return {nullptr, characters, at.error()};
        if (values.contains(here.value) == (wanted == until::member)) {
            return {at.at(), characters, 0};
        }
        at.skip(here);
    }
}

template <typename Unit>
int32_t span(vel_locale *locale, text_range<Unit> text, text_range<Unit> set, until wanted) {
    span_end<Unit> end = find_end(locale, text, set, wanted);
    return end.error ? fail_text(locale, end.error) : end.characters;
}

// Null with 0 where there is none, to be told from a failure.
template <typename Unit>
auto first_member(vel_locale *locale, text_range<Unit> text, text_range<Unit> set) {
    span_end<Unit> end = find_end(locale, text, set, until::member);
    if (!end.at) store_error(locale, end.error);
    return as_result(end.at);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_full_mbsspn(vel_locale *locale, const char *string, const char *set) {
    return tuk_vel_mbsspn(locale, string, -1, set, -1);
}
int32_t tuk_vel_mbsspn(vel_locale *locale, const char *string, int32_t nbytes, const char *set,
                       int32_t set_bytes) {
    return span(locale, range_of(string, nbytes), range_of(set, set_bytes), until::outside);
}
int32_t vel_full_mbscspn(vel_locale *locale, const char *string, const char *set) {
    return tuk_vel_mbscspn(locale, string, -1, set, -1);
}
int32_t tuk_vel_mbscspn(vel_locale *locale, const char *string, int32_t nbytes, const char *set,
                        int32_t set_bytes) {
    return span(locale, range_of(string, nbytes), range_of(set, set_bytes), until::member);
}
char *vel_full_mbspbrk(vel_locale *locale, const char *string, const char *set) {
    return tuk_vel_mbspbrk(locale, string, -1, set, -1);
}
char *tuk_vel_mbspbrk(vel_locale *locale, const char *string, int32_t nbytes, const char *set,
                      int32_t set_bytes) {
    return first_member(locale, range_of(string, nbytes), range_of(set, set_bytes));
}

int32_t vel_wcsspn(vel_locale *locale, const vel_wchar *wide, const vel_wchar *set) {
    return tuk_vel_wcsspn(locale, wide, -1, set, -1);
}
int32_t tuk_vel_wcsspn(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                       const vel_wchar *set, int32_t set_values) {
    return span(locale, range_of(wide, nvalues), range_of(set, set_values), until::outside);
}
int32_t vel_wcscspn(vel_locale *locale, const vel_wchar *wide, const vel_wchar *set) {
    return tuk_vel_wcscspn(locale, wide, -1, set, -1);
}
int32_t tuk_vel_wcscspn(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                        const vel_wchar *set, int32_t set_values) {
    return span(locale, range_of(wide, nvalues), range_of(set, set_values), until::member);
}
vel_wchar *vel_wcspbrk(vel_locale *locale, const vel_wchar *wide, const vel_wchar *set) {
    return tuk_vel_wcspbrk(locale, wide, -1, set, -1);
}
vel_wchar *tuk_vel_wcspbrk(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                           const vel_wchar *set, int32_t set_values) {
    return first_member(locale, range_of(wide, nvalues), range_of(set, set_values));
}
