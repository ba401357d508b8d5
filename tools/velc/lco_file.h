#pragma once

// A locale object as read back from its file.

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "velc/object_input.h"

namespace velc {

// One item of the sections NUMERIC, MONETARY, TIME and MESSAGES.
struct lco_item {
    enum class shape { text, texts, counted_texts, grouping, number, calendar };
    std::string section, name;
    shape form = shape::text;
    std::vector<std::string> texts;
    std::vector<int> numbers;
};

struct lco_pass {
    int direction = 1; // 1 forward, 2 backward
    std::vector<std::uint16_t> weights;
};

struct lco_element {
    std::vector<std::uint32_t> values;
    std::uint16_t index = 0;
};

struct lco_collation {
    bool thai = false;
    trie_pointer table; // null for thai
    int index_count = 0, max_weight = 0;
    bool code_order = false;
    std::vector<lco_pass> passes;
    std::vector<lco_element> elements;
    std::vector<std::vector<std::uint32_t>> expansions;
};

struct lco_file {
    object_head head;
    std::string codeset;
    trie_pointer classes, cases;
    std::vector<std::pair<int, std::string>> own_classes;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs; // upper, lower
    double growth = 0;
    lco_collation collate;
    std::vector<lco_item> items; // in file order
};

// Throws tool_error for everything that is not as it should be.
lco_file read_lco(const std::filesystem::path &path);

} // namespace velc
