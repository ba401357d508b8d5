#include "vel/line_key.h"

#include <algorithm>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/formatted.h"
#include "vel/locale_handle.h"

namespace vel_tool {
namespace {

constexpr size_t terminator_bytes = 8;
constexpr size_t first_room = 1024;
constexpr size_t longest_thai_key = 256;

bool is_thai(vel_locale *locale) {
    clear_error(locale);
    return vel_getpassdirection(locale, 1) < 0 && error_of(locale) == VEL_EBADMODE;
}

} // namespace

key_maker::key_maker(const code_set &codes, const field_choice &field)
    : codes_(codes), field_(field), blank_mask_(vel_ctype(codes.locale(), "blank")),
      longest_key_(is_thai(codes.locale()) ? longest_thai_key : INT32_MAX - 1), key_(first_room) {}

std::optional<std::string_view> key_maker::key_of(std::string_view line) {
    if (is_invalid(line)) return std::nullopt;
    std::string_view rest = field_of(line);
    text_.assign(rest);
    text_.append(terminator_bytes, '\0');
    rest = std::string_view(text_.data(), rest.size());
    used_ = 0;
    for (;;) {
        if (!add_key(rest.data())) return std::nullopt;
        size_t null = codes_.find_null(rest);
        if (null == std::string_view::npos) return std::string_view(key_.data(), used_);
        key_[used_++] = '\0'; // the library's terminator stands there
        rest.remove_prefix(null + codes_.shortest());
    }
}

// Says nothing about the text of a whole line, which is checked as its key is made.
bool key_maker::is_invalid(std::string_view line) const {
    if (codes_.has_holes() && codes_.any_hole(line)) return true;
    if (line.size() % codes_.shortest() != 0) return true;
    if (line.size() > INT32_MAX) throw failure("a line is longer than 2 GB");
    if (field_.number == 0 || line.empty()) return false;
    return tuk_vel_im_mbfslen(codes_.locale(), line.data(), static_cast<int32_t>(line.size())) < 0;
}

std::string_view key_maker::field_of(std::string_view line) const {
    if (field_.number == 0) return line;
    return field_.separator.empty() ? blank_field(line) : separated_field(line);
}

std::string_view key_maker::separated_field(std::string_view line) const {
    uint32_t number = 1;
    size_t begin = 0, at = 0;
    while (at < line.size()) {
        auto bytes = static_cast<size_t>(codes_.character(line.substr(at)));
        if (line.substr(at, bytes) == field_.separator) {
            if (number++ == field_.number) break;
            begin = at + bytes;
        }
        at += bytes;
    }
    return number < field_.number ? std::string_view() : line.substr(begin, at - begin);
}

std::string_view key_maker::blank_field(std::string_view line) const {
    size_t begin = 0, end = 0;
    for (uint32_t number = 0; number < field_.number && end < line.size(); ++number) {
        begin = skip(line, end, true);
        end = skip(line, begin, false);
        if (begin == line.size()) break;
        if (number + 1 == field_.number) return line.substr(begin, end - begin);
    }
    return {};
}

size_t key_maker::skip(std::string_view line, size_t at, bool blanks) const {
    while (at < line.size()) {
        auto bytes = static_cast<size_t>(codes_.character(line.substr(at)));
        if (is_blank(line.substr(at, bytes)) != blanks) break;
        at += bytes;
    }
    return at;
}

bool key_maker::is_blank(std::string_view character) const {
    vel_wchar value = 0;
    for (char c : character) value = value << 8 | static_cast<unsigned char>(c);
    return vel_im_iswctype(codes_.locale(), value, blank_mask_) != 0;
}

// Adds the key of a terminated text; false when that is invalid.
bool key_maker::add_key(const char *text) {
    vel_locale *locale = codes_.locale();
    for (;;) {
        size_t room = std::min<size_t>(key_.size() - used_, INT32_MAX);
        int32_t length =
            vel_full_mbsxfrm(locale, key_.data() + used_, text, static_cast<int32_t>(room));
        if (length < 0 && error_of(locale) == VEL_EILSEQ) return false;
        if (length < 0) throw failure("cannot make a sort key: " + error_text(locale));
        if (length == INT32_MAX) throw failure("the sort key of a line is longer than 2 GB");
        size_t whole = std::min(static_cast<size_t>(length), longest_key_);
        if (whole < room) {
            used_ += whole;
            return true;
        }
        key_.resize(used_ + whole + first_room);
    }
}

size_t first_invalid(const code_set &codes, std::string_view text) {
    size_t at = 0;
    while (at < text.size()) {
        int length = codes.character(text.substr(at));
        if (length < 1) break;
        at += static_cast<size_t>(length);
    }
    return at;
}

} // namespace vel_tool
