// Columns of characters and strings, in one pass by the class table.
//
// Wide values are looked up a block at a time without a branch on any of them; multibyte text is
// decoded into a small buffer and goes the same way. Blocks of printable ASCII are one column a
// character in most code sets: whether they are is asked of the table, once a call and only after
// enough ASCII has gone by to pay for the question.
#include "ctype/columns.h"

#include "charmap/spans.h"
#include "ctype/lookup.h"
#include "vels/ctype.h"

namespace vel {
namespace {

constexpr char full_width_name[] = "full_width";
constexpr uint32_t printable = cell_end | VEL_CLASS_PRINT;
constexpr size_t ascii_before_asking = 48; // characters
constexpr uint32_t block_values = 16;
constexpr size_t decoded_values = 256;

bool prints(uint32_t cell) {
    return (cell & printable) == printable;
}

// The table of a locale with the mask of its double-width class, looked up for one call.
struct width_rules {
    const sealed_table &table;
    uint32_t full_width = 0; // 0: the locale has no such class

    explicit width_rules(const vel_locale *locale) : table(characters_of(locale)) {
        for (int32_t i = 0; i < locale->ctype.class_count; ++i) {
            const locale_class &own = locale->ctype.classes[i];
            if (strcmp(own.name, full_width_name) != 0) continue;
            full_width = own_class_mask(own) & UINT16_MAX;
            break;
        }
    }

    uint32_t columns(uint32_t cell) const { return 1 + ((cell & full_width) != 0); }
    int32_t columns_or_failure(uint32_t cell) const {
        return prints(cell) ? static_cast<int32_t>(columns(cell)) : -1;
    }
    int32_t columns_of(vel_wchar value) const {
        return value == 0 ? 0 : columns_or_failure(table.find_code(value));
    }
};

// The values that a span begins with, in whole blocks, that are printable ASCII.
size_t ascii_blocks(const vel_wchar *in, size_t n) {
    size_t i = 0;
    for (; n - i >= block_values; i += block_values) {
        if (in[i] > '~' || in[i + block_values - 1] > '~') break;
        uint32_t other = 0;
        for (uint32_t k = 0; k < block_values; ++k) other |= in[i + k] - ' ' > '~' - ' ';
        if (other) break;
    }
    return i;
}

// The columns of the values that a call has been given so far.
class column_sum {
public:
    explicit column_sum(const vel_locale *locale) : rules_(locale) {}

    // Adds n values, none of them 0, as far as they print; gives how far.
    size_t add(const vel_wchar *in, size_t n) {
        size_t i = 0;
        while (n - i >= block_values) {
            size_t taken = add_ascii(in + i, n - i);
            if (!taken) taken = add_block(in + i);
            if (!taken) break;
            i += taken;
        }
        for (; i < n; ++i) {
            int32_t columns = rules_.columns_of(in[i]);
            if (columns < 0) break;
            total_ += static_cast<uint32_t>(columns);
        }
        return i;
    }

    const sealed_table &table() const { return rules_.table; }
    columns_walk ended(columns_end end) const {
        uint64_t most = INT32_MAX;
        return {static_cast<int32_t>(total_ < most ? total_ : most), end};
    }

private:
    enum class ascii : uint8_t { unasked, narrow, other };

    size_t add_ascii(const vel_wchar *in, size_t n) {
        if (ascii_ == ascii::other) return 0;
        size_t run = ascii_blocks(in, n);
        if (ascii_ == ascii::unasked && run) ask(run);
        if (ascii_ != ascii::narrow) return 0;
        total_ += run;
        return run;
    }

    void ask(size_t run) {
        ascii_seen_ += run;
        if (ascii_seen_ < ascii_before_asking) return;
        ascii_ = is_ascii_narrow() ? ascii::narrow : ascii::other;
    }

    bool is_ascii_narrow() const {
        for (vel_wchar c = ' '; c <= '~'; ++c) {
            if (rules_.columns_of(c) != 1) return false;
        }
        return true;
    }

    // One block of values; 0 when any of them does not print or has four bytes.
    size_t add_block(const vel_wchar *in) {
        vel_wchar any = 0;
        for (uint32_t k = 0; k < block_values; ++k) any |= in[k];
        if (any <= 0xFFFF) return add_block_within<0xFFFF>(in);
        return any <= 0xFFFFFF ? add_block_within<0xFFFFFF>(in) : 0;
    }

    // The same for values up to a limit, which the compiler takes into each look-up.
    template <vel_wchar limit> size_t add_block_within(const vel_wchar *in) {
        uint32_t all = printable, wide = 0;
#pragma GCC unroll 16
        for (uint32_t k = 0; k < block_values; ++k) {
            uint32_t cell = rules_.table.find_quickly(in[k] & limit);
            all &= cell;
            wide += cell & rules_.full_width; // as many times its single bit
        }
        if (!prints(all)) return 0;
        total_ += block_values + (wide >> __builtin_ctz(rules_.full_width | 1u << 31));
        return block_values;
    }

    width_rules rules_;
    uint64_t total_ = 0;
    size_t ascii_seen_ = 0;
    ascii ascii_ = ascii::unasked;
};

// How far multibyte text has been walked, and what the walk may still take.
struct text_cursor {
    const unsigned char *at;
    size_t bytes;
    size_t characters;

    void take(size_t used, size_t count) {
        at += used;
        bytes -= used;
        characters -= count;
    }
};

// Adds the characters that a span of n bytes, without a zero, holds whole. False when one of them
// does not print.
bool add_span(column_sum &sum, span_state &state, text_cursor &cursor, size_t n) {
    decode_span *decode = kernels().of(state.table).decode;
    vel_wchar values[decoded_values];
    while (n > 0 && cursor.characters > 0) {
        size_t room = smaller(cursor.characters, decoded_values);
        span_progress done = decode(state, cursor.at, n, values, room);
        if (!done.written) break;
        if (sum.add(values, done.written) < done.written) return false;
        cursor.take(done.read, done.written);
        n -= done.read;
    }
    return true;
}

} // namespace

int32_t columns_of(const vel_locale *locale, vel_wchar value) {
    return width_rules(locale).columns_of(value);
}

int32_t columns_at(const vel_locale *locale, const char *character) {
    width_rules rules(locale);
    walk_end end = rules.table.walk(as_bytes(character));
    if (is_end(end.cell) && is_null_character(as_bytes(character), end.used)) return 0;
    return rules.columns_or_failure(end.cell);
}

int32_t text_columns(const vel_locale *locale, const vel_wchar *text, int32_t count) {
    width_rules rules(locale);
    uint32_t columns = 0;
    for (int32_t i = 0; i < count; ++i) {
        int32_t one = rules.columns_of(text[i]);
        columns += one < 0 ? 1 : static_cast<uint32_t>(one);
    }
    return static_cast<int32_t>(columns);
}

columns_walk walk_columns(const vel_locale *locale, const vel_wchar *text, size_t units,
                          size_t characters) {
    column_sum sum(locale);
    size_t left = smaller(units, characters);
    while (size_t n = kernels().wide_run(text, smaller(left, wide_window))) {
        size_t added = sum.add(text, n);
        text += added;
        left -= added;
        if (added == n) continue;
        bool is_character = is_end(sum.table().find_code(*text));
        return sum.ended(is_character ? columns_end::not_printable : columns_end::invalid);
    }
    return sum.ended(columns_end::reached);
}

columns_walk walk_columns(const vel_locale *locale, const char *text, size_t units,
                          size_t characters) {
    column_sum sum(locale);
    const sealed_table &table = sum.table();
    span_state state(table);
    text_cursor cursor = {as_bytes(text), units, characters};
    while (cursor.bytes > 0 && cursor.characters > 0) {
        size_t n = span_before_terminator(table, cursor.at, smaller(cursor.bytes, text_window));
        if (!add_span(sum, state, cursor, n)) return sum.ended(columns_end::not_printable);
        if (cursor.bytes == 0 || cursor.characters == 0) break;
        // The terminator, or a character that the span does not hold whole.
        walk_end one = table.walk(cursor.at);
        if (!is_end(one.cell)) return sum.ended(columns_end::invalid);
        if (is_null_character(cursor.at, one.used)) break;
        vel_wchar value = walk_value(table, cursor.at, max_character_bytes).value;
        if (sum.add(&value, 1) == 0) return sum.ended(columns_end::not_printable);
        cursor.take(smaller(static_cast<size_t>(one.used), cursor.bytes), 1);
    }
    return sum.ended(columns_end::reached);
}

} // namespace vel
