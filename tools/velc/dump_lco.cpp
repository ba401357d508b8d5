#include <algorithm>
#include <array>
#include <map>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "velc/dump.h"

namespace velc {

namespace {

constexpr std::array<const char *, 11> class_names = {"upper", "lower",  "alpha", "digit",
                                                      "space", "cntrl",  "punct", "graph",
                                                      "print", "xdigit", "blank"};

std::string row(std::string_view name, std::string_view value) {
    return fmt::format("  {:<20} {}\n", name, value);
}

class lco_dumper {
public:
    lco_dumper(const lco_file &file, const text_decoder &decoder, bool tables)
        : file_(file), decoder_(decoder), tables_(tables) {}

    std::string dump() {
        out_ = dump_head(file_.head);
        out_ += fmt::format("\ncode set\n{}", row("name", file_.codeset));
        ctype();
        collate();
        items();
        return std::move(out_);
    }

private:
    void ctype() {
        out_ += "\nLC_CTYPE\n" + row("class table", table_summary(*file_.classes));
        std::map<std::uint16_t, std::size_t> masks;
        for_each_character(*file_.classes, [&](const byte_sequence &, const unsigned char *value) {
            ++masks[value16(value)];
        });
        out_ += row("masks", fmt::format("{} different", masks.size()));
        const auto members = [&](int bit) {
            std::size_t count = 0;
            for (const auto &[mask, characters] : masks)
                if (mask >> bit & 1) count += characters;
            return fmt::format("{} characters", count);
        };
        for (std::size_t bit = 0; bit < class_names.size(); ++bit)
            out_ += row(class_names[bit], members(static_cast<int>(bit)));
        for (const auto &[number, name] : file_.own_classes)
            out_ += row(name, fmt::format("{}, class {}", members(11 + number), number));
        out_ += row("case table", table_summary(*file_.cases));
        out_ += row("case pairs", std::to_string(file_.pairs.size()));
        out_ += row("case growth", fmt::format("{}", file_.growth));
        if (tables_) characters();
    }

    void characters() {
        std::vector<std::uint16_t> cases;
        for_each_character(*file_.cases, [&](const byte_sequence &, const unsigned char *value) {
            cases.push_back(value16(value));
        });
        std::size_t at = 0;
        for_each_character(*file_.classes, [&](const byte_sequence &bytes,
                                               const unsigned char *value) {
            const std::uint16_t index = at < cases.size() ? cases[at] : 0;
            ++at;
            out_ += fmt::format("  {:<12} {:<14}{}{}\n", hex_bytes(bytes), decoder_.describe(bytes),
                                classes_of(value16(value)), case_of(index));
        });
    }
    std::string classes_of(std::uint16_t mask) const {
        std::string names;
        for (std::size_t bit = 0; bit < class_names.size(); ++bit)
            if (mask >> bit & 1) names += fmt::format(" {}", class_names[bit]);
        for (const auto &[number, name] : file_.own_classes)
            if (mask >> (11 + number) & 1) names += " " + name;
        return names;
    }
    std::string case_of(std::uint16_t index) const {
        if (index == 0 || index > file_.pairs.size()) return {};
        const auto &[upper, lower] = file_.pairs[index - 1];
        return fmt::format(" [{:x} {:x}]", upper, lower);
    }

    void collate() {
        const lco_collation &c = file_.collate;
        out_ += "\nLC_COLLATE\n";
        if (c.thai) {
            out_ += row("kind", "Thai ordering");
            return;
        }
        out_ += row("kind", c.code_order ? "by character value" : "by tables");
        out_ += row("index table", table_summary(*c.table));
        out_ += row("indexes", std::to_string(c.index_count));
        out_ += row("largest weight", std::to_string(c.max_weight));
        out_ += row("elements", std::to_string(c.elements.size()));
        out_ += row("expansions", std::to_string(c.expansions.size()));
        for (std::size_t i = 0; i < c.passes.size(); ++i)
            out_ += row(fmt::format("pass {}", i + 1), pass_summary(c.passes[i]));
        if (tables_ && !c.passes.empty()) weights();
    }
    static std::string pass_summary(const lco_pass &pass) {
        const auto count = [&](auto test) { return std::ranges::count_if(pass.weights, test); };
        return fmt::format("{}; {} ignored, {} expanded, {} positional",
                           pass.direction == 2 ? "backward" : "forward",
                           count([](std::uint16_t w) { return w == 1; }),
                           count([](std::uint16_t w) { return (w & 0x4000) != 0; }),
                           count([](std::uint16_t w) { return (w & 0x8000) != 0; }));
    }
    void weights() {
        const lco_collation &c = file_.collate;
        for_each_character(*c.table, [&](const byte_sequence &bytes, const unsigned char *value) {
            out_ += fmt::format("  {:<12} {:<14}{}\n", hex_bytes(bytes), decoder_.describe(bytes),
                                weights_of(value16(value)));
        });
        for (const lco_element &element : c.elements)
            out_ += fmt::format("  element {:x}{}\n", fmt::join(element.values, " "),
                                weights_of(element.index));
        for (std::size_t i = 0; i < c.expansions.size(); ++i)
            out_ += fmt::format("  expansion {:x}: {:x}\n", i, fmt::join(c.expansions[i], " "));
    }
    std::string weights_of(std::uint16_t index) const {
        std::string text = fmt::format(" #{}", index);
        for (const lco_pass &pass : file_.collate.passes)
            text +=
                index < pass.weights.size() ? fmt::format(" {:04x}", pass.weights[index]) : " -";
        return text;
    }

    void items() {
        std::string section;
        for (const lco_item &item : file_.items) {
            if (item.section != section) out_ += "\n" + item.section + "\n";
            section = item.section;
            out_ += row(item.name, value_of(item));
        }
    }
    std::string value_of(const lco_item &item) const {
        using shape = lco_item::shape;
        if (item.form == shape::calendar) return item.texts[0];
        if (item.form == shape::number)
            return item.numbers[0] == 127 ? "not given" : std::to_string(item.numbers[0]);
        if (item.form == shape::grouping)
            return item.numbers.empty() ? "none" : fmt::format("{}", fmt::join(item.numbers, ";"));
        std::string text;
        for (const std::string &one : item.texts)
            text += fmt::format("{}\"{}\"", text.empty() ? "" : ";", decoder_.decode(one));
        return text.empty() ? "none" : text;
    }

    const lco_file &file_;
    const text_decoder &decoder_;
    bool tables_;
    std::string out_;
};

} // namespace

std::string dump_head(const object_head &head) {
    static constexpr const char *kinds[] = {"locale object", "charmap object", "conversion object",
                                            "registry"};
    std::string text =
        fmt::format("{}, format version {}\n", kinds[static_cast<int>(head.kind)], head.version);
    for (const std::string &line : head.lines) text += fmt::format("  {}\n", line);
    return text;
}

std::string table_summary(const vel::vel_trie &table) {
    std::size_t count = 0;
    for_each_character(table, [&](const byte_sequence &, const unsigned char *) { ++count; });
    if (count == 0) return "no characters";
    return fmt::format("{} characters of {} to {} bytes; {} state tables, {} value pages", count,
                       table.shortest, table.longest, table.state_count, table.page_count);
}

std::string dump_lco(const lco_file &file, const text_decoder &decoder, bool tables) {
    return lco_dumper(file, decoder, tables).dump();
}

} // namespace velc
