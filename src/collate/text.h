// Text that is weighed: a span that is known to hold whole characters, taken one at a time. What is
// written over these serves wide text, the bytes of single-byte code sets, and UTF-8 as it stands.
//
//   done()       whether no character is left
//   take()       the next character, stepped over
//   find(t, c)   the cell of such a character in a table
//   take(t)      both of these
//   covered(l)   whether every character of such text has a collation index: what take(t) asks for
//   back()       steps back over the character before, which there is
#pragma once

#include "charmap/character.h"

namespace vel {

struct taken_character {
    vel_wchar value;
    uint32_t cell; // in the table
};

struct wide_text {
    const vel_wchar *at, *end;

    bool done() const { return at == end; }
    vel_wchar take() { return *at++; }
    static uint32_t find(const sealed_table &table, vel_wchar value) {
        return table.find_code(value);
    }
    taken_character take(const sealed_table &table) {
        vel_wchar value = take();
        return {value, find(table, value)};
    }
    // Values may be anything: each is looked at.
    static bool covered(const collation_layout &) { return true; }
    void back() { --at; }
};

struct byte_text {
    const unsigned char *at, *end;

    bool done() const { return at == end; }
    vel_wchar take() { return *at++; }
    static uint32_t find(const sealed_table &table, vel_wchar value) {
        return table.cells()[value];
    }
    taken_character take(const sealed_table &table) {
        vel_wchar value = take();
        return {value, find(table, value)};
    }
    static bool covered(const collation_layout &layout) { return layout.covers_bytes; }
    void back() { --at; }
    bool is_inside() const { return false; }
};

struct utf8_text {
    const unsigned char *at, *end;

    bool done() const { return at == end; }
    [[gnu::always_inline]] vel_wchar take() {
        vel_wchar value = at[0];
        if (value < 0x80) {
            ++at;
            return value;
        }
        vel_wchar two = value << 8 | at[1];
        if (value < 0xE0) {
            at += 2;
            return two;
        }
        vel_wchar three = two << 8 | at[2];
        if (value < 0xF0) {
            at += 3;
            return three;
        }
        vel_wchar four = three << 8 | at[3];
        at += 4;
        return four;
    }
    static uint32_t find(const sealed_table &table, vel_wchar value) {
        return value < 0x80 ? table.cells()[value] : table.find_code(value);
    }
    [[gnu::always_inline]] taken_character take(const sealed_table &table) {
        const uint32_t *cells = table.cells();
        vel_wchar value = *at++;
        uint32_t cell = cells[value];
        for (int32_t depth = 1; is_more(cell); ++depth) {
            uint32_t byte = *at++;
            value = value << 8 | byte;
            cell = cells[next_row(cell) + byte - table.low[depth]];
        }
        return {value, cell};
    }
    static bool covered(const collation_layout &layout) { return layout.covers_utf8; }
    void back() {
        --at;
        while (continues(*at)) --at;
    }
    // Whether a character goes on here.
    bool is_inside() const { return !done() && continues(*at); }

private:
    static bool continues(unsigned char byte) { return (byte & 0xC0) == 0x80; }
};

} // namespace vel
