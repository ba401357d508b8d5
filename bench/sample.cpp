#include "sample.h"

#include <iconv.h>
#include <stdexcept>

namespace bench {
namespace {

std::size_t utf8_bytes(unsigned char lead) {
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

std::string separate(const std::string &utf8) {
    std::string out;
    out.reserve(utf8.size() * 2);
    for (std::size_t at = 0; at < utf8.size();) {
        std::size_t bytes = utf8_bytes(static_cast<unsigned char>(utf8[at]));
        out.append(utf8, at, bytes) += separator;
        at += bytes;
    }
    return out;
}

char32_t code_point_of(std::string_view utf8) {
    auto lead = static_cast<unsigned char>(utf8[0]);
    if (utf8.size() == 1) return lead;
    char32_t value = lead & (0x7F >> utf8.size());
    for (char trail : utf8.substr(1)) value = value << 6 | (trail & 0x3F);
    return value;
}

std::vector<std::string> split(const std::string &separated) {
    std::vector<std::string> parts;
    for (std::size_t at = 0; at < separated.size();) {
        std::size_t end = separated.find(separator, at);
        parts.push_back(separated.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

} // namespace

std::string convert(const std::string &in, const char *from, const char *to) {
    iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1))
        throw std::runtime_error("iconv lacks a code set");
    std::string out(in.size() * 4, '\0');
    char *read = const_cast<char *>(in.data());
    char *write = out.data();
    std::size_t left = in.size();
    std::size_t room = out.size();
    std::size_t result = iconv(converter, &read, &left, &write, &room);
    iconv_close(converter);
    if (result != 0) throw std::runtime_error(std::string("a text does not fit into ") + to);
    out.resize(out.size() - room);
    return out;
}

const char *name_of(code_set set) {
    constexpr const char *names[] = {"UTF-8", "EUC-JP", "SHIFT_JIS"};
    return names[static_cast<int>(set)];
}

sample_ptr make_sample(language spoken, code_set set, std::size_t bytes) {
    std::string separated = separate(make_text(spoken, bytes));
    auto made = std::make_shared<sample>();
    made->spoken = spoken;
    made->set = set;
    for (const std::string &character : split(separated))
        made->code_points += code_point_of(character);
    made->characters = split(convert(separated, "UTF-8", name_of(set)));
    for (const std::string &character : made->characters) made->text += character;
    return made;
}

std::uint32_t packed(std::string_view character) {
    std::uint32_t value = 0;
    for (char byte : character) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

void append_packed(std::string &out, std::uint32_t value) {
    for (int shift = 24; shift > 0; shift -= 8) {
        if (value >> shift) out += static_cast<char>(value >> shift);
    }
    out += static_cast<char>(value);
}

std::string to_utf8(const std::string &separated, code_set set) {
    return set == code_set::utf8 ? separated : convert(separated, name_of(set), "UTF-8");
}

void append_utf8(std::string &out, char32_t c) {
    auto trail = [&](int shift) { out += static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | c >> 6);
        trail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | c >> 12);
        trail(6);
        trail(0);
    } else {
        out += static_cast<char>(0xF0 | c >> 18);
        trail(12);
        trail(6);
        trail(0);
    }
}

} // namespace bench
