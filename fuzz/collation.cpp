// Collations of any weights, and pairs of texts in those of the pack. The first byte chooses; zero
// bytes part the texts.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "pack.h"
#include "support/host.h"
#include "support/make_object.h"

namespace {

constexpr size_t longest = 200; // bytes of a text
constexpr char guard = '\x55';

int sign(int value) {
    return (value > 0) - (value < 0);
}

// The bytes of the input, 0 behind its end.
class byte_source {
public:
    byte_source(const uint8_t *data, size_t size) : at_(data), end_(data + size) {}

    uint8_t next() { return at_ == end_ ? 0 : *at_++; }
    int next(int below) { return next() % below; }
    bool is_empty() const { return at_ == end_; }
    std::string text() {
        std::string made;
        for (uint8_t byte; made.size() < longest && (byte = next()) != 0;)
            made += static_cast<char>(byte);
        return made;
    }

private:
    const uint8_t *at_, *end_;
};

// --- Any weights -------------------------------------------------------------------------------

// A COLLATE section that is well formed and may say anything: indexes, weights and expansions that
// do not exist, parts that expand again, elements within elements.
class any_collation {
public:
    explicit any_collation(byte_source &from) : from_(from) {}

    std::string section() {
        const int passes = from_.next(10), indexes = letters + from_.next(3) - 1;
        const int elements = from_.next(6), expansions = from_.next(6);
        static const std::string table = index_table();
        text_ = "as_specified\n" + table;
        for (int number : {passes, indexes, 4 + from_.next(12), elements, expansions,
                           static_cast<int>(from_.next() == 1)})
            add("%d ", number);
        for (int pass = 0; pass < passes; ++pass) {
            add("%d\n", from_.next() == 3 ? 3 : 1 + from_.next(2));
            for (int i = 0; i < indexes; ++i) add("%04X ", weight(expansions));
        }
        for (int i = 0; i < elements; ++i) {
            add_values();
            add("%04X\n", from_.next(letters + 1));
        }
        for (int i = 0; i < expansions; ++i) add_values();
        return text_;
    }

private:
    static constexpr int letters = 8;

    static std::string index_table() {
        vel_test::characters indexes;
        for (int i = 0; i < letters; ++i)
            indexes[std::string(1, static_cast<char>('a' + i))] = static_cast<uint16_t>(i);
        return vel_test::table_text(indexes);
    }
    int weight(int expansions) {
        const int byte = from_.next();
        if (byte == 255) return from_.next() << 8 | from_.next();
        if (byte >= 192) return 0x4000 | (expansions ? byte % expansions : 0);
        return (byte >= 128 ? 0x8000 : 0) | (1 + byte % 5);
    }
    void add_values() {
        const int count = from_.next(5);
        add("%d ", count);
        for (int i = 0; i < count; ++i) add("%08X ", 'a' + from_.next(letters + 1));
    }
    void add(const char *format, int number) {
        char text[16];
        text_.append(text, static_cast<size_t>(snprintf(text, sizeof text, format, number)));
    }

    byte_source &from_;
    std::string text_;
};

// A locale object around a COLLATE section.
std::string object_with(const std::string &section) {
    static const std::string frame = [] {
        vel_test::object_parts parts;
        parts.collate = "?";
        return parts.text();
    }();
    static const size_t place = frame.find("LC_COLLATE\n?") + strlen("LC_COLLATE\n");
    return frame.substr(0, place) + section + "\n" + frame.substr(place + 1);
}

// --- What holds in every collation -------------------------------------------------------------

std::string key_of(vel_locale *locale, const std::string &text) {
    const int32_t size = vel_full_mbsxfrm(locale, nullptr, text.c_str(), 0);
    check(size >= 0, "valid text has a key");
    std::string key(static_cast<size_t>(size) + 2, guard);
    check(vel_full_mbsxfrm(locale, key.data(), text.c_str(), size + 1) == size, "measured key");
    check(key[key.size() - 2] == 0 && key.back() == guard, "a key ends where it was measured");
    key.resize(static_cast<size_t>(size));
    const size_t room = text.size() % (key.size() + 1);
    std::string cut(room + 1, guard);
    vel_full_mbsxfrm(locale, cut.data(), text.c_str(), static_cast<int32_t>(room));
    check(cut.back() == guard, "nothing is written past the room");
    check(cut.compare(0, room, key, 0, room) == 0, "a key that is cut is the beginning of it");
    return key;
}

std::vector<vel_wchar> values_of(vel_locale *locale, const std::string &text) {
    std::vector<vel_wchar> values(text.size() + 1);
    const int32_t room = static_cast<int32_t>(values.size());
    if (vel_im_mbstowcs(locale, values.data(), text.c_str(), room) < 0) values.clear();
    return values;
}

// The order of two texts by comparing; those that are invalid are refused.
bool compare(vel_locale *locale, const std::string &a, const std::string &b, int &order) {
    const auto wide_a = values_of(locale, a), wide_b = values_of(locale, b);
    *vel_ext_errno(locale) = 0;
    order = sign(vel_im_mbscoll(locale, a.c_str(), b.c_str()));
    const bool is_valid = !wide_a.empty() && !wide_b.empty();
    check(is_valid == (*vel_ext_errno(locale) == 0), "text is compared when it is valid");
    if (!is_valid) return false;
    check(order == sign(vel_full_wcscoll(locale, wide_a.data(), wide_b.data())),
          "wide and multibyte");
    const int32_t size_a = static_cast<int32_t>(a.size()), size_b = static_cast<int32_t>(b.size());
    check(order == sign(tuk_vel_im_mbfscoll(locale, a.data(), size_a, b.data(), size_b)),
          "counted");
    return true;
}

// Answers without a claim: weights that contradict one another have no order.
void ask_everything(vel_locale *locale, const std::string &a, const std::string &b) {
    for (auto by :
         {vel_is_mbscoll_exp, vel_is_mbscoll_elem, vel_is_mbscoll_back, vel_is_mbscoll_exp_elem}) {
        const int order = by(locale, a.c_str(), b.c_str());
        check(order >= -1 && order <= 1, "an order is -1, 0 or 1");
    }
    char out[64];
    const std::string few = a.substr(0, 4);
    const int flag = vel_iscompchar(locale, few.c_str()) == 3;
    vel_nextprimweight(locale, few.c_str(), flag, out);
    vel_prevprimweight(locale, few.c_str(), flag, out);
}

// --- The two halves ----------------------------------------------------------------------------

void compare_any(vel_locale *locale, byte_source &from) {
    std::string texts[2];
    for (std::string &text : texts)
        for (char &letter : text = from.text()) letter = static_cast<char>('a' + (letter & 15));
    int order;
    check(compare(locale, texts[0], texts[1], order), "every byte is a character");
    for (const std::string &text : texts) key_of(locale, text);
    ask_everything(locale, texts[0], texts[1]);
}

void try_any_collation(byte_source from) {
    vel_test::test_host host;
    host.environment["CORVANEDIR"] = "/r";
    host.files["/r/vels/lc11/object"] = object_with(any_collation(from).section());
    vel_locale *locale = nullptr;
    if (vel_lc_load(&locale, "object", -1, nullptr) == 0) compare_any(locale, from);
    vel_lc_unload(locale);
    check(host.blocks.empty() && host.open_streams == 0, "nothing is left behind");
}

// Two bytes of the input for a character, as most texts of any bytes are not UTF-8.
std::string spread(const std::string &bytes) {
    std::string text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const int code = (bytes[i] & 0xFF) << 8 | (bytes[i + 1] & 0xFF);
        const auto add = [&](int byte) { text += static_cast<char>(byte); };
        if (code < 0x80) add(code);
        if (code >= 0x80 && code < 0x800) add(0xC0 | code >> 6);
        if (code >= 0x800) add(0xE0 | code >> 12), add(0x80 | (code >> 6 & 0x3F));
        if (code >= 0x80) add(0x80 | (code & 0x3F));
    }
    return text.substr(0, text.find('\0'));
}

void try_pack(byte_source from, bool is_spread) {
    static vel_locale *const locales[] = {
        load("en_us.utf8"),  load("fr_ca.utf8"),       load("hu_hu.utf8"),   load("zh_cn.utf8"),
        load("ja_jp.eucjp"), load("cs_cz.iso-8859-2"), load("th_th.tis620"), load("en_us.037")};
    const std::string begin = from.text(), a = begin + from.text(), b = begin + from.text();
    const std::string first = is_spread ? spread(a) : a, second = is_spread ? spread(b) : b;
    for (vel_locale *locale : locales) {
        int order;
        if (!compare(locale, first, second, order)) continue;
        const int by_key = sign(key_of(locale, first).compare(key_of(locale, second)));
        check(order == by_key, "comparing and keys give one order");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    byte_source from(data, size);
    const int how = from.next(4);
    if (how < 2)
        try_any_collation(from);
    else
        try_pack(from, how == 2);
    return 0;
}
