// The short way for what most formats consist of: plain characters, numbers of two or four digits
// and names. It stops before whatever it does not know, does not find in range or has no room for,
// without a word: the long way takes that up.
#pragma once

#include <bit>

#include "numeric/digits.h"
#include "record/texts.h"
#include "time/format_table.h"

namespace vel {

enum class quick_kind : uint8_t {
    none,
    two_digits,
    four_digits,
    month_number,
    series,
    weekday,
    month
};

// A conversion in the form in which it is done at once: `base` is shown for the lowest value of the
// member, and `span` values follow that.
struct quick_conversion {
    int32_t vel_time_work::*member;
    text_list time_category::*list;
    const char *series; // letters of numbers with signs between them
    int32_t low;
    uint32_t span;
    uint32_t base;
    quick_kind kind;
};
struct quick_table {
    quick_conversion of[128]; // by the ASCII code of the letter
};
extern const quick_table quick_conversions;

template <typename Unit> void put_pair(Unit *out, uint32_t value) {
    const char *digits = &digit_pairs[value % 100 * 2];
    out[0] = static_cast<Unit>(digits[0]);
    out[1] = static_cast<Unit>(digits[1]);
}

// Copies a name and gives its end, or null when the room could be too small. Eight bytes at a time
// may be read, because as many zeros follow each string of a locale, and may be written, because
// the room is there.
inline char *copy_name(char *out, const char *end, const char *name) {
    static_assert(text_padding >= sizeof(uint64_t));
    constexpr uint64_t ones = 0x0101010101010101;
    for (; end - out >= 8; out += 8, name += 8) {
        uint64_t eight;
        memcpy(&eight, name, sizeof eight);
        memcpy(out, &eight, sizeof eight);
        if constexpr (std::endian::native == std::endian::big) eight = __builtin_bswap64(eight);
        uint64_t zeros = (eight - ones) & ~eight & ones << 7;
        if (zeros != 0) return out + std::countr_zero(zeros) / 8;
    }
    return nullptr;
}
inline vel_wchar *copy_name(vel_wchar *out, const vel_wchar *end, const vel_wchar *name) {
    for (; *name; *out++ = *name++) {
        if (out == end) return nullptr;
    }
    return out;
}

template <typename Unit> class quick_writer {
public:
    // `names` is whether the text of names may be copied as it is.
    quick_writer(const vel_locale *locale, const vel_time_work &time, bool names)
        : category_(locale->time), time_(time), names_(names) {}

    // Moves both positions on. Units of the format below 0x80 are characters of ASCII.
    [[gnu::always_inline]] void run(const Unit *&format, Unit *&out, Unit *end) const {
        const Unit *at = format;
        Unit *to = out;
        for (;; ++at) {
            auto unit = static_cast<std::make_unsigned_t<Unit>>(*at);
            if (unit != '%') {
                if (unit - 1u >= 0x7F || to == end) break;
                *to++ = *at;
                continue;
            }
            Unit *after = put(static_cast<std::make_unsigned_t<Unit>>(at[1]), to, end);
            if (!after) break;
            to = after;
            ++at;
        }
        format = at;
        out = to;
    }

private:
    // How far the member is above the lowest value of its range: far beyond the span when below it.
    uint32_t above_low(const quick_conversion &conversion) const {
        uint32_t value = static_cast<uint32_t>(time_.*conversion.member);
        return value - static_cast<uint32_t>(conversion.low);
    }
    [[gnu::always_inline]] Unit *put(uint32_t letter, Unit *out, Unit *end) const {
        if (letter > 0x7F) return nullptr;
        const quick_conversion &conversion = quick_conversions.of[letter];
        if (conversion.kind == quick_kind::none || end - out < 4) return nullptr;
        if (conversion.kind == quick_kind::series) return put_series(conversion.series, out, end);
        uint32_t above = above_low(conversion);
        if (above > conversion.span) return nullptr;
        if (conversion.kind > quick_kind::series) return put_name(conversion, above, out, end);
        return put_number(conversion, above, out);
    }
    // There is room for four units. Null when the locale has fewer months than others.
    [[gnu::always_inline]] Unit *put_number(const quick_conversion &conversion, uint32_t above,
                                            Unit *out) const {
        uint32_t shown = conversion.base + above;
        if (conversion.kind == quick_kind::four_digits) {
            put_pair(out, shown / 100);
            put_pair(out + 2, shown);
            return out + 4;
        }
        if (conversion.kind == quick_kind::month_number && category_.months.count < 12) {
            return nullptr;
        }
        put_pair(out, shown);
        return out + 2;
    }
    // What has been written is taken back by giving null.
    Unit *put_series(const char *series, Unit *out, Unit *end) const {
        for (; *series; ++series) {
            const quick_conversion &number =
                quick_conversions.of[static_cast<unsigned char>(*series)];
            if (end - out < 4) return nullptr;
            if (number.kind == quick_kind::none) {
                *out++ = static_cast<Unit>(*series);
                continue;
            }
            uint32_t above = above_low(number);
            out = above <= number.span ? put_number(number, above, out) : nullptr;
            if (!out) return nullptr;
        }
        return out;
    }
    [[gnu::always_inline]] Unit *put_name(const quick_conversion &conversion, uint32_t index,
                                          Unit *out, Unit *end) const {
        const text_list &list = category_.*conversion.list;
        if (!names_ || static_cast<int32_t>(index) >= list.count) return nullptr;
        if (conversion.kind == quick_kind::month) {
            index = static_cast<uint32_t>(time_.month_name);
            if (index >= static_cast<uint32_t>(list.count)) return nullptr;
        }
        return copy_name(out, end, text_of(list.items[index], Unit()));
    }

    const time_category &category_;
    const vel_time_work &time_;
    const bool names_;
};

} // namespace vel
