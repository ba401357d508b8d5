// Writing text into a buffer of the caller, as bytes or as wide values by the same interface.
//
// A writer that could not write something stays failed and writes nothing more, so that a sequence
// of writes is checked once, at its end. What has been written until then stays.
#pragma once

#include <cstring>

#include "charmap/character.h"
#include "ext/error.h"
#include "record/portable.h"

namespace vel {

template <typename Unit> class char_writer {
public:
    // `room` is in units of the buffer, without the terminator.
    char_writer(const vel_locale *locale, Unit *out, int32_t room)
        : locale_(locale), begin_(out), at_(out), end_(out + (room > 0 ? room : 0)),
          error_(room < 0 ? VEL_E2BIG : 0),
          one_each_(std::is_same_v<Unit, vel_wchar> || table().shortest == 1) {}

    // 0, VEL_E2BIG, or VEL_EILSEQ for a character that the code set does not have.
    int32_t error() const { return error_; }
    int32_t written() const { return static_cast<int32_t>(at_ - begin_); }

    // A character that is known to belong to the code set.
    void put(vel_wchar value) {
        if constexpr (std::is_same_v<Unit, vel_wchar>) {
            if (at_ == end_) return fail_with(VEL_E2BIG);
            *at_++ = value;
        } else {
            if (value <= 0xFF && one_each_) [[likely]] {
                if (at_ == end_) return fail_with(VEL_E2BIG);
                *at_++ = static_cast<char>(value);
                return;
            }
            uint32_t n = static_cast<uint32_t>(table().code_bytes(value));
            if (room() < n) return fail_with(VEL_E2BIG);
            put_packed(as_bytes(at_), value, n);
            at_ += n;
        }
    }
    // A character from elsewhere. Wide values are taken as they are.
    void put_any(vel_wchar value) {
        if constexpr (!std::is_same_v<Unit, vel_wchar>) {
            unsigned char bytes[max_character_bytes];
            if (put_character(table(), value, bytes) == 0) return fail_with(VEL_EILSEQ);
        }
        put(value);
    }
    void put_ascii(char c) { put(value_of(locale_, c)); }
    // Several of them: all or none.
    void put_ascii(const char *text, size_t count) {
        if (!one_each_) {
            if (room() / static_cast<size_t>(table().shortest) < count) {
                return fail_with(VEL_E2BIG);
            }
            for (size_t i = 0; i < count; ++i) put_ascii(text[i]);
            return;
        }
        if (room() < count) return fail_with(VEL_E2BIG);
        const unsigned char *codes = locale_->portable->code_of;
        Unit *at = at_;
        at_ += count;
        for (size_t i = 0; i < count; ++i) {
            at[i] = static_cast<Unit>(codes[static_cast<unsigned char>(text[i])]);
        }
    }
    void put(const vel_wchar *text, int32_t count) {
        for (int32_t i = 0; i < count; ++i) put(text[i]);
    }
    // Characters as they stand in text of the code set: all or none.
    void put_units(const Unit *units, size_t count) {
        if (room() < count) return fail_with(VEL_E2BIG);
        memcpy(at_, units, count * sizeof(Unit));
        at_ += count;
    }
    // A whole string of the locale.
    void put(const locale_text &text) {
        if constexpr (!std::is_same_v<Unit, vel_wchar>) {
            if (one_each_) return put_short(text.bytes);
        }
        for (const vel_wchar *c = text.wide; *c; ++c) put(*c);
    }
    // The same character several times; a count below 1 writes nothing.
    void fill(vel_wchar value, int32_t count) {
        if (count > 0 && static_cast<size_t>(count) > room()) return fail_with(VEL_E2BIG);
        for (int32_t i = 0; i < count; ++i) put(value);
    }

    // Where to write so many units without further questions; null when there is no room.
    Unit *space(size_t count) const { return room() < count ? nullptr : at_; }
    // What has been written there reaches to `end`.
    void advance(Unit *end) { at_ = end; }

    // Takes back what was written since there were `written` units. A failure stays.
    void rewind(int32_t written) {
        at_ = begin_ + written;
        if (error_ != 0) end_ = at_;
    }

    void fail_with(int32_t number) {
        if (error_ == 0) error_ = number;
        end_ = at_;
    }

private:
    const sealed_table &table() const { return characters_of(locale_); }
    size_t room() const { return static_cast<size_t>(end_ - at_); }
    // Mostly one or two characters.
    void put_short(const char *text) {
        char *at = at_;
        while (*text && at != end_) *at++ = *text++;
        if (*text) return fail_with(VEL_E2BIG);
        at_ = at;
    }

    const vel_locale *locale_;
    Unit *begin_;
    Unit *at_;
    Unit *end_;
    int32_t error_;
    bool one_each_; // every portable character is one unit, strings have no zero units inside
};

} // namespace vel
