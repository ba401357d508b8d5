#include "vel/code_set.h"

#include <algorithm>
#include <cstring>

#include "vel/installation.h"
#include "vel/locale_handle.h"
#include "vel/record_view.h"

namespace vel_tool {
namespace {

constexpr int32_t all_classes = 0xFFFF;
constexpr size_t npos = std::string_view::npos;

bool is_in(vel_locale *locale, vel_wchar value, const char *class_name) {
    return vel_im_iswctype(locale, value, vel_ctype(locale, class_name)) != 0;
}

bool means_ascii(vel_locale *locale) {
    return vel_mb_loc_min(locale) == 1 && is_in(locale, 'A', "upper") &&
           is_in(locale, 'z', "lower") && is_in(locale, '0', "digit") &&
           is_in(locale, '~', "punct") && is_in(locale, ' ', "space");
}

// The line feed: 0x0A, or 0x25 where 0x0A is something else.
std::string newline_of(vel_locale *locale, size_t shortest) {
    std::string text(shortest, '\0');
    text.back() = !is_in(locale, '\n', "space") && is_in(locale, 0x25, "space") ? '\x25' : '\n';
    return text;
}

// The first place, at a multiple of the unit's length, where the unit stands.
size_t find_aligned(std::string_view text, std::string_view unit, size_t from) {
    if (unit.size() == 1) return text.find(unit[0], from);
    size_t at = text.find(unit, from);
    while (at != npos && at % unit.size() != 0) at = text.find(unit, at + 1);
    return at;
}

// How often a byte occurs, eight bytes at a time: what differs from the byte is not zero, which the
// top bit of each byte of `differs` says; the sums of up to 255 rounds fit into the bytes of
// `sums`.
size_t count_byte(std::string_view text, char byte) {
    constexpr uint64_t ones = 0x0101010101010101, low_bits = 0x7F * ones;
    constexpr size_t rounds = 255;
    const uint64_t pattern = static_cast<unsigned char>(byte) * ones;
    size_t count = 0;
    while (text.size() >= sizeof(uint64_t)) {
        size_t words = std::min(text.size() / sizeof(uint64_t), rounds);
        uint64_t sums = 0;
        for (size_t i = 0; i < words; ++i) {
            uint64_t word;
            memcpy(&word, text.data() + i * sizeof word, sizeof word);
            word ^= pattern;
            uint64_t differs = ((word & low_bits) + low_bits) | word;
            sums += (~differs >> 7) & ones;
        }
        uint64_t pairs = (sums & 0x00FF00FF00FF00FF) + ((sums >> 8) & 0x00FF00FF00FF00FF);
        count += static_cast<size_t>((pairs * 0x0001000100010001) >> 48);
        text.remove_prefix(words * sizeof(uint64_t));
    }
    return count + static_cast<size_t>(std::count(text.begin(), text.end(), byte));
}

} // namespace

size_t newline_search::find(std::string_view text, size_t from) const {
    return find_aligned(text, unit, from);
}

code_set::code_set(vel_locale *locale)
    : locale_(locale), name_(vel_nl_langinfo(locale, VEL_ITEM_CODESET)),
      shortest_(static_cast<size_t>(std::max(vel_mb_loc_min(locale), 1))),
      longest_(static_cast<size_t>(std::max(vel_mb_loc_max(locale), 1))),
      utf8_(codeset_number(name_) == VEL_CS_UTF8),
      ascii_(means_ascii(locale)), newline_{newline_of(locale, shortest_)} {
    if (longest_ > 1) return;
    for (size_t b = 0; b < holes_.size(); ++b) {
        holes_[b] = vel_im_iswctype(locale_, static_cast<vel_wchar>(b), all_classes) == 0;
        has_holes_ = has_holes_ || holes_[b];
    }
}

bool code_set::any_hole(std::string_view text) const {
    bool any = false;
    for (char c : text) any |= holes_[static_cast<unsigned char>(c)];
    return any;
}

int code_set::character(std::string_view text) const {
    if (longest_ == 1) return holes_[static_cast<unsigned char>(text[0])] ? invalid : 1;
    auto limit = static_cast<int32_t>(std::min(text.size(), longest_));
    int32_t length = tuk_vel_full_mblen(locale_, text.data(), limit);
    if (length > 0) return length;
    return error_of(locale_) == VEL_EINVAL ? incomplete : invalid;
}

size_t code_set::invalid_bytes(std::string_view text) const {
    size_t most = std::min(text.size(), longest_);
    for (size_t n = 1; n <= most; ++n) {
        if (character(text.substr(0, n)) == invalid) {
            return std::min(text.size(), std::max(n - 1, shortest_));
        }
    }
    return most;
}

char code_set::ascii(std::string_view character) const {
    if (character.size() != 1) return 0;
    return portable_character(locale_, static_cast<unsigned char>(character[0]));
}

size_t code_set::newlines(std::string_view text) const {
    const std::string &unit = newline_.unit;
    if (unit.size() == 1) {
        return count_byte(text, unit[0]);
    }
    size_t count = 0;
    for (size_t at = newline_.find(text, 0); at != npos;
         at = newline_.find(text, at + unit.size())) {
        ++count;
    }
    return count;
}

size_t code_set::find_null(std::string_view text) const {
    static constexpr char zeros[4] = {};
    return find_aligned(text, std::string_view(zeros, shortest_), 0);
}

} // namespace vel_tool
