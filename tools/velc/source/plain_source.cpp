#include <algorithm>

#include "velc/source/categories.h"

namespace velc {

namespace {

using ident_field = keyword<identification>;
using message_field = keyword<messages>;

// category := 'category' string ';' word
void take_category(lexer &in, identification &to) {
    const std::u32string standard = in.text(in.take());
    in.expect(token_kind::semicolon, "';' and the name of a category");
    to.categories.emplace_back(standard, in.name(in.take()));
}

constexpr std::array ident_keywords = {
    ident_field{"title", take_loose_text<identification, &identification::title>},
    ident_field{"source", take_loose_text<identification, &identification::source>},
    ident_field{"address", take_loose_text<identification, &identification::address>},
    ident_field{"contact", take_loose_text<identification, &identification::contact>},
    ident_field{"email", take_loose_text<identification, &identification::email>},
    ident_field{"tel", take_loose_text<identification, &identification::tel>},
    ident_field{"fax", take_loose_text<identification, &identification::fax>},
    ident_field{"language", take_loose_text<identification, &identification::language>},
    ident_field{"territory", take_loose_text<identification, &identification::territory>},
    ident_field{"audience", take_loose_text<identification, &identification::audience>},
    ident_field{"application", take_loose_text<identification, &identification::application>},
    ident_field{"abbreviation", take_loose_text<identification, &identification::abbreviation>},
    ident_field{"revision", take_loose_text<identification, &identification::revision>},
    ident_field{"date", take_loose_text<identification, &identification::date>},
    ident_field{"category", take_category, true},
};

constexpr std::array message_keywords = {
    message_field{"yesexpr", take_text<messages, &messages::yesexpr>},
    message_field{"noexpr", take_text<messages, &messages::noexpr>},
    message_field{"yesstr", take_text<messages, &messages::yesstr>},
    message_field{"nostr", take_text<messages, &messages::nostr>},
};

// Categories of which only the form is checked.
struct skipped_category {
    std::string_view name;
    std::array<std::string_view, 12> keywords;
};

constexpr skipped_category skipped[] = {
    {"LC_PAPER", {"height", "width"}},
    {"LC_NAME", {"name_fmt", "name_gen", "name_mr", "name_mrs", "name_miss", "name_ms"}},
    {"LC_ADDRESS",
     {"postal_fmt", "country_name", "country_post", "country_ab2", "country_ab3", "country_num",
      "country_car", "country_isbn", "lang_name", "lang_ab", "lang_term", "lang_lib"}},
    {"LC_TELEPHONE", {"tel_int_fmt", "tel_dom_fmt", "int_select", "int_prefix"}},
    {"LC_MEASUREMENT", {"measurement"}},
};

// value := string | number
void check_value(lexer &in) {
    const token t = in.take();
    if (t.kind == token_kind::string)
        in.text(t);
    else
        in.number(t);
}

} // namespace

section<identification> read_identification(lexer &in) {
    return read_keyword_section(in, "LC_IDENTIFICATION", ident_keywords);
}

section<messages> read_messages(lexer &in) {
    return read_keyword_section(in, "LC_MESSAGES", message_keywords);
}

// section := { copy | keyword value { ';' value } } 'END' category
bool skip_category(lexer &in, std::string_view category) {
    const auto which = std::ranges::find(skipped, category, &skipped_category::name);
    if (which == std::end(skipped)) return false;
    while (next_in_section(in, category)) {
        if (is_copy(in)) {
            take_copy(in);
            continue;
        }
        const token head = in.expect(token_kind::word, "a keyword");
        if (std::ranges::find(which->keywords, head.text) == which->keywords.end())
            in.fail(head, fmt::format("a keyword of {}", category));
        take_list(in, [&] { check_value(in); });
        in.expect_end();
    }
    return true;
}

} // namespace velc
