// Searching text for a character or for a string.
//
// Text is walked a window at a time, which finds its end and proves its characters, and what has
// been walked is searched by units. In code sets where a match may lie across two characters each
// match is checked against the characters before it, every one of which is stepped over once.
#include "charmap/spans.h"
#include "string/needle.h"
#include "string/walk.h"
#include "vels/string.h"

namespace vel {
namespace {

const vel_wchar *character_from(const vel_locale *, const vel_wchar *, const vel_wchar *to) {
    return to;
}

// The first character at `to` or behind it, in valid text with a character at `from`.
const unsigned char *character_from(const vel_locale *locale, const unsigned char *from,
                                    const unsigned char *to) {
    if (is_self_synchronising(locale)) return to;
    int32_t size = static_cast<int32_t>(to - from);
    walked<unsigned char> before = walk(locale, {from, size}, whole_text);
    if (!before.error) return before.end;
    return before.end + characters_of(locale).walk(before.end).used;
}

template <typename Unit> class text_search {
public:
    text_search(const vel_locale *locale, text_range<Unit> where, const Unit *needle, size_t length)
        : locale_(locale), end_(where.end()), needle_(needle, length), boundary_(where.begin),
          from_(where.begin), walked_(where.begin) {}

    // The next occurrence that begins where a character does, or null.
    const Unit *next() {
        for (;;) {
            if (const Unit *hit = find_in_walked()) return hit;
            if (over_) return nullptr;
            walk_on();
        }
    }
    // After null: why the text could not be searched to its end, or 0.
    int32_t error() const { return error_; }

private:
    static constexpr size_t first_window = 256; // characters
    static constexpr size_t largest_window = text_window;

    const Unit *find_in_walked() {
        const size_t length = needle_.length();
        while (static_cast<size_t>(walked_ - from_) >= length) {
            const Unit *hit = needle_.find(from_, static_cast<size_t>(walked_ - from_));
            if (!hit) {
                from_ = walked_ - (length - 1);
                break;
            }
            boundary_ = from_ = character_from(locale_, boundary_, hit);
            if (boundary_ != hit) continue;
            boundary_ = from_ = hit + length;
            return hit;
        }
        return nullptr;
    }

    void walk_on() {
        int32_t left = end_ ? static_cast<int32_t>(end_ - walked_) : -1;
        walked<Unit> more = walk(locale_, {walked_, left}, window_);
        walked_ = more.end;
        error_ = more.error;
        over_ = more.error || more.characters < window_;
        window_ = smaller(window_ * 4, largest_window);
    }

    const vel_locale *locale_;
    const Unit *end_;
    needle_search<Unit> needle_;
    const Unit *boundary_; // a character begins here, at `from_` or before it
    const Unit *from_;     // no occurrence begins before, but those given
    const Unit *walked_;   // the text before is valid
    size_t window_ = first_window;
    bool over_ = false;
    int32_t error_ = 0;
};

// What a search found. A text without it stores 0, to be told from one that is invalid.
template <typename Unit> auto found_or_null(vel_locale *locale, const Unit *hit, int32_t error) {
    if (!hit) store_error(locale, error);
    return as_result(hit);
}

enum class which : bool { first, last };

// An invalid character behind the last match fails, too: a later match cannot be ruled out.
template <typename Unit>
auto find_character(vel_locale *locale, text_range<Unit> where, const Unit *character,
                    const valued_walk &form, which wanted) {
    if (where.terminated() && form.value == 0) {
        walked<Unit> all = walk(locale, where, whole_text);
        return found_or_null(locale, all.error ? nullptr : all.end, all.error);
    }
    text_search<Unit> search(locale, where, character, static_cast<size_t>(form.used));
    const Unit *hit = search.next();
    const Unit *later = hit;
    while (wanted == which::last && later) {
        hit = later;
        later = search.next();
    }
    if (!later && search.error()) hit = nullptr;
    return found_or_null(locale, hit, search.error());
}

char *find_multibyte(vel_locale *locale, byte_range where, byte_range character, which wanted) {
    if (int32_t number = fault_of(where, character)) return fail_null(locale, number);
    if (character.length == 0) return fail_null(locale, VEL_EINVAL);
    size_t left =
        character.terminated() ? max_character_bytes : static_cast<size_t>(character.length);
    valued_walk form = walk_value(characters_of(locale), character.begin, left);
    if (!is_end(form.cell)) {
        return fail_null(locale, is_more(form.cell) ? VEL_EINVAL : VEL_EILSEQ);
    }
    return find_character(locale, where, character.begin, form, wanted);
}

vel_wchar *find_wide(vel_locale *locale, wide_range where, vel_wchar value, which wanted) {
    if (int32_t number = fault_of(where)) return found_or_null(locale, wide_range{}.begin, number);
    return find_character(locale, where, &value, {0, 1, value}, wanted);
}

// The position of an empty needle, which bytes find before their first character only.
const vel_wchar *find_nothing(const vel_locale *, wide_range where) {
    return where.begin;
}
const unsigned char *find_nothing(const vel_locale *locale, byte_range where) {
    if (!where.terminated()) return where.length > 0 ? where.begin : nullptr;
    return at_terminator(characters_of(locale), where.begin) ? nullptr : where.begin;
}

template <typename Unit>
auto find_string(vel_locale *locale, text_range<Unit> where, text_range<Unit> needle) {
    const Unit *none = nullptr;
    if (int32_t number = fault_of(where, needle)) return found_or_null(locale, none, number);
    walked<Unit> all = walk(locale, needle, whole_text);
    if (all.error) return found_or_null(locale, none, all.error);
    size_t length = static_cast<size_t>(all.end - needle.begin);
    if (length == 0) return found_or_null(locale, find_nothing(locale, where), 0);
    text_search<Unit> search(locale, where, needle.begin, length);
    const Unit *hit = search.next();
    return found_or_null(locale, hit, search.error());
}

} // namespace
} // namespace vel

using namespace vel;

char *vel_full_mbschr(vel_locale *locale, const char *string, const char *character) {
    return tuk_vel_mbschr(locale, string, -1, character, -1);
}
char *tuk_vel_mbschr(vel_locale *locale, const char *string, int32_t nbytes, const char *character,
                     int32_t character_bytes) {
    return find_multibyte(locale, range_of(string, nbytes), range_of(character, character_bytes),
                          which::first);
}
char *vel_full_mbsrchr(vel_locale *locale, const char *string, const char *character) {
    return tuk_vel_mbsrchr(locale, string, -1, character, -1);
}
char *tuk_vel_mbsrchr(vel_locale *locale, const char *string, int32_t nbytes, const char *character,
                      int32_t character_bytes) {
    return find_multibyte(locale, range_of(string, nbytes), range_of(character, character_bytes),
                          which::last);
}
char *vel_full_mbsmbs(vel_locale *locale, const char *string, const char *needle) {
    return tuk_vel_mbsmbs(locale, string, -1, needle, -1);
}
char *tuk_vel_mbsmbs(vel_locale *locale, const char *string, int32_t nbytes, const char *needle,
                     int32_t needle_bytes) {
    return find_string(locale, range_of(string, nbytes), range_of(needle, needle_bytes));
}

vel_wchar *vel_wcschr(vel_locale *locale, const vel_wchar *wide, vel_wchar value) {
    return tuk_vel_wcschr(locale, wide, -1, value);
}
vel_wchar *tuk_vel_wcschr(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                          vel_wchar value) {
    return find_wide(locale, range_of(wide, nvalues), value, which::first);
}
vel_wchar *vel_wcsrchr(vel_locale *locale, const vel_wchar *wide, vel_wchar value) {
    return tuk_vel_wcsrchr(locale, wide, -1, value);
}
vel_wchar *tuk_vel_wcsrchr(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                           vel_wchar value) {
    return find_wide(locale, range_of(wide, nvalues), value, which::last);
}
vel_wchar *vel_wcswcs(vel_locale *locale, const vel_wchar *wide, const vel_wchar *needle) {
    return tuk_vel_wcswcs(locale, wide, -1, needle, -1);
}
vel_wchar *tuk_vel_wcswcs(vel_locale *locale, const vel_wchar *wide, int32_t nvalues,
                          const vel_wchar *needle, int32_t needle_values) {
    return find_string(locale, range_of(wide, nvalues), range_of(needle, needle_values));
}
