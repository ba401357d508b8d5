// The place in the text that is parsed.
#pragma once

#include "time/format_walk.h"

namespace vel {

// Does what a char_reader does, but is a bare pointer while the text is ASCII and decodes only
// where it is not: numbers and signs, most of a date, then cost no look-up.
template <typename Unit> class scan_cursor {
public:
    scan_cursor(const vel_locale *locale, const Unit *text)
        : locale_(locale), at_(text), ascii_units_(has_ascii_units<Unit>(locale)) {}

    vel_wchar peek() const { return is_ascii() ? unit() : reader().peek(); }
    void next() {
        if (is_ascii()) {
            ++at_;
        } else {
            char_reader<Unit> here = reader();
            here.next();
            at_ = here.at();
        }
    }
    const Unit *at() const { return at_; }
    bool failed() const { return !is_ascii() && reader().failed(); }
    void move_to(const Unit *at) { at_ = at; }

    bool has_ascii() const { return ascii_units_; }
    char_reader<Unit> reader() const { return char_reader<Unit>(locale_, at_); }

private:
    vel_wchar unit() const { return static_cast<std::make_unsigned_t<Unit>>(*at_); }
    bool is_ascii() const { return ascii_units_ && unit() < 0x80; }

    const vel_locale *locale_;
    const Unit *at_;
    bool ascii_units_;
};

} // namespace vel
