#pragma once

// A code set as conversions see it: with shift states, if it has any, and whatever it is made from.

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velc/codesets.h"
#include "velc/source/source_library.h"
#include "velc/tool_error.h"
#include "velc/unicode_forms.h"

namespace velc {

struct coded_character {
    byte_sequence bytes;
    bool shifted = false; // belongs to the shifted state
};

// Bytes of the source that are no character of their state.
struct control_bytes {
    byte_sequence bytes;
    bool in_shifted = false;           // the state in which they stand
    bool switches = false;             // to the other state
    std::optional<char32_t> code = {}; // what they convert to besides; else nothing
};

struct conversion_set {
    std::string name;                       // as the recipe names it
    std::string source;                     // what it was made from, for the header of objects
    const unicode_form *form = nullptr;     // a computed set has this and no charmaps
    std::shared_ptr<const charmap> initial; // the characters of the initial state
    std::shared_ptr<const charmap> shifted; // null without shift states
    byte_sequence to_shifted, to_initial;   // what switches the output
    std::vector<control_bytes> controls = {};
    // Characters that are written as bytes that are read as others.
    std::map<char32_t, coded_character> written_only = {};

    bool has_shifts() const { return shifted != nullptr; }
    bool has_units() const { return form && form->units; }
    int min_length() const;

    std::optional<coded_character> encode(char32_t code) const;
    // Several code points may be one character, or characters of one state that fit in 4 bytes.
    std::optional<coded_character> encode(std::u32string_view codes) const;
    // What stands for characters that the set lacks.
    coded_character substitute() const;

    // Calls f(code) once for everything that can be written; in a computed set for the characters
    // that are passed on.
    template <typename F> void each_code(F f) const {
        if (form)
            for (const code_range &range : unicode_repertoire())
                for (char32_t code = range.first; code <= range.last; ++code) f(code);
        if (initial)
            for (std::uint32_t i : initial->by_code()) f(initial->by_bytes()[i].code);
        if (shifted)
            for (std::uint32_t i : shifted->by_code())
                if (const char32_t code = shifted->by_bytes()[i].code; !initial->has(code)) f(code);
        for (const auto &[code, coded] : written_only) f(code);
    }
};

// A code set that has neither a charmap nor anything else to be made from.
struct missing_set : tool_error {
    using tool_error::tool_error;
};

using conversion_set_pointer = std::shared_ptr<const conversion_set>;

// What the bytes of a set mean, to show it to people.
class conversion_decoder {
public:
    explicit conversion_decoder(const conversion_set &of);

    // "U+00E9"; several for a sequence, nothing for bytes that are no character of the state.
    std::string text(const byte_sequence &bytes, bool shifted) const;

private:
    struct meaning {
        byte_sequence bytes;
        std::u32string codes;
    };
    std::vector<meaning> states_[2]; // rising by bytes
};

// Sets by the names of the recipe, each made once. May be called from many threads.
class conversion_sets {
public:
    explicit conversion_sets(source_library &sources) : sources_(sources) {}

    // Throws missing_set and source_error.
    conversion_set_pointer get(const std::string &name);

private:
    struct slot {
        std::once_flag once;
        conversion_set_pointer made;
    };
    conversion_set_pointer make(const std::string &name);

    source_library &sources_;
    std::mutex mutex_;
    std::map<std::string, std::shared_ptr<slot>> slots_;
};

} // namespace velc
