#include "velc/object_input.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>

#include "velc/tool_error.h"
#include "vels/errors.h"

namespace velc {

namespace {

struct object_type {
    std::string_view name;
    int version;
    object_kind kind;
};
constexpr object_type object_types[] = {
    {"locale_object", 11, object_kind::locale},
    {"charmap_object", 3, object_kind::charmap},
    {"codeset_conversion_object", 9, object_kind::conversion},
};
constexpr std::string_view type_key = "FILE_TYPE=";
constexpr std::size_t longest_word = 127;
constexpr int longest_line = 127;

const object_type *type_of_line(std::string_view line) {
    if (!line.starts_with(type_key)) return nullptr;
    line.remove_prefix(type_key.size());
    for (const object_type &type : object_types)
        if (type.name == line) return &type;
    return nullptr;
}

std::optional<int> number_of(std::string_view word) {
    int value = 0;
    const char *end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

std::string in_quotes(std::string_view text) {
    return fmt::format("\"{}\"", text);
}

} // namespace

std::optional<std::string> object_head::value(std::string_view name) const {
    for (const std::string &line : lines)
        if (line.size() > name.size() && line.starts_with(name) && line[name.size()] == '=')
            return line.substr(name.size() + 1);
    return std::nullopt;
}

std::string read_file(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw tool_error("{}: cannot be read, expected a file", path.string());
    return {std::istreambuf_iterator<char>(in), {}};
}

object_kind kind_of_file(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    std::array<char, 64> start{};
    if (!in || std::filesystem::is_directory(path))
        throw tool_error("{}: cannot be read, expected an object", path.string());
    in.read(start.data(), start.size());
    const std::string_view text(start.data(), static_cast<std::size_t>(in.gcount()));
    const object_type *type = type_of_line(text.substr(0, text.find('\n')));
    if (text.starts_with(type_key) && !type)
        throw tool_error("{}: found {}, expected a known FILE_TYPE", path.string(),
                         in_quotes(text.substr(0, text.find('\n'))));
    return type ? type->kind : object_kind::registry;
}

object_input::object_input(const std::filesystem::path &path)
    : name_(path.string()), file_(std::fopen(path.string().c_str(), "r")) {
    if (!file_) throw tool_error("{}: cannot be read: {}", name_, std::strerror(errno));
    in_ = std::make_unique<vel::text_reader>(file_.get());
}

void object_input::fail(std::string_view found, std::string_view expected) const {
    throw tool_error("{}: {}{}found {}, expected {}", name_, place_, place_.empty() ? "" : ": ",
                     found, expected);
}

object_head object_input::read_head() {
    set_place("header");
    const std::string first = line();
    const object_type *type = type_of_line(first);
    if (!type) fail(in_quotes(first), "a line FILE_TYPE= with a known type");
    object_head head{type->kind, type->version, {}};
    const std::string version = fmt::format("COMPILER_VERSION={}", type->version);
    if (const std::string second = line(); second != version) fail(in_quotes(second), version);
    const std::string third = line();
    const auto count = number_of(std::string_view(third).substr(third.find('=') + 1));
    if (!third.starts_with("HEADER_LENGTH=") || !count || *count < 3)
        fail(in_quotes(third), "HEADER_LENGTH= with a number of at least 3");
    for (int i = 3; i < *count; ++i) head.lines.push_back(line());
    set_place({});
    return head;
}

std::string object_input::line() {
    char buffer[longest_line + 1];
    if (!in_->gets(buffer, sizeof buffer)) fail_end();
    std::string text = buffer;
    if (!text.ends_with('\n')) fail(in_quotes(text), "a line break at its end");
    text.pop_back();
    return text;
}

bool object_input::at_end() {
    vel::vel_skip_space(*in_);
    const int c = in_->get();
    in_->unget(c);
    return c == vel::end_of_file;
}

std::string object_input::word() {
    vel::vel_skip_space(*in_);
    std::string text;
    int c = in_->get();
    for (; c != vel::end_of_file && !vel::is_space(c); c = in_->get()) {
        text += static_cast<char>(c);
        if (text.size() > longest_word) fail(in_quotes(text), "a shorter word");
    }
    in_->unget(c);
    if (text.empty()) fail_end();
    return text;
}

int object_input::integer() {
    const std::string text = word();
    const auto value = number_of(text);
    if (!value) fail(in_quotes(text), "a number");
    return *value;
}

int object_input::integer(int least, int most) {
    const int value = integer();
    if (value < least || value > most)
        fail(std::to_string(value), fmt::format("a number from {} to {}", least, most));
    return value;
}

double object_input::real() {
    const std::string text = word();
    double value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || stop != text.data() + text.size() || !std::isfinite(value))
        fail(in_quotes(text), "a number with decimals");
    return value;
}

std::uint32_t object_input::hex(int digits) {
    vel::vel_skip_space(*in_);
    return hex_here(digits);
}

std::uint32_t object_input::hex_here(int digits) {
    char text[8];
    for (int i = 0; i < digits; ++i) {
        const int c = in_->get();
        if (c == vel::end_of_file) fail_end();
        text[i] = static_cast<char>(c);
    }
    std::uint32_t value = 0;
    const auto [stop, error] = std::from_chars(text, text + digits, value, 16);
    if (error != std::errc() || stop != text + digits)
        fail(in_quotes({text, static_cast<std::size_t>(digits)}),
             fmt::format("{} hexadecimal digits", digits));
    return value;
}

std::string object_input::text() {
    const int length = integer(0, 1 << 20);
    std::string bytes;
    if (length > 0 && in_->get() != ' ') fail("no blank behind the length of a text", "one");
    for (int i = 0; i < length; ++i) bytes += static_cast<char>(hex_here(2));
    return bytes;
}

trie_pointer object_input::table(int value_size, vel::trie_value_reader read_value) {
    trie_pointer table(vel::vel_trie_create(value_size, 0, nullptr));
    if (!table) throw std::bad_alloc();
    if (vel::vel_trie_read(*in_, table.get(), vel::max_character_bytes, read_value) == 0)
        return table;
    if (vel::vel_trie_error(table.get()) == VEL_ENOMEM) throw std::bad_alloc();
    fail(fmt::format("something that is no table (error {})", vel::vel_trie_error(table.get())),
         "a table in the plain or the shared form");
}

} // namespace velc
