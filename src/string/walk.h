// Walking through text by characters, from bytes or from wide values by the same interface.
#pragma once

#include "string/text_range.h"

namespace vel {

constexpr size_t whole_text = SIZE_MAX;

// One character at a time, for those who look at each.
//   peek()   the character here; `used` is 0 at the end of the text and where there is none
//   error()  why peek() found none: 0 at the end, else VEL_EINVAL when the text ends inside a
//            character, VEL_EILSEQ when it is invalid
template <typename Unit> class stepper;

template <> class stepper<vel_wchar> {
public:
    stepper(const vel_locale *, wide_range text) : at_(text.begin), end_(text.end()) {}

    valued_walk peek() const {
        bool over = end_ ? at_ == end_ : *at_ == 0;
        return over ? valued_walk{0, 0, 0} : valued_walk{0, 1, *at_};
    }
    void skip(const valued_walk &) { ++at_; }
    void move_to(const vel_wchar *place) { at_ = place; }
    const vel_wchar *at() const { return at_; }
    int32_t error() const { return 0; }

private:
    const vel_wchar *at_;
    const vel_wchar *end_;
};

template <> class stepper<unsigned char> {
public:
    stepper(const vel_locale *locale, byte_range text)
        : table_(characters_of(locale)), cells_(table_.cells()), at_(text.begin), end_(text.end()) {
    }

    [[gnu::always_inline]] valued_walk peek() {
        if (end_ ? at_ == end_ : at_zeros()) return {0, 0, 0};
        uint32_t cell = cells_[*at_];
        if (is_end(cell)) [[likely]]
            return {cell, 1, *at_};
        return peek_longer();
    }
    void skip(const valued_walk &here) { at_ += here.used; }
    void move_to(const unsigned char *place) { at_ = place; }
    const unsigned char *at() const { return at_; }
    int32_t error() const { return error_; }

private:
    bool at_zeros() const { return *at_ == 0 && at_terminator(table_, at_); }

    [[gnu::always_inline]] valued_walk peek_longer() {
        size_t left = end_ ? static_cast<size_t>(end_ - at_) : max_character_bytes;
        valued_walk here = walk_value(table_, at_, left);
        if (!is_end(here.cell)) [[unlikely]] {
            error_ = is_more(here.cell) ? VEL_EINVAL : VEL_EILSEQ;
            return {0, 0, 0};
        }
        if (here.value == 0) here.used = table_.shortest; // as long as the terminator
        return here;
    }

    const sealed_table &table_;
    const uint32_t *cells_;
    const unsigned char *at_;
    const unsigned char *end_;
    int32_t error_ = 0;
};

// Where a walk ended: at the end of the text, behind the characters asked for, or, with the error
// number of a stepper, before one that cannot be read.
template <typename Unit> struct walked {
    const Unit *end;
    size_t characters;
    int32_t error;
};

// Walks over at most `most` characters, in blocks.
walked<unsigned char> walk(const vel_locale *locale, byte_range text, size_t most);
walked<vel_wchar> walk(const vel_locale *locale, wide_range text, size_t most);

// Whether any place in valid text where the bytes of a character stand is that character.
inline bool is_self_synchronising(const vel_locale *locale) {
    table_shape shape = characters_of(locale).shape;
    return shape == table_shape::utf8 || locale->single_byte;
}

} // namespace vel
