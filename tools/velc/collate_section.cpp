#include "velc/collate_section.h"

#include <algorithm>

#include "velc/byte_table.h"
#include "velc/collate_expansions.h"
#include "velc/collate_indexes.h"
#include "velc/object_text.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr const char *table_kind = "as_specified\n";
constexpr const char *thai_kind = "thai_smo\n";

// No characters, no passes, no elements, no expansions, and the flag that says: by value.
std::string code_order() {
    std::string text = table_kind;
    byte_table(0).append_to(text);
    return text + "0 0 0 0 0 1\n";
}

void append_values(std::string &text, const std::vector<std::uint32_t> &values) {
    text += fmt::format("{} ", values.size());
    for (const std::uint32_t value : values) append_wide(text, value);
}

// What characters without a place take of the first pass: a weight for each value that cannot be
// told apart by position, and one for all others.
constexpr std::uint32_t undefined_weights = least_positional_value + 1;

// The last pass of a collation without ties. Values that a position cannot tell apart, and
// elements, which have none, get weights of their own.
struct tie_weights {
    static constexpr std::uint16_t characters =
        (first_weight + least_positional_value) | positional_bit;
    static constexpr std::uint16_t first_element = first_weight + least_positional_value + 1;

    static std::uint16_t of_value(std::uint32_t value) {
        return value < least_positional_value ? static_cast<std::uint16_t>(first_weight + value)
                                              : characters;
    }
};

class collate_writer {
public:
    collate_writer(const collate_order &order, const charmap &codeset,
                   const collate_options &options)
        : codeset_(codeset), options_(options), backward_(order.backward()), items_(order, codeset),
          lowest_(options.undefined == undefined_order::as_lowest ? items_.choose_lowest() : 0),
          numbers_(number_passes()), expansions_(items_, numbers_, backward_, codeset) {
        if (passes() > most_passes)
            throw tool_error("LC_COLLATE: found {} passes, expected at most {}", passes(),
                             most_passes);
    }

    collate_section write() {
        index_undefined();
        index_items();
        index_pseudo_characters();
        collate_section section{table_kind, {}};
        append_table(section.text);
        append_counts(section.text);
        for (std::size_t pass = 0; pass < passes(); ++pass) {
            section.text += pass < backward_.size() && backward_[pass] ? "2\n" : "1\n";
            rows_.append_pass(section.text, pass);
        }
        append_elements(section.text);
        for (const auto &values : expansions_.all()) {
            append_values(section.text, values);
            section.text += '\n';
        }
        return section;
    }

    const collate_items &items() const { return items_; }
    // The passes whose weights were too many.
    const std::vector<std::size_t> &simplified() const { return simplified_; }

private:
    std::size_t passes() const { return items_.passes() + options_.tie; }

    std::vector<pass_numbers> number_passes() {
        std::vector<pass_numbers> numbers;
        for (std::size_t pass = 0; pass < items_.passes(); ++pass) {
            const std::uint32_t most = largest_weight - (pass == 0 ? undefined_weights : 0);
            numbers.push_back(number_pass(items_, pass));
            if (numbers.back().last <= most) continue;
            numbers.back() = number_simplified(items_, pass);
            simplified_.push_back(pass);
            if (const std::uint32_t last = numbers.back().last; last > most)
                throw tool_error("LC_COLLATE: found {} weights in pass {}, expected at most {}",
                                 last - ignored_weight, pass + 1, most - ignored_weight);
        }
        return numbers;
    }

    weight_row empty_row() const {
        weight_row row{};
        std::fill_n(row.begin(), passes(), ignored_weight);
        return row;
    }

    // The weights of a character without a place: behind everything in the first pass, and ignored
    // in the others.
    weight_row undefined_row(std::uint32_t value) const {
        const std::uint32_t behind = numbers_[0].last + 1;
        weight_row row = empty_row();
        row[0] = static_cast<std::uint16_t>(
            value < least_positional_value ? behind + value
                                           : (behind + least_positional_value) | positional_bit);
        if (options_.tie) row[items_.passes()] = tie_weights::of_value(value);
        return row;
    }

    weight_row row_of(std::size_t item) {
        weight_row row{};
        for (std::size_t pass = 0; pass < items_.passes(); ++pass)
            row[pass] = expansions_.word(item, pass);
        if (options_.tie)
            row[items_.passes()] = items_.all()[item].is_element()
                                       ? next_element_tie_++
                                       : tie_weights::of_value(items_.all()[item].bytes.value);
        return row;
    }

    // What the table holds for everything that is not inserted with another index: 0, so that it is
    // the first row, unless characters without a place are to be like the lowest that has one.
    void index_undefined() {
        index_by_code_.assign(last_code_point + 1, 0);
        if (options_.undefined == undefined_order::behind_all || items_.all().empty()) {
            undefined_ = rows_.index_of(undefined_row(least_positional_value));
            return;
        }
        weight_row row = row_of(lowest_);
        if (options_.tie) row[items_.passes()] = tie_weights::characters;
        undefined_ = rows_.index_of(row);
    }

    void index_items() {
        std::vector<bool> has_place(last_code_point + 1, false);
        for (std::size_t i = 0; i < items_.all().size(); ++i) {
            const std::uint16_t index = rows_.index_of(row_of(i));
            if (items_.all()[i].is_element()) {
                element_indexes_.push_back(index);
                continue;
            }
            index_by_code_[items_.all()[i].code] = index;
            has_place[items_.all()[i].code] = true;
        }
        if (options_.undefined == undefined_order::as_lowest) return;
        for (std::uint32_t value = 0; value < least_positional_value; ++value)
            if (const charmap_entry *entry = codeset_.find(byte_sequence{value, 1});
                entry && !has_place[entry->code])
                index_by_code_[entry->code] = rows_.index_of(undefined_row(value));
    }

    // A borrowed character keeps its weights where the made-up one may weigh anything.
    void index_pseudo_characters() {
        for (const pseudo_character &one : expansions_.pseudo_characters()) {
            weight_row row = empty_row();
            const charmap_entry *borrowed = codeset_.find(one.bytes);
            if (borrowed) row = rows_[index_by_code_[borrowed->code]];
            for (std::size_t pass = 0; pass < items_.passes(); ++pass)
                if (one.words[pass] != 0) row[pass] = one.words[pass];
            const std::uint16_t index = rows_.index_of(row);
            if (borrowed)
                index_by_code_[borrowed->code] = index;
            else
                pseudo_indexes_.emplace_back(one.bytes, index);
        }
    }

    void append_table(std::string &text) const {
        byte_table table(undefined_);
        insert_all(table, codeset_,
                   [&](const charmap_entry &entry) { return index_by_code_[entry.code]; });
        for (const auto &[bytes, index] : pseudo_indexes_) table.insert(bytes, index);
        table.append_to(text);
    }

    void append_counts(std::string &text) const {
        std::uint32_t largest = numbers_[0].last + undefined_weights;
        for (const pass_numbers &pass : numbers_) largest = std::max(largest, pass.last);
        if (options_.tie) largest = std::max<std::uint32_t>(largest, next_element_tie_);
        text += fmt::format("{} {} {} {} {} 0\n", passes(), rows_.size(), largest,
                            element_indexes_.size(), expansions_.all().size());
    }

    void append_elements(std::string &text) const {
        std::size_t next = 0;
        for (const collate_items::item &item : items_.all()) {
            if (!item.is_element()) continue;
            append_values(text, item.values);
            append_hex16(text, element_indexes_[next++]);
            text += '\n';
        }
    }

    const charmap &codeset_;
    const collate_options &options_;
    const std::vector<bool> backward_;
    collate_items items_;
    std::size_t lowest_; // the character that stands for those without a place
    std::vector<std::size_t> simplified_;
    std::vector<pass_numbers> numbers_;
    collate_expansions expansions_;
    weight_rows rows_;
    std::uint16_t undefined_ = 0;
    std::uint16_t next_element_tie_ = tie_weights::first_element;
    std::vector<std::uint16_t> index_by_code_;
    std::vector<std::uint16_t> element_indexes_;
    std::vector<std::pair<byte_sequence, std::uint16_t>> pseudo_indexes_;
};

std::vector<std::string> warnings_of(const collate_writer &from, const symbol_table &names) {
    std::vector<std::string> warnings;
    for (const symbol_id symbol : from.items().unplaced())
        warnings.push_back(
            fmt::format("the symbol <{}> has no place, it weighs nothing", names.name(symbol)));
    std::ranges::sort(warnings);
    for (const std::size_t pass : from.simplified())
        warnings.push_back(fmt::format("pass {} has more than {} weights: rare ideographs compare "
                                       "by value behind the common ones",
                                       pass + 1, largest_weight - ignored_weight));
    return warnings;
}

} // namespace

collate_section write_collate(const collation *order, const charmap &codeset,
                              const symbol_table &names, const collate_options &options) {
    if (options.thai) return {thai_kind, {}};
    if (!order || order->codepoint_order) return {code_order(), {}};
    collate_writer writer(resolve_order(*order, names), codeset, options);
    collate_section section = writer.write();
    section.warnings = warnings_of(writer, names);
    return section;
}

std::string collate_key(const collation *order, const collate_options &options) {
    std::string key =
        fmt::format("{} {} {}", static_cast<int>(options.undefined), options.tie, options.thai);
    if (!order || order->codepoint_order) return key;
    for (const collation::part &part : order->parts)
        key += fmt::format("\n{} {} {}", part.source->file, part.first, part.last);
    return key + "\nend";
}

} // namespace velc
