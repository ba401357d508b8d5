#include "collate/thai.h"

#include <cstring>

#include "ext/error.h"
#include "vels/collate.h"

namespace vel {
namespace {

constexpr int32_t space = 32;
constexpr int32_t max_copied_key = 256;

// A place in a text, at which a zero byte stands when it is over.
class thai_place {
public:
    explicit thai_place(byte_text text) : text_(text) {}

    int32_t byte() const { return text_.done() ? 0 : *text_.at; }
    void next() { ++text_.at; }
    bool at_mark() const { return is_thai_mark(static_cast<uint32_t>(byte())); }
    bool at_leading_vowel() const { return is_thai_leading_vowel(static_cast<uint32_t>(byte())); }

    thai_place behind_vowels_and_marks() const {
        thai_place place = *this;
        while (place.at_leading_vowel() || place.at_mark()) place.next();
        return place;
    }
    bool only_spaces_left() const {
        thai_place place = *this;
        while (place.byte() == space) place.next();
        return place.byte() == 0;
    }

private:
    byte_text text_;
};

// Two places whose bytes differ and are no marks; neither text is over.
int32_t compare_syllables(const thai_place &a, const thai_place &b) {
    if (!a.at_leading_vowel() && !b.at_leading_vowel()) return a.byte() - b.byte();
    int32_t x = a.at_leading_vowel() ? a.behind_vowels_and_marks().byte() : a.byte();
    int32_t y = b.at_leading_vowel() ? b.behind_vowels_and_marks().byte() : b.byte();
    if (x != y) return x - y;
    if (!a.at_leading_vowel()) return -1;
    if (!b.at_leading_vowel()) return 1;
    return a.byte() - b.byte();
}

// A key of which only the beginning may be stored.
struct key_bytes {
    unsigned char *out;
    size_t room;
    size_t count = 0;

    void put(unsigned char byte) {
        if (count < room) out[count] = byte;
        ++count;
    }
};

void put_base(key_bytes &key, const unsigned char *text) {
    unsigned char pending = 0;
    for (; *text; ++text) {
        if (is_thai_key_mark(*text)) continue;
        if (is_thai_leading_vowel(*text) && !pending) {
            pending = *text;
            continue;
        }
        key.put(*text);
        if (pending) key.put(pending);
        pending = 0;
    }
    if (pending) key.put(pending);
}

// Each mark behind its position. Positions are bytes: all beyond the last share it, so that no zero
// byte ends the key early.
void put_marks(key_bytes &key, const unsigned char *text) {
    constexpr uint32_t last_position = 255;
    uint32_t position = 1;
    bool pending = false;
    for (; *text; ++text) {
        if (is_thai_key_mark(*text)) {
            key.put(static_cast<unsigned char>(position < last_position ? position : 255));
            key.put(static_cast<unsigned char>(*text - 231 + 142));
            continue;
        }
        bool vowel = is_thai_leading_vowel(*text);
        if (position < last_position) position += vowel && pending ? 2 : 1;
        pending = vowel && !pending;
    }
}

byte_text terminated(const char *string) {
    const unsigned char *bytes = reinterpret_cast<const unsigned char *>(string);
    return {bytes, bytes + strlen(string)};
}

} // namespace

int32_t compare_thai(byte_text text_a, byte_text text_b) {
    thai_place a(text_a), b(text_b);
    int32_t by_marks = 0;
    for (;;) {
        int32_t x = a.byte(), y = b.byte();
        if (x == y && x != 0) {
            a.next();
            b.next();
            continue;
        }
        bool mark_a = a.at_mark(), mark_b = b.at_mark();
        if (!mark_a && !mark_b) break;
        if (by_marks == 0) by_marks = mark_a && mark_b ? x - y : mark_a ? 1 : -1;
        if (mark_a) a.next();
        if (mark_b) b.next();
    }
    if (a.byte() == 0) return b.only_spaces_left() ? by_marks : -1;
    if (b.byte() == 0) return a.only_spaces_left() ? by_marks : 1;
    return compare_syllables(a, b);
}

int32_t write_thai_key(unsigned char *out, size_t room, const unsigned char *text) {
    key_bytes key{out, room};
    put_base(key, text);
    put_marks(key, text);
    size_t length = key.count;
    key.put(0);
    return static_cast<int32_t>(length);
}

composite thai_composite(const unsigned char *string) {
    size_t length = strlen(reinterpret_cast<const char *>(string));
    if (length == 0) return not_composite;
    uint32_t last = string[length - 1];
    if (is_thai_leading_vowel(last) || is_thai_mark(last)) return composite_prefix;
    return is_thai_consonant(last) ? whole_composite : not_composite;
}

} // namespace vel

using namespace vel;

int32_t vel_thaismocoll(vel_locale *locale, const char *s1, const char *s2) {
    return tuk_vel_thaismoncoll(locale, s1, -1, s2, -1);
}

int32_t tuk_vel_thaismoncoll(vel_locale *locale, const char *s1, int32_t len1, const char *s2,
                             int32_t len2) {
    if ((len1 == -1) != (len2 == -1)) return fail_zero(locale, VEL_EMIXEDLEN);
    return compare_thai(terminated(s1), terminated(s2));
}

int32_t vel_thaismoxfrm(vel_locale *, char *out, const char *string, int32_t size) {
    size_t room = out && size > 0 ? static_cast<size_t>(size) : 0;
    if (room > max_copied_key) room = max_copied_key;
    return write_thai_key(reinterpret_cast<unsigned char *>(out), room,
                          reinterpret_cast<const unsigned char *>(string));
}
