// Stepping from a character or collating element to its neighbour in the order of the first pass.
#include "collate/composite.h"
#include "collate/primary_order.h"
#include "vels/collate.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

constexpr int32_t no_neighbour = -2;

enum class side { before, behind };

// What may be the neighbour: an element by its values, or what is held here.
struct candidate {
    const vel_wchar *values; // null: own
    ptrdiff_t count;
    vel_wchar own[2];

    wide_text text() const {
        const vel_wchar *begin = values ? values : own;
        return {begin, begin + count};
    }
};

// The null character ends strings: its key is the empty one.
candidate of_character(vel_wchar value) {
    return {nullptr, value != 0, {value, 0}};
}

class neighbour_search {
public:
    neighbour_search(vel_locale *locale, side to, wide_text string)
        : locale_(locale), collate_(locale->collate), order_(locale), to_(to), string_(string),
          string_rank_(order_.first_rank(string)) {}

    // Writes the neighbour. A string that begins an element prefers those that begin with it.
    int32_t search(bool begins_element, char *out) {
        if (begins_element) offer_elements(string_);
        offer_row(0, 0, 0);
        if (!begins_element) offer_elements({string_.at, string_.at});
        if (order_.failed()) return fail(locale_, VEL_ENOMEM);
        return found_ ? write(out) : no_neighbour;
    }

private:
    // Whether x lies on the wanted side of y.
    bool lies_beyond(wide_text x, wide_text y) {
        int32_t order = order_.compare(x, y);
        return to_ == side::behind ? order > 0 : order < 0;
    }

    bool is_nearest(const candidate &offered) {
        rank_t rank = order_.first_rank(offered.text());
        bool ahead = to_ == side::behind;
        if (ahead ? rank < string_rank_ : rank > string_rank_) return false;
        if (found_ && (ahead ? rank > best_rank_ : rank < best_rank_)) return false;
        return lies_beyond(offered.text(), string_) &&
               (!found_ || lies_beyond(best_.text(), offered.text()));
    }

    void take(const candidate &offered) {
        best_ = offered;
        best_rank_ = order_.first_rank(best_.text());
        found_ = true;
    }

    void offer_elements(wide_text beginning) {
        if (collate_.kind == collation_thai) return offer_thai_elements(beginning);
        for (int32_t i = 0; i < collate_.element_count; ++i) {
            const collating_element &element = collate_.elements[i];
            if (!begins_with(element, beginning)) continue;
            candidate offered{element.values, element.count, {}};
            if (is_nearest(offered)) take(offered);
        }
    }

    // A leading vowel and the consonant behind it.
    void offer_thai_elements(wide_text beginning) {
        for (vel_wchar pair = 0; pair < 0x10000; ++pair) {
            vel_wchar vowel = pair >> 8, consonant = pair & 0xFF;
            if (!is_thai_leading_vowel(vowel) || !is_thai_consonant(consonant)) continue;
            candidate offered{nullptr, 2, {vowel, consonant}};
            if (begins_with({2, 0, offered.own}, beginning) && is_nearest(offered)) take(offered);
        }
    }

    // Every character behind the bytes that lead to a row of the code set's table.
    void offer_row(uint32_t row, int32_t depth, vel_wchar lead) {
        const sealed_table &table = characters_of(locale_);
        for (uint32_t i = 0; i < table.width[depth]; ++i) {
            uint32_t cell = table.cells()[row + i];
            vel_wchar value = lead << 8 | (table.low[depth] + i);
            if (is_more(cell)) offer_row(next_row(cell), depth + 1, value);
            if (is_end(cell)) offer_character(of_character(value));
        }
    }

    void offer_character(const candidate &offered) {
        if (is_nearest(offered) && !order_.has_expansion(offered.text())) take(offered);
    }

    int32_t write(char *out) {
        char *at = out;
        for (wide_text text = best_.text(); !text.done();) {
            int32_t bytes = vel_full_wctomb(locale_, at, text.take());
            if (bytes < 0) return -1;
            at += bytes;
        }
        vel_mbsterm(locale_, at);
        return vel_full_mblen(locale_, out, max_character_bytes);
    }

    vel_locale *locale_;
    const collate_category &collate_;
    primary_order order_;
    side to_;
    wide_text string_;
    rank_t string_rank_;
    candidate best_{};
    rank_t best_rank_ = 0;
    bool found_ = false;
};

composite composite_in(const vel_locale *locale, const char *string, wide_text text) {
    if (locale->collate.kind != collation_thai) return composite_of(locale->collate, text);
    return thai_composite(reinterpret_cast<const unsigned char *>(string));
}

int32_t find_neighbour(vel_locale *locale, side to, const char *string, int32_t flag, char *out) {
    if (!locale) return -1;
    if (!string || !out) return fail(locale, VEL_EFAULT);
    decoded_text text(locale, string, -1);
    if (!text) return -1;
    bool begins_element = composite_in(locale, string, text.text()) == composite_prefix;
    if (begins_element != (flag == 0)) return fail(locale, VEL_EBADLEN);
    return neighbour_search(locale, to, text.text()).search(begins_element, out);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_nextprimweight(vel_locale *locale, const char *string, int32_t flag, char *out) {
    return find_neighbour(locale, side::behind, string, flag, out);
}

int32_t vel_prevprimweight(vel_locale *locale, const char *string, int32_t flag, char *out) {
    return find_neighbour(locale, side::before, string, flag, out);
}
