// What a library under measurement can do. Ours and its peers have the same face, so that a row is
// an operation on a text, and whoever has the operation takes part.
#pragma once

#include "conversion.h"
#include "sample.h"
#include "word_list.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

// The work of one pass over a text.
struct call {
    std::function<std::int64_t()> pass; // gives a count; none when the library has no such function
    // What the pass that gave this count produced, in the form that is the same for all libraries.
    std::function<std::string(std::int64_t)> result;
};
using make_call = call(const sample_ptr &);

// What a library does with a list of words. Results: a digit for each word and the next, twice; the
// sorted words, twice.
struct ordering {
    call neighbours;
    call keys;
    call sort;
    call sort_by_keys;
};

struct library {
    const char *name;
    // Strings. Results: separated characters; bytes; a number.
    make_call *decode = nullptr;
    make_call *encode = nullptr;
    make_call *count = nullptr;
    // One character a call. Results: lengths in decimal; separated characters; lengths.
    make_call *length = nullptr;
    make_call *value = nullptr;
    make_call *next = nullptr;
    // Classes of wide characters. Results: a digit 0 or 1 for each character.
    make_call *alpha = nullptr;
    make_call *five_classes = nullptr;
    // Upper case. Results: bytes; separated characters.
    make_call *upper_text = nullptr;
    make_call *upper_wide = nullptr;
    // What upper case makes of the German sharp s, which has no single capital of old.
    std::u32string_view upper_sharp_s = U"ß";
    ordering (*order)(const word_list_ptr &) = nullptr;
    // Between code sets. Results: the bytes of all texts, one behind the other.
    call (*convert)(const conversion_ptr &) = nullptr;
    void *(*open_converter)(const conversion &) = nullptr; // null on failure
    void (*close_converter)(void *converter) = nullptr;
    // What a program can do once that is going to open many locales.
    void (*prepare_to_open)() = nullptr;
    // A locale such as "de_DE", with all that the library knows about it; null on failure.
    void *(*open)(const std::string &name) = nullptr;
    void (*close)(void *locale) = nullptr;
};

// The classes of the five-classes rows, in turn by position: alpha, upper, digit, space, punct.
inline constexpr int class_count = 5;

// Ours first, the host's second, then the further peers that this build found.
const std::vector<library> &libraries();

library ours();
library host();
library icu();
library unistring();
library utf8proc();
library bytes();

} // namespace bench
