// A set of characters that text is compared with.
#pragma once

#include <bit>

#include "ext/memory.h"
#include "string/walk.h"

namespace vel {

// Values that live on the stack up to N of them and in a host block beyond.
template <size_t N> class value_list {
public:
    // False when memory cannot be had.
    bool push(vel_wchar value) {
        if (size_ < N) {
            first_[size_++] = value;
            return true;
        }
        if (size_ == N) {
            vel_wchar *moved = more_.extend(N);
            if (!moved) return false;
            memcpy(moved, first_, sizeof first_);
        }
        ++size_;
        return more_.push(value);
    }
    const vel_wchar *data() const { return size_ > N ? more_.data() : first_; }
    size_t size() const { return size_; }

private:
    vel_wchar first_[N];
    host_array<vel_wchar> more_;
    size_t size_ = 0;
};

// Values below 256 are bits; of the others, which are compared one by one, a bit for the lowest six
// bits tells most of those that are not in the set.
template <typename Unit> class value_set {
public:
    // Reads the set; the error number of one that cannot be used, or 0. A set of wide values must
    // outlive this.
    int32_t read(const vel_locale *locale, text_range<Unit> set) {
        // Counted bytes without a character are no set; what stands behind them is not looked at.
        if (sizeof(Unit) == 1 && set.length == 0) return VEL_EINVAL;
        stepper<Unit> at(locale, set);
        for (valued_walk here; (here = at.peek()).used; at.skip(here)) {
            if (!add(here.value)) return VEL_ENOMEM;
        }
        if constexpr (sizeof(Unit) != 1) {
            others_ = set.begin;
            count_ = static_cast<size_t>(at.at() - set.begin);
        } else {
            others_ = list_.data();
            count_ = list_.size();
        }
        return at.error() ? VEL_EILSEQ : 0; // also for a character that goes beyond the end
    }

    bool contains(vel_wchar value) const {
        if (value < 256) return low_[value / 64] >> value % 64 & 1;
        if (!(filter_ >> value % 64 & 1)) return false;
        for (size_t i = 0; i < count_; ++i) {
            if (others_[i] == value) return true;
        }
        return false;
    }

    // Gives each member below 0x80 to an action.
    template <typename Action> void each_ascii(Action action) const {
        for (vel_wchar word = 0; word < 2; ++word) {
            for (uint64_t left = low_[word]; left; left &= left - 1) {
                action(word * 64 + static_cast<vel_wchar>(std::countr_zero(left)));
            }
        }
    }

private:
    struct nothing {};

    bool add(vel_wchar value) {
        if (value < 256) {
            low_[value / 64] |= uint64_t{1} << value % 64;
            return true;
        }
        filter_ |= uint64_t{1} << value % 64;
        if constexpr (sizeof(Unit) == 1) return list_.push(value);
        return true;
    }

    uint64_t low_[4] = {};
    uint64_t filter_ = 0;
    const vel_wchar *others_ = nullptr;
    size_t count_ = 0;
    [[no_unique_address]] std::conditional_t<sizeof(Unit) == 1, value_list<128>, nothing> list_;
};

} // namespace vel
