#include "velc/source/locale_source.h"

#include <set>

#include "velc/source/categories.h"
#include "velc/source/source_text.h"

namespace velc {

namespace {

struct section_reader {
    std::string_view category;
    void (*read)(lexer &in, locale_source &to, symbol_table &symbols);
};

constexpr section_reader section_readers[] = {
    {"LC_IDENTIFICATION",
     [](lexer &in, locale_source &to, symbol_table &) { to.ident = read_identification(in); }},
    {"LC_CTYPE", [](lexer &in, locale_source &to, symbol_table &) { to.ctype = read_ctype(in); }},
    {"LC_COLLATE", [](lexer &in, locale_source &to,
                      symbol_table &symbols) { to.collate = read_collate(in, symbols); }},
    {"LC_MONETARY",
     [](lexer &in, locale_source &to, symbol_table &) { to.monetary = read_monetary(in); }},
    {"LC_NUMERIC",
     [](lexer &in, locale_source &to, symbol_table &) { to.numeric = read_numeric(in); }},
    {"LC_TIME", [](lexer &in, locale_source &to, symbol_table &) { to.time = read_time(in); }},
    {"LC_MESSAGES",
     [](lexer &in, locale_source &to, symbol_table &) { to.messages = read_messages(in); }},
};

// section := category newline { statement } 'END' category
void read_section(lexer &in, locale_source &to, symbol_table &symbols) {
    const token head = in.take();
    in.expect_end();
    const std::string category(head.text);
    for (const section_reader &r : section_readers)
        if (r.category == category) return r.read(in, to, symbols);
    if (!skip_category(in, category)) in.fail(head, "the name of a category");
}

} // namespace

// locale := { header } { section }
locale_source parse_locale_source(std::string name, const std::string &path, std::string_view text,
                                  symbol_table &symbols) {
    locale_source found;
    found.name = std::move(name);
    found.file = path;
    lexer in(path, text);
    std::set<std::string, std::less<>> seen;
    while (in.next()) {
        const token &head = in.peek();
        if (head.kind == token_kind::word && head.text == "repertoiremap") continue;
        if (head.kind != token_kind::word) in.fail(head, "the name of a category");
        if (!seen.emplace(head.text).second) in.fail(head, "each category once in a file");
        read_section(in, found, symbols);
    }
    if (seen.empty()) in.fail_at(0, "found no category, expected at least one");
    found.warnings = std::move(in.warnings());
    return found;
}

locale_source read_locale_source(std::string name, const std::string &path, symbol_table &symbols) {
    const std::string text = read_source_text(path);
    return parse_locale_source(std::move(name), path, text, symbols);
}

} // namespace velc
