// Every character of every code set of the pack, to UTF-8 and back, against the host's iconv.
#include <bitset>
#include <random>

#include "differential/conversion_differences.h"
#include "differential/conversion_sides.h"

namespace differential {
namespace {

using vel_test::is_unicode_form;
using vel_test::utf8_text;

std::string host_name_of(const std::string &set) {
    if (set == "SAMI-WS2") return "WIN-SAMI-2";
    // The host begins text in this form with a mark of its byte order.
    if (set == "UTF-32") return std::endian::native == std::endian::big ? "UTF-32BE" : "UTF-32LE";
    return set;
}

std::string in_digits(const meaning &of) {
    if (!of.text) return of.more ? "the beginning of one" : "no character";
    std::string text;
    for (unsigned char byte : *of.text) text += findings::hex(byte) + " ";
    return text;
}

// One code set, to and from a form of Unicode.
class sides {
public:
    sides(const std::vector<vel_test::pack_conversion> &pack, const std::string &set,
          const std::string &form)
        : set_(set), found_(locale_case{"conversion", set_.c_str()}, known_conversions),
          ours_to_(open_from(pack, set, form)), ours_from_(open_from(pack, form, set)),
          host_to_(form, host_name_of(set)), host_from_(host_name_of(set), form),
          host_any_(host_name_of(set) + "//IGNORE", form) {}

    bool host_knows() const { return host_to_ && host_from_ && host_any_; }
    bool ours_are_open() const { return ours_to_ && ours_from_; }

    void read_all() {
        const std::string begin = shift();
        walk("");
        if (!begin.empty()) walk(begin);
    }
    void write_all() {
        for (char32_t code = 0; code < 0x40000; code += block)
            if (code < 0xD800 || code >= 0xE000) write_block(code);
        if (!shift().empty()) write_texts();
    }
    void settle() const {
        found_.settle({only_ours_reads, only_host_reads, reads_another, only_ours_writes,
                       only_host_writes, writes_another});
    }

private:
    static constexpr char32_t block = 256;

    std::string shift() const { return std::string(vel_test::marks_of(ours_to_.plain()).begin); }
    // Of most forms of Unicode too many sequences are characters to try them all.
    size_t longest() const { return is_unicode_form(set_) && set_ != "UTF-8" ? 2 : 4; }

    void compare(const char *did, uint32_t value, const meaning &ours, const meaning &host) {
        found_.compared();
        if (ours.text == host.text) return;
        const char *how = ours.text && host.text ? " as another"
                          : ours.text            ? " only by ours"
                                                 : " only by the host";
        found_.add(std::string(did) + how, value,
                   [&] { return "ours " + in_digits(ours) + ", the host " + in_digits(host); });
    }

    // All sequences of up to four bytes behind what leads to their state.
    void walk(std::string text) {
        const size_t start = text.size();
        const auto step = [&](auto &&again, bool ours_has) -> void {
            const size_t length = text.size() - start + 1;
            const bool all = length < 4 || is_sampled();
            text.push_back('\0');
            for (size_t byte = 0; byte < 256; ++byte) {
                if (!all && !fourth_bytes_[byte]) continue;
                text.back() = static_cast<char>(byte);
                // What begins with a character of ours is two.
                const meaning ours = ours_has ? meaning{} : ours_to_.convert(text);
                const meaning host = host_to_.convert(text);
                if (ours.text || host.text) compare("read", packed(text), ours, host);
                if (length == 4 && (ours.text || host.text)) fourth_bytes_.set(byte);
                if ((ours.more || host.more) && length < longest())
                    again(again, ours_has || ours.text);
            }
            text.pop_back();
        };
        step(step, false);
    }
    // A fourth byte that ends no character is tried behind every sixteenth beginning.
    bool is_sampled() { return beginnings_++ % 16 == 0 || fourth_bytes_.none(); }

    void write_block(char32_t first) {
        std::string all;
        for (char32_t code = first; code < first + block; ++code) all += utf8_text(code);
        if (!ours_from_.has_any_of(all, block, utf8_text(0x2FFFE)) && !host_any_.has_any_of(all))
            return;
        for (char32_t code = first; code < first + block; ++code) {
            const meaning ours = ours_from_.convert(utf8_text(code));
            const meaning host = host_from_.convert(utf8_text(code));
            compare("written", code, ours, host);
            if (!ours.text || ours.text != host.text) continue;
            written_.push_back(code);
            if (longest() < ours.text->size())
                compare("read", code, ours_to_.convert(*ours.text), host_to_.convert(*host.text));
        }
    }

    // The states change where the host changes them.
    void write_texts() {
        const uint32_t seed = 20261121;
        std::mt19937 random(seed);
        for (uint32_t i = 0; i < 1000; ++i) {
            std::string text;
            for (int n = 0; n < 40; ++n) {
                const size_t most = n % 5 < 2 ? 128 : written_.size();
                text += utf8_text(written_[random() % most]);
            }
            const meaning ours = ours_from_.convert(text), host = host_from_.convert(text);
            compare("text written", i, ours, host);
            if (!ours.text || ours.text != host.text) continue;
            compare("text read", i, ours_to_.convert(*ours.text), host_to_.convert(*host.text));
        }
    }

    const std::string set_;
    findings found_;
    our_conversion ours_to_, ours_from_;
    host_conversion host_to_, host_from_, host_any_;
    std::bitset<256> fourth_bytes_;
    size_t beginnings_ = 0;
    std::vector<char32_t> written_;
};

TEST(conversion, every_character_of_every_code_set) {
    const std::vector<vel_test::pack_conversion> pack = vel_test::pack_conversions();
    std::string unknown;
    size_t compared = 0;
    for (const vel_test::pack_conversion &one : pack) {
        if (one.to != "UTF-8") continue;
        sides both(pack, one.from, "UTF-8");
        ASSERT_TRUE(both.ours_are_open()) << one.from << " and back";
        if (!both.host_knows()) {
            unknown += one.from + ' ';
            continue;
        }
        both.read_all();
        both.write_all();
        both.settle();
        ++compared;
    }
    EXPECT_EQ(unknown, unknown_to_the_host);
    std::printf("%zu code sets compared\n", compared);
}

TEST(conversion, every_character_of_utf_8) {
    sides both(vel_test::pack_conversions(), "UTF-8", "UTF-32BE");
    ASSERT_TRUE(both.ours_are_open() && both.host_knows());
    both.read_all();
    both.settle();
}

} // namespace
} // namespace differential
