#include <charconv>

#include <fmt/format.h>

#include "velc/source/charmap.h"
#include "velc/source/source_text.h"

namespace velc {

namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::string_view irreversible = "%IRREVERSIBLE%";

// Reads a charmap line by line; the lines are simpler than those of locales, but many.
class charmap_reader {
public:
    charmap_reader(const std::string &path, std::string_view text) : text_(text) {
        parts_.file = path;
    }

    charmap read();

private:
    enum class where { head, characters, behind, widths };

    bool next_line();
    void line();
    void head_line();
    void alias_comment();
    void behind_line();
    void character_line();
    void width_line();
    void finish();

    void skip_blanks();
    std::string_view word();
    std::string bracketed(std::string_view what);
    bool dots();
    bool at_byte() const;
    std::uint32_t one_byte();
    byte_sequence bytes();
    int number();
    char32_t code_of(const std::string &name);

    void add(char32_t code, byte_sequence b, bool reversible);
    void add_range(char32_t first, char32_t last, byte_sequence b, bool reversible);
    void guess_escape();
    void warn(std::string_view text);
    [[noreturn]] void fail(std::string_view found, std::string_view expected) const;

    std::string_view text_, rest_;
    std::size_t at_ = 0;
    std::uint32_t line_ = 0;
    char comment_ = '#', escape_ = '\\';
    where where_ = where::head;
    bool ended_ = false, escape_given_ = false;
    charmap::parts parts_;
};

void charmap_reader::fail(std::string_view found, std::string_view expected) const {
    throw source_error({parts_.file, line_},
                       fmt::format("found {}, expected {}",
                                   found.empty() ? "the end of the line"
                                                 : fmt::format("'{}'", found.substr(0, 60)),
                                   expected));
}

void charmap_reader::warn(std::string_view text) {
    parts_.warnings.push_back({warning_kind::syntax, {parts_.file, line_}, std::string(text)});
}

bool charmap_reader::next_line() {
    if (at_ >= text_.size()) return false;
    std::size_t end = text_.find('\n', at_);
    if (end == text_.npos) end = text_.size();
    rest_ = text_.substr(at_, end - at_);
    at_ = end + 1;
    ++line_;
    return true;
}

// charmap := { head } [ 'CHARMAP' ] { character } 'END CHARMAP' [ 'WIDTH' { width } 'END WIDTH' ]
charmap charmap_reader::read() {
    while (next_line()) line();
    finish();
    return charmap(std::move(parts_));
}

void charmap_reader::line() {
    static constexpr void (charmap_reader::*readers[])() = {
        &charmap_reader::head_line, &charmap_reader::character_line, &charmap_reader::behind_line,
        &charmap_reader::width_line};
    if (rest_.find_first_not_of(blanks) == rest_.npos) return;
    const bool one_way = where_ == where::characters && rest_.starts_with(irreversible);
    if (rest_[0] == comment_ && !one_way) return alias_comment();
    (this->*readers[static_cast<int>(where_)])();
}

// alias := comment_char [ blank ] 'alias' name
void charmap_reader::alias_comment() {
    if (where_ != where::head) return;
    rest_.remove_prefix(1);
    if (word() != "alias") return;
    const std::string_view name = word();
    if (!name.empty()) parts_.aliases.push_back({std::string(name), line_});
}

// head := '<' name '>' value | 'CHARMAP'
void charmap_reader::head_line() {
    if (rest_[0] != '<') {
        const std::string_view head = word();
        if (head != "CHARMAP") fail(head, "CHARMAP or a declaration");
        where_ = where::characters;
        return;
    }
    const std::string_view whole = rest_;
    const std::string name = bracketed("a declaration");
    if (code_point_of_name(name)) {
        warn("the CHARMAP line is missing");
        where_ = where::characters;
        rest_ = whole;
        return character_line();
    }
    const std::string_view value = word();
    if (value.empty()) fail(value, fmt::format("the value of <{}>", name));
    if (name == "code_set_name") parts_.name = value;
    if (name == "escape_char") escape_ = value[0];
    if (name == "comment_char" || name == "comment") comment_ = value[0];
    if (name == "comment") warn("<comment> is taken as <comment_char>");
    escape_given_ |= name == "escape_char";
}

void charmap_reader::skip_blanks() {
    const std::size_t first = rest_.find_first_not_of(blanks);
    rest_.remove_prefix(first == rest_.npos ? rest_.size() : first);
}

std::string_view charmap_reader::word() {
    skip_blanks();
    const std::string_view found = rest_.substr(0, rest_.find_first_of(blanks));
    rest_.remove_prefix(found.size());
    return found;
}

std::string charmap_reader::bracketed(std::string_view what) {
    skip_blanks();
    if (!rest_.starts_with('<')) fail(rest_, what);
    std::string name;
    std::size_t at = 1;
    for (; at < rest_.size() && rest_[at] != '>'; ++at) {
        if (rest_[at] == escape_ && at + 1 < rest_.size()) ++at;
        name += rest_[at];
    }
    if (at >= rest_.size()) fail(rest_, "'>'");
    rest_.remove_prefix(at + 1);
    return name;
}

bool charmap_reader::dots() {
    const std::size_t count = std::min(rest_.find_first_not_of('.'), rest_.size());
    if (count == 0) return false;
    if (count != 2 && count != 3) fail(rest_, "'..' or '...'");
    rest_.remove_prefix(count);
    return true;
}

bool charmap_reader::at_byte() const {
    return rest_.size() > 1 && rest_[0] == escape_;
}

// byte := escape_char ( 'x' hex hex | 'd' digit digit [digit] | octal octal [octal] )
std::uint32_t charmap_reader::one_byte() {
    const char form = rest_[1];
    const int base = form == 'x' ? 16 : form == 'd' ? 10 : 8;
    const std::size_t skip = base == 8 ? 1 : 2;
    const std::string_view digits = rest_.substr(skip, base == 16 ? 2 : 3);
    std::uint32_t value = 0;
    const auto [stop, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    const std::size_t used = stop - digits.data();
    if (error != std::errc() || used < 2 || value > 0xFF)
        fail(rest_.substr(0, 8), "a byte such as xE4, d228 or 344 behind the escape character");
    rest_.remove_prefix(skip + used);
    return value;
}

// A file without any head may still write its bytes in the way of all others.
void charmap_reader::guess_escape() {
    if (!escape_given_ && rest_.starts_with("/x")) {
        escape_ = '/';
        warn("the escape character is not declared, '/' is taken");
    }
    escape_given_ = true;
}

// bytes := byte { byte }
byte_sequence charmap_reader::bytes() {
    skip_blanks();
    if (!escape_given_) guess_escape();
    if (!at_byte()) fail(rest_, "the bytes of the character");
    const std::string_view all = rest_;
    byte_sequence b;
    while (at_byte()) {
        if (b.length == 4) fail(all, "at most four bytes");
        b.value = b.value << 8 | one_byte();
        ++b.length;
    }
    return b;
}

int charmap_reader::number() {
    const std::string_view digits = word();
    int value = 0;
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || stop != digits.data() + digits.size() || value < 0)
        fail(digits, "a number of columns");
    return value;
}

char32_t charmap_reader::code_of(const std::string &name) {
    const auto code = code_point_of_name(name);
    if (!code || !is_scalar_value(*code))
        fail("<" + name + ">", "<Uxxxx> up to <U0010FFFF>, no surrogate");
    return *code;
}

// character := [ '%IRREVERSIBLE%' ] ( name | name '..' name | name name { name } ) bytes comment
void charmap_reader::character_line() {
    if (rest_.starts_with("END CHARMAP")) {
        where_ = where::behind;
        ended_ = true;
        return;
    }
    const bool reversible = !rest_.starts_with(irreversible);
    if (!reversible) rest_.remove_prefix(irreversible.size());
    const std::string name = bracketed("the name of a character");
    if (!code_point_of_name(name)) {
        // Mnemonic charmaps give the code point in front of the comment, or not at all.
        const byte_sequence b = bytes();
        skip_blanks();
        if (!rest_.starts_with("<U"))
            fail("<" + name + ">", "a character given as <Uxxxx>; no table says what such names "
                                   "stand for");
        const char32_t code = code_of(bracketed("<Uxxxx>"));
        parts_.names.push_back({name, code});
        return add(code, b, reversible);
    }
    const char32_t first = code_of(name);
    if (dots()) {
        const char32_t last = code_of(bracketed("the last character of the range"));
        return add_range(first, last, bytes(), reversible);
    }
    if (!rest_.starts_with('<')) return add(first, bytes(), reversible);
    std::u32string codes(1, first);
    while (rest_.starts_with('<')) codes += code_of(bracketed("<Uxxxx>"));
    parts_.sequences.push_back({std::move(codes), bytes()});
}

void charmap_reader::add(char32_t code, byte_sequence b, bool reversible) {
    parts_.entries.push_back({code, b, reversible});
    parts_.lines.push_back(line_);
}

void charmap_reader::add_range(char32_t first, char32_t last, byte_sequence b, bool reversible) {
    if (last < first) fail(code_point_name(last), "a character behind " + code_point_name(first));
    const std::uint32_t most = b.length == 4 ? 0xFFFFFFFF : (1u << 8 * b.length) - 1;
    if (last - first > most - b.value)
        fail(code_point_name(last), "a range that its bytes can count");
    // Ranges of UTF-8 run over the end of the last byte, where counting goes on in the byte before.
    const bool utf8 = parts_.name == "UTF-8" && utf8_bytes(first) == b;
    for (char32_t code = first; code <= last; ++code, ++b.value)
        if (is_scalar_value(code)) add(code, utf8 ? utf8_bytes(code) : b, reversible);
}

void charmap_reader::behind_line() {
    const std::string_view head = word();
    if (head == "WIDTH") {
        where_ = where::widths;
    } else if (head == "WIDTH_DEFAULT") {
        parts_.width_default = number();
    } else {
        fail(head, "WIDTH or the end of the file");
    }
}

// width := name [ '...' name ] number
void charmap_reader::width_line() {
    if (rest_.starts_with("END WIDTH")) {
        where_ = where::behind;
        return;
    }
    const char32_t first = code_of(bracketed("a character or END WIDTH"));
    const char32_t last = dots() ? code_of(bracketed("the last character of the range")) : first;
    parts_.widths.push_back({first, last, number(), line_});
}

void charmap_reader::finish() {
    if (parts_.name.empty()) {
        const std::size_t slash = parts_.file.rfind('/');
        parts_.name = parts_.file.substr(slash == parts_.file.npos ? 0 : slash + 1);
        if (parts_.name.ends_with(".gz")) parts_.name.resize(parts_.name.size() - 3);
    }
    if (parts_.entries.empty())
        throw source_error({parts_.file, line_}, "found no character, expected some");
    if (!ended_) warn("the END CHARMAP line is missing");
}

} // namespace

charmap parse_charmap(const std::string &path, std::string_view text) {
    return charmap_reader(path, text).read();
}

charmap read_charmap(const std::string &path) {
    return parse_charmap(path, read_source_text(path));
}

} // namespace velc
