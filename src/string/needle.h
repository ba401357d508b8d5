// Searching units for a sequence of units, without regard to characters. Linear in the worst case.
#pragma once

#include <cstring>

#include "vels/types.h"

namespace vel {

inline const unsigned char *find_unit(const unsigned char *at, size_t n, unsigned char unit) {
    return static_cast<const unsigned char *>(memchr(at, unit, n));
}

inline const vel_wchar *find_unit(const vel_wchar *at, size_t n, vel_wchar unit) {
    using four = vel_wchar __attribute__((vector_size(16)));
    const four wanted = {unit, unit, unit, unit};
    for (; n >= 16; at += 16, n -= 16) {
        four block[4];
        memcpy(block, at, sizeof block);
        auto hits = (block[0] == wanted) | (block[1] == wanted) | (block[2] == wanted) |
                    (block[3] == wanted);
        uint64_t halves[2];
        memcpy(halves, &hits, sizeof halves);
        if (halves[0] | halves[1]) break;
    }
    for (; n > 0; ++at, --n) {
        if (*at == unit) return at;
    }
    return nullptr;
}

// Looks for the last unit of the needle and compares the rest where it stands. Text in which that
// happens too often in vain is searched by the two-way method: the needle is cut where its longest
// suffixes in both orders of the units begin, the right part is compared forwards and the left part
// backwards, and each mismatch says how far the needle may move.
template <typename Unit> class needle_search {
public:
    // At least one unit, which must outlive the search.
    needle_search(const Unit *needle, size_t length) : needle_(needle), length_(length) {}

    size_t length() const { return length_; }

    // The first occurrence in n units, or null.
    const Unit *find(const Unit *text, size_t n) {
        if (n < length_) return nullptr;
        const size_t last = length_ - 1;
        const Unit *end = text + (n - last); // behind the last start
        while (text < end) {
            const Unit *hit =
                find_unit(text + last, static_cast<size_t>(end - text), needle_[last]);
            if (!hit) return nullptr;
            const Unit *start = hit - last;
            if (*start == *needle_) {
                if (memcmp(start, needle_, length_ * sizeof(Unit)) == 0) return start;
                wasted_ += length_;
            }
            passed_ += static_cast<size_t>(start - text) + 1;
            text = start + 1;
            if (wasted_ > 8 * passed_ + free_waste) {
                return find_two_way(text, static_cast<size_t>(end - text) + last);
            }
        }
        return nullptr;
    }

private:
    static constexpr size_t free_waste = 1024;

    struct suffix {
        size_t start, period;
    };

    // The greatest suffix of the needle, by the order of the units or by its reverse.
    suffix greatest_suffix(bool reversed) const {
        size_t start = 0, candidate = 1, matched = 0, period = 1;
        while (candidate + matched < length_) {
            Unit a = needle_[candidate + matched], b = needle_[start + matched];
            if (a == b) {
                if (++matched == period) {
                    candidate += period;
                    matched = 0;
                }
            } else if ((a < b) != reversed) {
                candidate += matched + 1;
                matched = 0;
                period = candidate - start;
            } else {
                start = candidate++;
                matched = 0;
                period = 1;
            }
        }
        return {start, period};
    }

    void factorise() {
        suffix forward = greatest_suffix(false), backward = greatest_suffix(true);
        suffix cut = forward.start >= backward.start ? forward : backward;
        cut_ = cut.start;
        periodic_ = cut.period + cut_ <= length_ &&
                    memcmp(needle_, needle_ + cut.period, cut_ * sizeof(Unit)) == 0;
        size_t longer = cut_ > length_ - cut_ ? cut_ : length_ - cut_;
        shift_ = periodic_ ? cut.period : longer + 1;
    }

    const Unit *find_two_way(const Unit *text, size_t n) {
        if (shift_ == 0) factorise();
        size_t known = 0; // units at the start of the needle that are known to match
        for (size_t at = 0; n >= length_ && at <= n - length_;) {
            size_t i = known > cut_ ? known : cut_;
            while (i < length_ && needle_[i] == text[at + i]) ++i;
            if (i < length_) {
                at += i - cut_ + 1;
                known = 0;
                continue;
            }
            i = cut_;
            while (i > known && needle_[i - 1] == text[at + i - 1]) --i;
            if (i <= known) return text + at;
            at += shift_;
            known = periodic_ ? length_ - shift_ : 0;
        }
        return nullptr;
    }

    const Unit *needle_;
    size_t length_;
    size_t passed_ = 0; // units gone by
    size_t wasted_ = 0; // units compared in vain
    size_t cut_ = 0;
    size_t shift_ = 0; // 0: not factorised yet
    bool periodic_ = false;
};

} // namespace vel
