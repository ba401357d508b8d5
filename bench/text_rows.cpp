// Rows over a text: an operation of the libraries, a language, a code set, a size.
#include "library.h"
#include "row.h"
#include "scratch.h"

#include <stdexcept>

namespace bench {
namespace {

constexpr std::size_t mib = 1 << 20;
constexpr std::size_t cached = 16 << 10;

using operation = make_call *library::*;

struct text_row {
    const char *name;
    operation what;
    language spoken;
    code_set set;
    std::size_t bytes;
    aim wanted;
};

using enum language;
using enum code_set;

const text_row decoding[] = {
    {"decode UTF-8 ASCII, 1 MiB", &library::decode, english, utf8, mib, aim::times_host(2.7)},
    {"decode UTF-8 ASCII, 16 KiB", &library::decode, english, utf8, cached, aim::times_host(6)},
    {"decode UTF-8 German", &library::decode, german, utf8, mib, aim::times_host(3)},
    {"decode UTF-8 Russian", &library::decode, russian, utf8, mib, aim::times_host(5.5)},
    {"decode UTF-8 Japanese", &library::decode, japanese, utf8, mib, aim::times_host(4.5)},
    {"decode UTF-8 mixed", &library::decode, mixed, utf8, mib, aim::times_host(4.2)},
    {"decode EUC-JP", &library::decode, japanese, euc_jp, mib, aim::times_host(2.5)},
    {"decode SJIS", &library::decode, japanese, shift_jis, mib, aim::times_host(4)},
    {"count characters UTF-8 Japanese", &library::count, japanese, utf8, mib, aim::times_host(19)},
};

const text_row encoding[] = {
    {"encode UTF-8 ASCII", &library::encode, english, utf8, mib, aim::times_host(5)},
    {"encode UTF-8 Japanese", &library::encode, japanese, utf8, mib, aim::times_host(14)},
    {"encode UTF-8 mixed", &library::encode, mixed, utf8, mib, aim::times_host(8)},
    {"encode UTF-8 ASCII, 16 KiB", &library::encode, english, utf8, cached, {}},
    {"encode UTF-8 Japanese, 16 KiB", &library::encode, japanese, utf8, cached, {}},
    {"encode EUC-JP", &library::encode, japanese, euc_jp, mib, aim::times_host(80)},
    {"encode SJIS", &library::encode, japanese, shift_jis, mib, aim::times_host(14)},
};

const text_row stepping[] = {
    {"one a call, length, ASCII", &library::length, english, utf8, cached, aim::times_host(8)},
    {"one a call, length, mixed", &library::length, mixed, utf8, cached, aim::times_host(8)},
    {"one a call, value, ASCII", &library::value, english, utf8, cached, aim::times_host(8)},
    {"one a call, value, Japanese", &library::value, japanese, utf8, cached, aim::times_host(8)},
    {"one a call, value, mixed", &library::value, mixed, utf8, cached, aim::times_host(8)},
    {"one a call, value, SJIS", &library::value, japanese, shift_jis, cached, aim::times_host(8)},
    {"one a call, next, mixed", &library::next, mixed, utf8, cached, aim::times_host(8)},
};

const text_row classes[] = {
    {"class alpha, ASCII", &library::alpha, english, utf8, cached, {}},
    {"class alpha, Japanese", &library::alpha, japanese, utf8, cached, {}},
    {"class alpha, mixed", &library::alpha, mixed, utf8, cached, aim::times_host(2)},
    {"five classes in turn, mixed", &library::five_classes, mixed, utf8, cached,
     aim::times_host(2)},
};

const text_row casing[] = {
    {"upper case UTF-8 German", &library::upper_text, german, utf8, mib, aim::times_host(6)},
    {"upper case UTF-8 Russian", &library::upper_text, russian, utf8, mib, aim::times_host(3)},
    {"upper case UTF-8 Japanese", &library::upper_text, japanese, utf8, mib, {}},
};

const text_row wide_casing[] = {
    {"upper case wide German", &library::upper_wide, german, utf8, cached, {}},
    {"upper case wide Russian", &library::upper_wide, russian, utf8, cached, {}},
    {"upper case wide Japanese", &library::upper_wide, japanese, utf8, cached, {}},
};

std::string replace_all(std::string text, const std::string &from, const std::string &to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

// What a library is to give where the host gives `hosts`. In wide results every character is
// followed by the separator.
std::string expected_of(const library &who, const text_row &of, const std::string &hosts) {
    bool is_text = of.what == &library::upper_text;
    if (!is_text && of.what != &library::upper_wide) return hosts;
    auto in_form_of_row = [&](std::u32string_view letters) {
        std::string form;
        for (char32_t letter : letters) {
            append_utf8(form, letter);
            if (!is_text) form += separator;
        }
        return form;
    };
    return replace_all(hosts, in_form_of_row(U"ß"), in_form_of_row(who.upper_sharp_s));
}

std::string first_difference(const std::string &got, const std::string &expected) {
    std::size_t at = 0;
    while (at < got.size() && at < expected.size() && got[at] == expected[at]) ++at;
    std::size_t from = at < 20 ? 0 : at - 20;
    return " at byte " + std::to_string(at) + ": ..." + got.substr(from, 60) + "\n  expected ..." +
           expected.substr(from, 60);
}

std::string result_of(const call &made) {
    spoil_scratch();
    return made.result(made.pass());
}

// The host against the text itself where the text is what must come out.
void check_host(const text_row &of, const sample &in, const std::string &result) {
    std::string expected;
    if (of.what == &library::encode) expected = in.text;
    if (of.what == &library::count) expected = std::to_string(in.characters.size());
    if (of.what == &library::decode || of.what == &library::value) {
        for (char32_t c : in.code_points) append_utf8(expected, c), expected += separator;
    }
    if (!expected.empty() && result != expected)
        throw std::runtime_error(std::string(of.name) + ": the host is wrong" +
                                 first_difference(result, expected));
}

std::vector<contender> contenders_in(const text_row &of, const sample_ptr &in) {
    std::vector<contender> made;
    std::string hosts = result_of((host().*of.what)(in));
    check_host(of, *in, hosts);
    for (const library &who : libraries()) {
        if (!(who.*of.what)) continue;
        call work = (who.*of.what)(in);
        if (!work.pass) continue;
        std::string result = result_of(work);
        std::string expected = expected_of(who, of, hosts);
        if (result != expected)
            throw std::runtime_error(std::string(of.name) + ": " + who.name + " differs" +
                                     first_difference(result, expected));
        made.push_back({who.name, work.pass, nullptr});
    }
    return made;
}

// Bytes or characters, as the unit asks. The bytes are those of the multibyte form.
double work_in(const sample &in, unit shown) {
    return static_cast<double>(shown == unit::gigabytes_per_second ? in.text.size()
                                                                   : in.characters.size());
}

template <std::size_t count>
void add(std::vector<row> &rows, const text_row (&table)[count], unit shown) {
    for (const text_row &of : table) {
        auto prepare = [&of, shown] {
            sample_ptr in = make_sample(of.spoken, of.set, of.bytes);
            return prepared_row{work_in(*in, shown), contenders_in(of, in)};
        };
        rows.push_back({of.name, shown, of.wanted, prepare});
    }
}

} // namespace

std::vector<row> text_rows() {
    std::vector<row> rows;
    add(rows, decoding, unit::gigabytes_per_second);
    add(rows, encoding, unit::gigabytes_per_second);
    add(rows, stepping, unit::gigabytes_per_second);
    add(rows, classes, unit::nanoseconds);
    add(rows, casing, unit::gigabytes_per_second);
    add(rows, wide_casing, unit::nanoseconds);
    return rows;
}

} // namespace bench
