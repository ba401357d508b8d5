// Reading terminated text one character at a time, from bytes or from wide values by the same
// interface: what is written once over a reader serves both forms.
#pragma once

#include "charmap/character.h"

namespace vel {

// A position in text. Copies are cheap: keep one to go back to it.
//   peek()    the character here, 0 at the end
//   next()    steps over it; not at the end
//   at()      where it is
//   failed()  whether peek() is 0 because the bytes here are no character
template <typename Unit> class char_reader;

template <> class char_reader<vel_wchar> {
public:
    char_reader(const vel_locale *, const vel_wchar *text) : at_(text) {}

    vel_wchar peek() const { return *at_; }
    void next() { ++at_; }
    const vel_wchar *at() const { return at_; }
    bool failed() const { return false; }

private:
    const vel_wchar *at_;
};

template <> class char_reader<char> {
public:
    char_reader(const vel_locale *locale, const char *text)
        : table_(&characters_of(locale)), at_(reinterpret_cast<const unsigned char *>(text)) {
        load();
    }

    vel_wchar peek() const { return here_.value; }
    void next() {
        at_ += here_.used;
        load();
    }
    const char *at() const { return reinterpret_cast<const char *>(at_); }
    bool failed() const { return here_.used == 0; }

private:
    void load() {
        if (is_end(table_->cells()[*at_])) [[likely]] {
            here_ = {*at_, 1};
            return;
        }
        load_longer();
    }

    // An end where the code set has no null character is read as one.
    void load_longer() {
        here_ =
            table_->empty() ? character{0, 0} : read_character(*table_, at_, max_character_bytes);
        if (here_ || table_->empty() || !at_terminator(*table_, at_)) return;
        here_ = {0, static_cast<uint32_t>(table_->shortest)};
    }

    const sealed_table *table_;
    const unsigned char *at_;
    character here_;
};

} // namespace vel
