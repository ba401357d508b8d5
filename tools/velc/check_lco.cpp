#include "velc/check.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include <fmt/ranges.h>

#include "velc/codesets.h"
#include "velc/lco_file.h"
#include "velc/source/calendars.h"
#include "velc/tool_error.h"
#include "vels/errors.h"
#include "vels/locale.h"

namespace velc {

namespace {

constexpr int own_class_limit = 5;

// The characters of a table in the order of their bytes.
class character_set {
public:
    explicit character_set(const vel::vel_trie &table) {
        for_each_character(table, [&](const byte_sequence &bytes, const unsigned char *) {
            bytes_.push_back(bytes);
        });
    }
    bool operator==(const character_set &) const = default;
    bool contains(const byte_sequence &bytes) const {
        return std::ranges::binary_search(bytes_, bytes);
    }
    bool includes(const character_set &other) const {
        return std::ranges::includes(bytes_, other.bytes_);
    }
    bool contains_value(std::uint32_t value) const {
        for (std::uint8_t length = 1; length <= 4; ++length)
            if ((length == 4 || value >> 8 * length == 0) && contains({value, length})) return true;
        return false;
    }
    bool empty() const { return bytes_.empty(); }
    std::size_t size() const { return bytes_.size(); }

private:
    std::vector<byte_sequence> bytes_;
};

int byte_count(std::uint32_t value, int shortest) {
    int count = 1;
    while (count < 4 && value >> 8 * count != 0) ++count;
    return std::max(count, shortest);
}

class lco_checker {
public:
    lco_checker(const std::filesystem::path &path, const name_resolver &resolve)
        : path_(path), resolve_(resolve), file_(read_lco(path)), characters_(*file_.classes) {}

    void check() {
        check_codeset();
        check_classes();
        check_cases();
        if (!file_.collate.thai) file_.collate.code_order ? check_code_order() : check_collate();
        for (const lco_item &item : file_.items) check_item(item);
        check_months();
    }

private:
    [[noreturn]] void fail(std::string_view place, std::string_view found,
                           std::string_view expected) const {
        throw tool_error("{}: {}: found {}, expected {}", path_.string(), place, found, expected);
    }

    // The name in the head, the number in the header and that in the file's name are one code set.
    void check_codeset() const {
        const auto number = resolve_(file_.codeset);
        if (!number) fail("code set", file_.codeset, "a name that the registry knows");
        if (const auto line = file_.head.value("CODESET_NUMBER");
            line && *line != std::to_string(*number))
            fail("header", "code-set number " + *line,
                 fmt::format("{}, the number of {}", *number, file_.codeset));
        const std::string name = path_.filename().string();
        const std::string digits = fmt::format("{:04x}", *number);
        const bool numbered = path_.parent_path().filename().string().find('_') == 2 &&
                              name.find_first_not_of("0123456789abcdef") >= 4;
        if (numbered && !name.starts_with(digits)) fail("file name", name, digits + "...");
    }

    void check_classes() const {
        if (characters_.empty()) fail("LC_CTYPE: class table", "no characters", "some");
        std::uint32_t taken = 0;
        for (const auto &[number, name] : file_.own_classes) {
            if (number >= own_class_limit)
                fail("LC_CTYPE: class " + name, std::to_string(number), "a number from 0 to 4");
            if (taken >> number & 1)
                fail("LC_CTYPE: class " + name, fmt::format("number {} again", number), "its own");
            taken |= 1u << number;
        }
    }

    void check_cases() const {
        if (!(character_set(*file_.cases) == characters_))
            fail("LC_CTYPE: case table", "other characters", "those of the class table");
        double growth = 1.0;
        for_each_character(*file_.cases, [&](const byte_sequence &bytes, const unsigned char *v) {
            const std::uint16_t index = value16(v);
            if (index == 0) return;
            if (index > file_.pairs.size())
                fail("LC_CTYPE: case table", fmt::format("index {}", index),
                     fmt::format("at most {}", file_.pairs.size()));
            const auto &[upper, lower] = file_.pairs[index - 1];
            for (std::uint32_t value : {upper, lower})
                growth = std::max(growth,
                                  static_cast<double>(byte_count(value, file_.classes->shortest)) /
                                      bytes.length);
        });
        for (const auto &[upper, lower] : file_.pairs)
            for (std::uint32_t value : {upper, lower})
                if (value != 0 && !characters_.contains_value(value))
                    fail("LC_CTYPE: case pairs", fmt::format("{:x}", value), "a character");
        if (file_.growth < growth)
            fail("LC_CTYPE: case growth", fmt::format("{}", file_.growth),
                 fmt::format("at least {}", growth));
    }

    void check_collate() const {
        const lco_collation &c = file_.collate;
        const character_set keys(*c.table);
        if (!keys.includes(characters_))
            fail("LC_COLLATE: index table", "characters missing", "all of the class table");
        if (c.passes.empty()) fail("LC_COLLATE", "no passes", "some, or order by value");
        for_each_character(*c.table, [&](const byte_sequence &, const unsigned char *value) {
            check_index(value16(value));
        });
        check_elements(keys);
        for (const auto &expansion : c.expansions)
            check_values("LC_COLLATE: expansions", keys, expansion);
        const auto indexes = indexes_of_expansions();
        for (const lco_pass &pass : c.passes)
            for (std::uint16_t weight : pass.weights) check_weight(weight, pass, indexes);
    }
    // Order by value needs no tables.
    void check_code_order() const {
        const lco_collation &c = file_.collate;
        if (c.index_count != 0 || !c.passes.empty() || !c.elements.empty() || !c.expansions.empty())
            fail("LC_COLLATE", "tables besides order by value", "one of them");
    }
    void check_index(std::uint16_t index) const {
        if (index >= file_.collate.index_count)
            fail("LC_COLLATE: index table", fmt::format("index {}", index),
                 fmt::format("below {}", file_.collate.index_count));
    }
    void check_values(std::string_view place, const character_set &keys,
                      const std::vector<std::uint32_t> &values) const {
        for (std::uint32_t value : values)
            if (!keys.contains_value(value))
                fail(place, fmt::format("{:x}", value), "a character of the index table");
    }
    // The first element that matches a text is taken, so that none may stand behind its own
    // beginning.
    void check_elements(const character_set &keys) const {
        std::set<std::vector<std::uint32_t>> before;
        for (const lco_element &element : file_.collate.elements) {
            check_index(element.index);
            check_values("LC_COLLATE: elements", keys, element.values);
            for (std::vector<std::uint32_t> part = element.values; !part.empty(); part.pop_back())
                if (before.contains(part))
                    fail("LC_COLLATE: elements",
                         fmt::format("{:x} behind {:x}", fmt::join(element.values, " "),
                                     fmt::join(part, " ")),
                         "the longer one first");
            before.insert(element.values);
        }
    }
    // The collation index of every value that an expansion consists of.
    std::unordered_map<std::uint32_t, std::uint16_t> indexes_of_expansions() const {
        std::unordered_map<std::uint32_t, std::uint16_t> indexes;
        for (const auto &expansion : file_.collate.expansions)
            for (std::uint32_t value : expansion) indexes.emplace(value, 0);
        for_each_character(*file_.collate.table, [&](const byte_sequence &bytes, const auto *v) {
            const auto wanted = indexes.find(bytes.value);
            if (wanted != indexes.end()) wanted->second = value16(v);
        });
        return indexes;
    }
    void check_weight(std::uint16_t weight, const lco_pass &pass,
                      const std::unordered_map<std::uint32_t, std::uint16_t> &indexes) const {
        const int value = weight & 0x3FFF;
        const lco_collation &c = file_.collate;
        if (!(weight & 0x4000)) {
            if (value < 1 || value > c.max_weight)
                fail("LC_COLLATE: weights", std::to_string(value),
                     fmt::format("1 to {}", c.max_weight));
            return;
        }
        if (value >= static_cast<int>(c.expansions.size()))
            fail("LC_COLLATE: weights", fmt::format("expansion {}", value),
                 fmt::format("below {}", c.expansions.size()));
        for (std::uint32_t part : c.expansions[static_cast<std::size_t>(value)])
            if (pass.weights[indexes.at(part)] & 0x4000)
                fail("LC_COLLATE: expansions", fmt::format("{:x}, which expands again", part),
                     "characters with weights of their own");
    }

    void check_item(const lco_item &item) const {
        const std::string place = item.section + ": " + item.name;
        for (const std::string &text : item.texts)
            if (item.form != lco_item::shape::calendar && !is_text(text))
                fail(place, "bytes that are no text of the code set", "characters");
        if (item.form == lco_item::shape::grouping) check_grouping(place, item.numbers);
    }
    void check_grouping(const std::string &place, const std::vector<int> &sizes) const {
        for (std::size_t i = 0; i < sizes.size(); ++i)
            if (sizes[i] == 0 || (sizes[i] < 0 && (i == 0 || i + 1 != sizes.size())))
                fail(place, std::to_string(sizes[i]), "sizes, of which the last may be -1");
    }
    const std::vector<std::string> &texts_of(std::string_view name) const {
        return std::ranges::find(file_.items, name, &lco_item::name)->texts;
    }
    // A locale whose source has no LC_TIME has no names.
    void check_months() const {
        const std::string &calendar = texts_of("calendar").front();
        const std::size_t months = row_of(*find_calendar(calendar)).months;
        for (const char *list : {"abmon", "mon"})
            if (const std::size_t count = texts_of(list).size(); count != months && count != 0)
                fail(fmt::format("LC_TIME: {}", list), fmt::format("{} names", count),
                     fmt::format("{}, as the {} calendar has", months, calendar));
    }
    bool is_text(std::string_view text) const {
        byte_sequence next;
        for (char c : text) {
            if (next.length == 4) return false;
            next = {next.value << 8 | static_cast<unsigned char>(c),
                    static_cast<std::uint8_t>(next.length + 1)};
            if (characters_.contains(next)) next = {};
        }
        return next.length == 0;
    }

    const std::filesystem::path &path_;
    const name_resolver &resolve_;
    lco_file file_;
    character_set characters_;
};

} // namespace

std::string failure_of(const void *handle) {
    const std::int32_t number = *static_cast<const std::int32_t *>(handle);
    return fmt::format("error {} ({})", number, vel_strerror(number));
}

void check_lco(const std::filesystem::path &path, const name_resolver &resolve) {
    lco_checker(path, resolve).check();
}

void load_lco(const std::filesystem::path &path) {
    const std::string directory = path.has_parent_path() ? path.parent_path().string() : ".";
    vel_locale *locale = nullptr;
    const std::int32_t result =
        vel_lc_load(&locale, path.filename().string().c_str(), -1, directory.c_str());
    const std::string failure = result == 0 ? "" : failure_of(locale);
    vel_lc_unload(locale);
    if (result != 0)
        throw tool_error("{}: found {} when the library loads it, expected a locale", path.string(),
                         failure);
}

} // namespace velc
