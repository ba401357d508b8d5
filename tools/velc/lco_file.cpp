#include "velc/lco_file.h"

#include <array>

#include "velc/codesets.h"
#include "velc/source/calendars.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

using shape = lco_item::shape;

struct item_row {
    const char *section;
    const char *name;
    shape form;
    int count = 1;
};

// Everything behind COLLATE, in file order.
constexpr item_row item_rows[] = {
    {"LC_NUMERIC", "decimal_point", shape::text},
    {"LC_NUMERIC", "thousands_sep", shape::text},
    {"LC_NUMERIC", "grouping", shape::grouping},
    {"LC_NUMERIC", "positive_sign", shape::text},
    {"LC_NUMERIC", "negative_sign", shape::text},
    {"LC_MONETARY", "int_curr_symbol", shape::text},
    {"LC_MONETARY", "currency_symbol", shape::text},
    {"LC_MONETARY", "mon_decimal_point", shape::text},
    {"LC_MONETARY", "mon_thousands_sep", shape::text},
    {"LC_MONETARY", "mon_grouping", shape::grouping},
    {"LC_MONETARY", "positive_sign", shape::text},
    {"LC_MONETARY", "negative_sign", shape::text},
    {"LC_MONETARY", "int_frac_digits", shape::number},
    {"LC_MONETARY", "frac_digits", shape::number},
    {"LC_MONETARY", "p_cs_precedes", shape::number},
    {"LC_MONETARY", "p_sep_by_space", shape::number},
    {"LC_MONETARY", "n_cs_precedes", shape::number},
    {"LC_MONETARY", "n_sep_by_space", shape::number},
    {"LC_MONETARY", "p_sign_posn", shape::number},
    {"LC_MONETARY", "n_sign_posn", shape::number},
    {"LC_TIME", "calendar", shape::calendar},
    {"LC_TIME", "abday", shape::texts, 7},
    {"LC_TIME", "day", shape::texts, 7},
    {"LC_TIME", "abmon", shape::counted_texts},
    {"LC_TIME", "mon", shape::counted_texts},
    {"LC_TIME", "d_t_fmt", shape::text},
    {"LC_TIME", "d_fmt", shape::text},
    {"LC_TIME", "t_fmt", shape::text},
    {"LC_TIME", "am", shape::text},
    {"LC_TIME", "pm", shape::text},
    {"LC_TIME", "t_fmt_ampm", shape::text},
    {"LC_TIME", "era", shape::counted_texts},
    {"LC_TIME", "era_d_fmt", shape::text},
    {"LC_TIME", "era_t_fmt", shape::text},
    {"LC_TIME", "era_d_t_fmt", shape::text},
    {"LC_TIME", "alt_digits", shape::counted_texts},
    {"LC_MESSAGES", "yesexpr", shape::text},
    {"LC_MESSAGES", "noexpr", shape::text},
    {"LC_MESSAGES", "yesstr", shape::text},
    {"LC_MESSAGES", "nostr", shape::text},
};

constexpr int list_limit = 1000; // eras are the longest lists, with a few dozen
constexpr int most_group_sizes = 15;
constexpr int most_passes = 8;

class lco_reader {
public:
    explicit lco_reader(const std::filesystem::path &path) : in_(path) {}

    lco_file read() {
        lco_file file;
        file.head = in_.read_head();
        if (file.head.kind != object_kind::locale)
            in_.fail("another type of object", "FILE_TYPE=locale_object");
        in_.set_place("code set");
        file.codeset = in_.line();
        if (file.codeset.empty() || file.codeset.size() > longest_header_name)
            in_.fail(fmt::format("\"{}\"", file.codeset),
                     fmt::format("a name of 1 to {} characters", longest_header_name));
        read_ctype(file);
        read_collate(file.collate);
        read_items(file);
        in_.set_place("end");
        if (!in_.at_end()) in_.fail("more text", "the end of the file");
        return file;
    }

private:
    void marker(const char *section) {
        in_.set_place(section);
        (void)in_.at_end(); // what stands before a marker on its line is white space
        const std::string expected = fmt::format("### {}", section);
        if (const std::string line = in_.line(); line != expected)
            in_.fail(fmt::format("\"{}\"", line), expected);
    }

    void read_ctype(lco_file &file) {
        marker("LC_CTYPE");
        file.classes = in_.table16();
        for (int count = in_.integer(0, 31); count > 0; --count) {
            const int number = in_.integer(0, 31);
            file.own_classes.emplace_back(number, in_.word());
        }
        file.cases = in_.table16();
        for (int count = in_.integer(0, 65535); count > 0; --count) {
            const std::uint32_t upper = in_.hex(8);
            file.pairs.emplace_back(upper, in_.hex(8));
        }
        file.growth = in_.real();
    }

    void read_collate(lco_collation &collate) {
        marker("LC_COLLATE");
        const std::string kind = in_.line();
        collate.thai = kind == "thai_smo";
        if (collate.thai) return;
        if (kind != "as_specified")
            in_.fail(fmt::format("\"{}\"", kind), "as_specified or thai_smo");
        collate.table = in_.table16();
        const int passes = in_.integer(0, most_passes);
        collate.index_count = in_.integer(0, 65536);
        collate.max_weight = in_.integer(0, 0xFFFF);
        const int elements = in_.integer(0, 65536);
        const int expansions = in_.integer(0, 16384);
        collate.code_order = in_.integer(0, 1) != 0;
        for (int i = 0; i < passes; ++i) read_pass(collate);
        for (int i = 0; i < elements; ++i) {
            lco_element &element = collate.elements.emplace_back();
            element.values = wide_values();
            element.index = static_cast<std::uint16_t>(in_.hex(4));
        }
        for (int i = 0; i < expansions; ++i) collate.expansions.push_back(wide_values());
    }

    void read_pass(lco_collation &collate) {
        lco_pass &pass = collate.passes.emplace_back();
        pass.direction = in_.integer(1, 2);
        for (int i = 0; i < collate.index_count; ++i)
            pass.weights.push_back(static_cast<std::uint16_t>(in_.hex(4)));
    }

    std::vector<std::uint32_t> wide_values() {
        std::vector<std::uint32_t> values;
        for (int count = in_.integer(1, 255); count > 0; --count) values.push_back(in_.hex(8));
        return values;
    }

    void read_items(lco_file &file) {
        std::string_view section;
        for (const item_row &row : item_rows) {
            if (section != row.section) marker(row.section);
            section = row.section;
            in_.set_place(fmt::format("{}: {}", row.section, row.name));
            file.items.push_back(read_item(row));
        }
    }

    lco_item read_item(const item_row &row) {
        lco_item item{row.section, row.name, row.form, {}, {}};
        int count = row.count;
        switch (row.form) {
        case shape::counted_texts:
            count = in_.integer(0, list_limit);
            [[fallthrough]];
        case shape::text:
        case shape::texts:
            while (count-- > 0) item.texts.push_back(in_.text());
            break;
        case shape::grouping:
            for (count = in_.integer(0, most_group_sizes); count > 0; --count)
                item.numbers.push_back(in_.integer(-1, 127));
            break;
        case shape::number:
            item.numbers.push_back(in_.integer(0, 127));
            break;
        case shape::calendar:
            item.texts.push_back(in_.line());
            if (!find_calendar(item.texts[0]))
                in_.fail(fmt::format("\"{}\"", item.texts[0]), "a known calendar");
        }
        return item;
    }

    object_input in_;
};

} // namespace

lco_file read_lco(const std::filesystem::path &path) {
    return lco_reader(path).read();
}

} // namespace velc
