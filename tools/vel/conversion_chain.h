// Text from one code set to another, piece by piece, with the state kept from one piece to the
// next.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "vel/charmap_handle.h"
#include "vel/conversion.h"

namespace vel_tool {

// What came out of one piece of text.
struct converted {
    size_t consumed;         // bytes of the text, up to what is no character
    std::string_view output; // valid until the next call
    int32_t error;           // why not all was consumed: VEL_EILSEQ, VEL_EINVAL; else 0
    bool is_lacking;         // the target lacks a character that was consumed
};

// One conversion with its state and the room for its output.
class conversion_step {
public:
    explicit conversion_step(conversion_handle cv);

    converted convert(std::string_view text);
    // The bytes that lead the output back to its initial state.
    std::string_view ending();

    vel_cv_state state{};
    size_t null_bytes() const { return null_bytes_; } // of the source's null character

private:
    conversion_handle cv_;
    size_t null_bytes_;
    std::vector<unsigned char> room_;
};

// The whole way. From a code set to itself it is a copy, in which every character is checked: by
// the conversion to UTF-8, or else by the charmap.
class conversion_chain {
public:
    explicit conversion_chain(conversion_route route);

    const named_code_set &from() const { return from_; }
    const named_code_set &to() const { return to_; }
    size_t shortest() const { return shortest_; } // bytes of a source character
    bool is_unchecked() const { return steps_.empty() && !charmap_; }

    converted convert(std::string_view text);

    using state = std::array<vel_cv_state, 2>;
    state save() const;
    void restore(const state &saved);
    bool source_is_shifted() const { return !steps_.empty() && steps_[0].state.in_shifted != 0; }

    // What the target has in place of invalid text.
    std::string_view substitute();
    // Ends a text: the output is led back to its initial state, and the next text begins there.
    std::string_view ending();

private:
    void prepare_copy();
    converted copy(std::string_view text);
    converted check_by_charmap(std::string_view text) const;
    conversion_step &step_from_utf8();

    named_code_set from_, to_;
    bool is_copy_ = false;
    std::vector<conversion_step> steps_; // of a copy, the one that checks it
    charmap_handle charmap_;             // of a copy without
    size_t shortest_ = 1;
    std::optional<conversion_step> from_utf8_;
};

} // namespace vel_tool
