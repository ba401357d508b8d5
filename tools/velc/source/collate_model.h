#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velc {

// What a collation speaks of: a character (its code point) or a named thing (a collating symbol, a
// collating element, a script section). Values from first_named upward are numbers of names in the
// library's symbol_table. They depend on the order in which files happened to be read: compare them
// for equality, never for order, and never let them reach the output.
using symbol_id = std::uint32_t;

inline constexpr symbol_id first_named = 0x110000;
inline constexpr symbol_id no_symbol = 0xFFFFFFFF;

constexpr bool is_character(symbol_id id) {
    return id < first_named;
}

// Names without their angle brackets and escapes. Safe to use from many threads.
class symbol_table {
public:
    // "U0041" gives the code point, everything else a named symbol.
    symbol_id intern(std::string_view name);
    // The symbol of that name, or no_symbol when no source ever used it.
    symbol_id find(std::string_view name) const;
    // "S0073" or "U0041".
    std::string name(symbol_id id) const;
    std::size_t size() const;

private:
    mutable std::shared_mutex mutex_;
    std::deque<std::string> names_;
    std::unordered_map<std::string_view, symbol_id> ids_;
};

enum class weight_kind : std::uint8_t {
    ignore,   // IGNORE
    self,     // nothing written between two semicolons: the element itself
    symbols,  // one symbol, or a quoted string of several
    ellipsis, // `..`: in an ellipsis line, the character that the line stands for at the moment
};

// One weight of an entry. Trailing weights that are not written are absent (they mean self).
struct collate_weight {
    weight_kind kind = weight_kind::self;
    std::uint16_t count = 0; // symbols
    std::uint32_t first = 0; // index into collate_source::symbols
};

struct collate_direction {
    bool backward = false;
    bool position = false;
};

enum class collate_op : std::uint8_t {
    symbol,      // collating-symbol subject; ranges are already written out one by one
    element,     // collating-element subject from symbols(), each of them a code point
    script,      // script subject
    equivalence, // symbol-equivalence subject symbols()[0]: subject is another name of it
    order_start, // subject = section or no_symbol; directions() of its levels
    order_end,
    entry,         // subject takes the next place in the order; weights(), possibly none
    ellipsis,      // `..`: the characters between the entries before and behind it; weights()
    undefined,     // UNDEFINED; weights(), possibly none
    reorder_after, // subject = anchor: the entries that follow go behind it
    reorder_end,
    reorder_sections_after, // subject = anchor section, symbols() = the sections to move
    codepoint_order,        // codepoint_collation; a resolved collation has the flag instead
};

struct collate_statement {
    collate_op op = collate_op::entry;
    std::uint32_t line = 0;
    symbol_id subject = no_symbol;
    std::uint32_t first = 0; // pool index: weights, symbols or directions, as the op demands
    std::uint32_t count = 0;
};

// The LC_COLLATE section of one file as written, `copy` and `ifdef` still in place.
struct collate_source {
    // Stretches between the statements that steer the reading itself.
    enum class step_kind : std::uint8_t {
        statements,
        copy,
        include,
        define,
        undef,
        ifdef,
        ifndef,
        otherwise,
        endif
    };
    struct step {
        step_kind kind = step_kind::statements;
        std::uint32_t line = 0;
        std::uint32_t first = 0; // statements [first, last)
        std::uint32_t last = 0;
        std::string name; // file of copy and include, macro of define, ifdef, ...
    };

    std::string file;
    bool codepoint_order = false; // says codepoint_collation somewhere
    std::vector<step> steps;
    std::vector<collate_statement> statements;
    std::vector<collate_weight> weight_pool;
    std::vector<symbol_id> symbol_pool;
    std::vector<collate_direction> direction_pool;

    std::span<const collate_weight> weights(const collate_statement &s) const {
        return std::span(weight_pool).subspan(s.first, s.count);
    }
    std::span<const symbol_id> symbols(const collate_statement &s) const {
        return std::span(symbol_pool).subspan(s.first, s.count);
    }
    std::span<const symbol_id> symbols(const collate_weight &w) const {
        return std::span(symbol_pool).subspan(w.first, w.count);
    }
    std::span<const collate_direction> directions(const collate_statement &s) const {
        return std::span(direction_pool).subspan(s.first, s.count);
    }
};

// The collation of a locale: its statements in reading order, after copy, include and ifdef. The
// statements stay in the (shared) sources that they came from.
struct collation {
    struct part {
        std::shared_ptr<const collate_source> source;
        std::uint32_t first = 0; // statements [first, last)
        std::uint32_t last = 0;
    };
    std::vector<part> parts;
    bool codepoint_order = false; // codepoint_collation was given: parts is empty

    // f(const collate_source&, const collate_statement&)
    template <typename F> void for_each(F &&f) const {
        for (const part &p : parts)
            for (std::uint32_t i = p.first; i < p.last; ++i) f(*p.source, p.source->statements[i]);
    }
    std::size_t size() const {
        std::size_t n = 0;
        for (const part &p : parts) n += p.last - p.first;
        return n;
    }
};

} // namespace velc
