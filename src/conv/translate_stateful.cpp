// Conversions from and to code sets with two states.
#include "conv/stepping.h"

namespace vel {
namespace {

// The output of one character, in order.
class pieces {
public:
    void add(const shift_sequence &sequence) {
        for (int32_t i = 0; i < sequence.length; ++i) bytes_[length_++] = sequence.bytes[i];
    }
    void add(uint64_t cell) {
        length_ = static_cast<int32_t>(one_entry(cell).write(bytes_ + length_) - bytes_);
    }
    int32_t length() const { return length_; }
    unsigned char *write(unsigned char *out) const {
        memcpy(out, bytes_, static_cast<size_t>(length_));
        return out + length_;
    }

private:
    unsigned char bytes_[3 * max_character_bytes]; // a switch of the state before and behind it
    int32_t length_ = 0;
};

class two_states {
public:
    two_states(const vel_cv *cv, vel_cv_state *state) : cv_(cv), state_(*state) {}

    bool initial() const { return !state_.in_shifted && !state_.out_shifted; }
    const entry_table &table() const {
        return state_.in_shifted && cv_->shift_table ? *cv_->shift_table : *cv_->table;
    }

    // Changes of the state are recorded before it is known whether there is room.
    pieces output(uint64_t cell, bool last) {
        pieces output;
        uint32_t flags = entry_flags(cell);
        int32_t shifted = (flags & entry_shifted) != 0;
        if (flags & entry_toggle) state_.in_shifted = !state_.in_shifted;
        if (shifted != (state_.out_shifted != 0)) {
            state_.out_shifted = shifted;
            output.add(cv_->sequences[shifted ? shift_out : shift_in]);
        }
        output.add(cell);
        if (state_.flush && state_.out_shifted && last) output.add(cv_->sequences[shift_in]);
        return output;
    }

private:
    const vel_cv *cv_;
    vel_cv_state &state_;
};

} // namespace

const translation stateful_translation = translation_by<walked_source, two_states>;

} // namespace vel
