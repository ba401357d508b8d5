#include "velc/source/categories.h"
#include "velc/source/symbol_range.h"

namespace velc {

namespace {

using step_kind = collate_source::step_kind;

class collate_reader {
public:
    collate_reader(lexer &in, symbol_table &symbols) : in_(in), symbols_(symbols) {
        to_->file = in.file();
    }

    std::shared_ptr<const collate_source> read();

private:
    bool keyword_statement();
    bool step_statement(std::string_view keyword);
    void add_step(step_kind kind, std::string name);
    void close_stretch();

    void collating_symbol();
    void collating_element();
    void script();
    void equivalence();
    void order_start();
    void order_end();
    void undefined();
    void reorder_after();
    void reorder_end();
    void reorder_sections();
    void codepoint_collation();
    void entry();

    collate_statement &add(collate_op op, symbol_id subject = no_symbol);
    symbol_id take_symbol(std::string_view what);
    collate_direction take_direction();
    void take_weights(collate_statement &s);
    collate_weight take_weight();
    void push_symbol_string(const token &t);

    lexer &in_;
    symbol_table &symbols_;
    std::shared_ptr<collate_source> to_ = std::make_shared<collate_source>();
    std::uint32_t stretch_ = 0; // first statement behind the last step
};

// collate := { step | keyword-statement | entry } 'END' 'LC_COLLATE'
std::shared_ptr<const collate_source> collate_reader::read() {
    while (next_in_section(in_, "LC_COLLATE")) {
        if (!keyword_statement()) entry();
        in_.expect_end();
    }
    close_stretch();
    return to_;
}

bool collate_reader::keyword_statement() {
    struct row {
        std::string_view keyword;
        void (collate_reader::*read)();
    };
    static constexpr row rows[] = {
        {"collating-symbol", &collate_reader::collating_symbol},
        {"collating-element", &collate_reader::collating_element},
        {"script", &collate_reader::script},
        {"symbol-equivalence", &collate_reader::equivalence},
        {"order_start", &collate_reader::order_start},
        {"order_end", &collate_reader::order_end},
        {"UNDEFINED", &collate_reader::undefined},
        {"reorder-after", &collate_reader::reorder_after},
        {"reorder-end", &collate_reader::reorder_end},
        {"reorder-sections-after", &collate_reader::reorder_sections},
        {"reorder-sections-end", &collate_reader::reorder_end},
        {"codepoint_collation", &collate_reader::codepoint_collation},
    };
    const token head = in_.peek();
    if (head.kind != token_kind::word) return false;
    for (const row &r : rows)
        if (r.keyword == head.text) {
            in_.take();
            (this->*r.read)();
            return true;
        }
    return step_statement(head.text);
}

// step := 'copy' string | 'include' string [';' string] | ('define' | 'undef' | 'ifdef' | 'ifndef')
//         word | 'else' | 'endif'
bool collate_reader::step_statement(std::string_view keyword) {
    struct row {
        std::string_view keyword;
        step_kind kind;
    };
    static constexpr row rows[] = {
        {"copy", step_kind::copy},      {"include", step_kind::include},
        {"define", step_kind::define},  {"undef", step_kind::undef},
        {"ifdef", step_kind::ifdef},    {"ifndef", step_kind::ifndef},
        {"else", step_kind::otherwise}, {"endif", step_kind::endif},
    };
    for (const row &r : rows) {
        if (r.keyword != keyword) continue;
        in_.take();
        std::string name;
        if (r.kind == step_kind::copy || r.kind == step_kind::include) {
            name = to_utf8(in_.text(in_.take()));
            if (in_.accept(token_kind::semicolon)) in_.text(in_.take());
        } else if (r.kind != step_kind::otherwise && r.kind != step_kind::endif) {
            name = in_.name(in_.expect(token_kind::word, "the name of a macro"));
        }
        add_step(r.kind, std::move(name));
        return true;
    }
    return false;
}

void collate_reader::close_stretch() {
    const auto last = static_cast<std::uint32_t>(to_->statements.size());
    if (last > stretch_)
        to_->steps.push_back(
            {step_kind::statements, to_->statements[stretch_].line, stretch_, last, {}});
    stretch_ = last;
}

void collate_reader::add_step(step_kind kind, std::string name) {
    close_stretch();
    to_->steps.push_back({kind, in_.line(), 0, 0, std::move(name)});
}

collate_statement &collate_reader::add(collate_op op, symbol_id subject) {
    return to_->statements.emplace_back(collate_statement{op, in_.line(), subject, 0, 0});
}

symbol_id collate_reader::take_symbol(std::string_view what) {
    return symbols_.intern(in_.name(in_.expect(token_kind::symbol, what)));
}

// collating-symbol := 'collating-symbol' symbol [ '..' symbol ]
void collate_reader::collating_symbol() {
    const token first = in_.expect(token_kind::symbol, "a symbol");
    if (in_.peek().kind != token_kind::ellipsis) {
        add(collate_op::symbol, symbols_.intern(in_.name(first)));
        return;
    }
    for (const std::string &name : take_symbol_range(in_, first))
        add(collate_op::symbol, symbols_.intern(name));
}

// collating-element := 'collating-element' symbol 'from' string
void collate_reader::collating_element() {
    collate_statement s = add(collate_op::element, take_symbol("the symbol of an element"));
    const token from = in_.take();
    if (from.text != "from") in_.fail(from, "'from'");
    s.first = static_cast<std::uint32_t>(to_->symbol_pool.size());
    for (char32_t c : in_.text(in_.take())) to_->symbol_pool.push_back(c);
    s.count = static_cast<std::uint32_t>(to_->symbol_pool.size()) - s.first;
    if (s.count < 2) in_.fail(from, "an element of two characters or more");
    to_->statements.back() = s;
}

// script := 'script' symbol
void collate_reader::script() {
    add(collate_op::script, take_symbol("the name of a section"));
}

// equivalence := 'symbol-equivalence' symbol symbol
void collate_reader::equivalence() {
    collate_statement &s = add(collate_op::equivalence, take_symbol("a symbol"));
    s.first = static_cast<std::uint32_t>(to_->symbol_pool.size());
    s.count = 1;
    to_->symbol_pool.push_back(take_symbol("a second symbol"));
}

// direction := ('forward' | 'backward' | 'position') { ',' ... }
collate_direction collate_reader::take_direction() {
    collate_direction d;
    do {
        const token t = in_.take();
        if (t.text == "position")
            d.position = true;
        else if (t.text == "backward")
            d.backward = true;
        else if (t.text != "forward")
            in_.fail(t, "'forward', 'backward' or 'position'");
    } while (in_.accept(token_kind::comma));
    return d;
}

// order-start := 'order_start' [ symbol ';' ] [ direction { ';' direction } ]
void collate_reader::order_start() {
    collate_statement s = add(collate_op::order_start);
    if (in_.peek().kind == token_kind::symbol) {
        s.subject = take_symbol("a section");
        if (!in_.at_end()) in_.expect(token_kind::semicolon, "';' and the directions");
    }
    s.first = static_cast<std::uint32_t>(to_->direction_pool.size());
    if (!in_.at_end()) take_list(in_, [&] { to_->direction_pool.push_back(take_direction()); });
    s.count = static_cast<std::uint32_t>(to_->direction_pool.size()) - s.first;
    to_->statements.back() = s;
}

void collate_reader::order_end() {
    add(collate_op::order_end);
}
void collate_reader::reorder_end() {
    add(collate_op::reorder_end);
}
void collate_reader::codepoint_collation() {
    to_->codepoint_order = true;
    add(collate_op::codepoint_order);
}

// undefined := 'UNDEFINED' [ weights ]
void collate_reader::undefined() {
    take_weights(add(collate_op::undefined));
}

// reorder-after := 'reorder-after' symbol
void collate_reader::reorder_after() {
    add(collate_op::reorder_after, take_symbol("the symbol to go behind"));
}

// reorder-sections := 'reorder-sections-after' symbol { ';' symbol }
void collate_reader::reorder_sections() {
    collate_statement &s = add(collate_op::reorder_sections_after, take_symbol("a section"));
    s.first = static_cast<std::uint32_t>(to_->symbol_pool.size());
    while (in_.accept(token_kind::semicolon)) to_->symbol_pool.push_back(take_symbol("a section"));
    s.count = static_cast<std::uint32_t>(to_->symbol_pool.size()) - s.first;
}

// entry := (symbol | character | symbol '..' symbol | '..') [ weights ]
void collate_reader::entry() {
    const token head = in_.take();
    if (head.kind == token_kind::ellipsis) {
        if (head.text != "..") in_.fail(head, "'..'; only hexadecimal ellipses are known");
        take_weights(add(collate_op::ellipsis));
        return;
    }
    if (head.kind == token_kind::word) {
        take_weights(add(collate_op::entry, in_.character(head)));
        return;
    }
    if (head.kind != token_kind::symbol) in_.fail(head, "a symbol or a keyword of LC_COLLATE");
    if (in_.peek().kind == token_kind::ellipsis && in_.peek(1).kind == token_kind::symbol) {
        for (const std::string &name : take_symbol_range(in_, head))
            add(collate_op::entry, symbols_.intern(name));
        return;
    }
    take_weights(add(collate_op::entry, symbols_.intern(in_.name(head))));
}

// weights := [ weight { ';' weight } ]
void collate_reader::take_weights(collate_statement &s) {
    s.first = static_cast<std::uint32_t>(to_->weight_pool.size());
    if (in_.at_end()) return;
    do to_->weight_pool.push_back(take_weight());
    while (in_.accept(token_kind::semicolon));
    s.count = static_cast<std::uint32_t>(to_->weight_pool.size()) - s.first;
}

// weight := symbol | character | string | 'IGNORE' | '..' | nothing
collate_weight collate_reader::take_weight() {
    const auto first = static_cast<std::uint32_t>(to_->symbol_pool.size());
    const token &ahead = in_.peek();
    if (ahead.kind == token_kind::end || ahead.kind == token_kind::semicolon) return {};
    const token t = in_.take();
    if (t.kind == token_kind::word && t.text == "IGNORE") return {weight_kind::ignore, 0, 0};
    if (t.kind == token_kind::ellipsis) {
        if (t.text != "..") in_.fail(t, "'..'; only hexadecimal ellipses are known");
        return {weight_kind::ellipsis, 0, 0};
    }
    if (t.kind == token_kind::string)
        push_symbol_string(t);
    else if (t.kind == token_kind::symbol)
        to_->symbol_pool.push_back(symbols_.intern(in_.name(t)));
    else
        to_->symbol_pool.push_back(in_.character(t));
    const auto count = to_->symbol_pool.size() - first;
    if (count == 0) return {weight_kind::ignore, 0, 0};
    if (count > 0xFFFF) in_.fail(t, "at most 65535 symbols in a weight");
    return {weight_kind::symbols, static_cast<std::uint16_t>(count), first};
}

void collate_reader::push_symbol_string(const token &t) {
    in_.walk_string(
        t, [&](char32_t code) { to_->symbol_pool.push_back(code); },
        [&](const std::string &name) { to_->symbol_pool.push_back(symbols_.intern(name)); });
}

} // namespace

std::shared_ptr<const collate_source> read_collate(lexer &in, symbol_table &symbols) {
    return collate_reader(in, symbols).read();
}

} // namespace velc
