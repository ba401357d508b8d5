#include <algorithm>

#include "velc/source/categories.h"
#include "velc/source/ctype_parts.h"

namespace velc {

namespace {

constexpr auto standard_classes =
    std::to_array<std::string_view>({"upper", "lower", "alpha", "digit", "space", "cntrl", "punct",
                                     "graph", "print", "xdigit", "blank"});
constexpr auto standard_maps = std::to_array<std::string_view>({"toupper", "tolower"});

class ctype_reader {
public:
    explicit ctype_reader(lexer &in) : in_(in) { reset(); }

    section<ctype> read();

private:
    void reset();
    void statement();
    bool special(std::string_view keyword);
    void take_class_names();
    void take_map_names();
    void take_class(const std::string &name);
    void take_map(const std::string &name);
    void take_outdigits();
    void take_width();
    std::string take_quoted_or_bare_name();
    code_range take_range();
    code_pair take_pair();

    void translit_block();
    void translit_rule_line();
    void take_include();
    std::u32string take_replacement();

    lexer &in_;
    std::shared_ptr<ctype> own_;
    std::vector<std::string> class_names_, map_names_;
    bool wrote_ = false;
};

void ctype_reader::reset() {
    own_ = std::make_shared<ctype>();
    class_names_.assign(standard_classes.begin(), standard_classes.end());
    map_names_.assign(standard_maps.begin(), standard_maps.end());
    wrote_ = false;
}

// ctype := { copy | classes | maps | outdigit | translit } 'END' 'LC_CTYPE'
section<ctype> ctype_reader::read() {
    section<ctype> found;
    found.line = in_.line();
    while (next_in_section(in_, "LC_CTYPE")) {
        if (is_copy(in_)) {
            found.copy_line = in_.line();
            found.copy_from = take_copy(in_);
            reset();
        } else {
            wrote_ = true;
            statement();
        }
    }
    std::ranges::reverse(own_->translit.rules); // of equal rules the last one counts
    settle(*own_);
    if (wrote_ || found.copy_line == 0) found.own = std::move(own_);
    return found;
}

void ctype_reader::statement() {
    const token head = in_.expect(token_kind::word, "a keyword of LC_CTYPE");
    const std::string keyword = in_.name(head);
    if (std::ranges::find(class_names_, keyword) != class_names_.end())
        take_class(keyword);
    else if (std::ranges::find(map_names_, keyword) != map_names_.end())
        take_map(keyword);
    else if (!special(keyword))
        in_.fail(head, "a keyword or a declared class of LC_CTYPE");
    in_.expect_end();
}

bool ctype_reader::special(std::string_view keyword) {
    struct row {
        std::string_view keyword;
        void (ctype_reader::*read)();
    };
    static constexpr row rows[] = {
        {"charclass", &ctype_reader::take_class_names},
        {"charconv", &ctype_reader::take_map_names},
        {"outdigit", &ctype_reader::take_outdigits},
        {"width", &ctype_reader::take_width},
        {"translit_start", &ctype_reader::translit_block},
    };
    for (const row &r : rows)
        if (r.keyword == keyword) {
            (this->*r.read)();
            return true;
        }
    if (keyword != "class" && keyword != "map") return false;
    const std::string name = take_quoted_or_bare_name();
    in_.expect(token_kind::semicolon, "';' and the members");
    keyword == "class" ? take_class(name) : take_map(name);
    return true;
}

std::string ctype_reader::take_quoted_or_bare_name() {
    const token t = in_.take();
    if (t.kind == token_kind::string) return to_utf8(in_.text(t));
    if (t.kind != token_kind::word) in_.fail(t, "a name");
    return in_.name(t);
}

// class-names := 'charclass' name { ';' name }
void ctype_reader::take_class_names() {
    take_list(in_, [&] { class_names_.push_back(take_quoted_or_bare_name()); });
}

// map-names := 'charconv' name { ';' name }
void ctype_reader::take_map_names() {
    take_list(in_, [&] { map_names_.push_back(take_quoted_or_bare_name()); });
}

// range := character [ '..' character ]
code_range ctype_reader::take_range() {
    const char32_t first = in_.character(in_.take());
    if (in_.peek().kind != token_kind::ellipsis) return {first, first};
    const token dots = in_.take();
    if (dots.text != ".." || in_.peek().kind == token_kind::open)
        in_.fail(dots, "'..' and the last character of the range");
    const token end = in_.take();
    const char32_t last = in_.character(end);
    if (last < first) in_.fail(end, "a character not below " + code_point_name(first));
    return {first, last};
}

// class := name range { ';' range }
void ctype_reader::take_class(const std::string &name) {
    char_class &to = class_named(*own_, name);
    take_list(in_, [&] { to.ranges.push_back(take_range()); });
}

// pair := '(' character ',' character ')'
code_pair ctype_reader::take_pair() {
    in_.expect(token_kind::open, "'('");
    const char32_t from = in_.character(in_.take());
    in_.expect(token_kind::comma, "','");
    const char32_t to = in_.character(in_.take());
    in_.expect(token_kind::close, "')'");
    return {from, to};
}

// map := name pair { ';' pair }
void ctype_reader::take_map(const std::string &name) {
    char_map &to = map_named(*own_, name);
    take_list(in_, [&] { to.pairs.push_back(take_pair()); });
}

// outdigits := 'outdigit' (range | string) { ';' (range | string) }
void ctype_reader::take_outdigits() {
    const std::uint32_t line = in_.line();
    text_list digits;
    take_list(in_, [&] {
        if (in_.peek().kind == token_kind::string) {
            digits.push_back(in_.text(in_.take()));
            return;
        }
        const code_range r = take_range();
        for (char32_t c = r.first; c <= r.last; ++c) digits.emplace_back(1, c);
    });
    if (digits.size() != 10)
        in_.fail_at(line,
                    fmt::format("found {} digits after outdigit, expected 10", digits.size()));
    own_->outdigits = std::move(digits);
}

// width := 'width' anything
void ctype_reader::take_width() {
    in_.warn(warning_kind::not_kept, in_.line(), "column widths are taken from the charmap");
    while (!in_.at_end()) in_.take();
}

// translit := 'translit_start' { include | default | rule } 'translit_end'
void ctype_reader::translit_block() {
    const std::uint32_t start = in_.line();
    in_.expect_end();
    for (;;) {
        if (!in_.next()) in_.fail_at(start, "found no translit_end, expected one");
        const token &head = in_.peek();
        const bool is_word = head.kind == token_kind::word;
        if (is_word && head.text == "translit_end") break;
        if (is_word && head.text == "END") in_.fail(head, "translit_end");
        if (is_word && head.text == "include") {
            take_include();
        } else if (is_word && head.text == "default_missing") {
            in_.take();
            take_list(in_, [&] { own_->translit.default_missing.push_back(take_replacement()); });
        } else {
            translit_rule_line();
        }
        in_.expect_end();
    }
    in_.take();
}

// include := 'include' string ';' string
void ctype_reader::take_include() {
    in_.take();
    own_->translit.includes.push_back(to_utf8(in_.text(in_.take())));
    if (in_.accept(token_kind::semicolon)) in_.text(in_.take());
}

// replacement := string | character { character }, without blanks between them
std::u32string ctype_reader::take_replacement() {
    token t = in_.take();
    if (t.kind == token_kind::string) return in_.text(t);
    std::u32string characters(1, in_.character(t));
    while (in_.touches_next(t)) characters += in_.character(t = in_.take());
    return characters;
}

// rule := replacement replacement { ';' replacement }
void ctype_reader::translit_rule_line() {
    translit_rule rule;
    const token head = in_.peek();
    rule.from = take_replacement();
    if (rule.from.empty()) in_.fail(head, "a character to be replaced");
    take_list(in_, [&] { rule.to.push_back(take_replacement()); });
    own_->translit.rules.push_back(std::move(rule));
}

} // namespace

section<ctype> read_ctype(lexer &in) {
    return ctype_reader(in).read();
}

} // namespace velc
