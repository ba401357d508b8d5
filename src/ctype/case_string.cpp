// The case of whole strings, in one pass.
//
// Text is mostly runs of ASCII, and in most locales ASCII letters map as in ASCII. Whether they do
// is asked of the table, once a call and only after enough ASCII has gone by to pay for the
// question (in Turkish, small i maps to a character of two bytes); then runs go a block at a time.
#include "charmap/spans.h"
#include "ctype/lookup.h"
#include "vels/ctype.h"

namespace vel {
namespace {

constexpr size_t ascii_before_asking = 48; // bytes or values

// Whether the characters below 0x80 map to the given case as ASCII does.
template <letter_case to> bool maps_ascii_plainly(const vel_locale *locale) {
    const sealed_table &cases = cases_of(locale);
    if (cases.shortest != 1) return false;
    for (vel_wchar c = 0; c < 0x80; ++c) {
        uint32_t cell = cases.cells()[c];
        if (!is_end(cell)) return false;
        vel_wchar mapped = case_of<to>(locale, cell_value(cell));
        vel_wchar first = to == letter_case::upper ? 'a' : 'A';
        bool is_letter = c - first < 26;
        if ((mapped ? mapped : c) != (is_letter ? c ^ 0x20 : c)) return false;
    }
    return true;
}

// Decides whether blocks of ASCII may be taken at once: never, before `ascii_before_asking`.
template <letter_case to> class ascii_runs {
public:
    explicit ascii_runs(const vel_locale *locale) : locale_(locale) {}

    // Called for each ASCII character that goes its own way.
    void saw_one() {
        if (--until_asked_ == 0) plain_ = maps_ascii_plainly<to>(locale_);
    }
    bool plain() const { return plain_; }
    static constexpr unsigned char first_letter = to == letter_case::upper ? 'a' : 'A';

private:
    const vel_locale *locale_;
    uint32_t until_asked_ = ascii_before_asking;
    bool plain_ = false;
};

// How far the text has been mapped.
struct cursor {
    const unsigned char *in;
    unsigned char *out;
};

// Maps the character that a walk of the case table has ended with.
template <letter_case to>
[[gnu::always_inline]] inline cursor map_walked(vel_locale *locale, cursor at,
                                                const valued_walk &walked, bool is_utf8) {
    vel_wchar mapped = case_of<to>(locale, cell_value(walked.cell));
    vel_wchar value = mapped ? mapped : walked.value;
    at.in += walked.used;
    uint32_t length = is_utf8 ? utf8_length(value) : 0;
    if (!mapped) length = static_cast<uint32_t>(walked.used);
    if (length) {
        put_packed(at.out, value, length);
        at.out += length;
    } else {
        at.out += put_mapped(locale, mapped, at.out);
    }
    return at;
}

// Four bytes as a packed value, on machines of either byte order.
inline vel_wchar load_packed(const unsigned char *in) {
    return static_cast<vel_wchar>(in[0]) << 24 | static_cast<vel_wchar>(in[1]) << 16 |
           static_cast<vel_wchar>(in[2]) << 8 | in[3];
}

// Copies characters of three bytes, four at a time, while none of them changes its case.
inline cursor copy_caseless(const sealed_table &cases, cursor at, const unsigned char *end) {
    constexpr uint32_t caseless = cell_end; // with case index 0
    while (end - at.in >= 13) {             // the last load has a byte to spare
        uint32_t other = 0;
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            other |= cases.find_quickly(load_packed(at.in + 3 * i) >> 8) ^ caseless;
        }
        if (other) break;
        memmove(at.out, at.in, 12);
        at.in += 12;
        at.out += 12;
    }
    return at;
}

// Maps UTF-8 characters of one length to others of that length. Stops before anything else: what
// follows is another length, does not map so simply, or is invalid.
template <letter_case to, uint32_t length>
cursor map_run(const vel_locale *locale, cursor at, const unsigned char *end) {
    constexpr unsigned char lead = length == 2 ? 0xC0 : 0xE0;
    const sealed_table &cases = cases_of(locale);
    const case_pair *pairs = locale->ctype.pairs; // no store here changes it
    while (end - at.in >= static_cast<ptrdiff_t>(length) &&
           (at.in[0] & (lead | lead >> 1)) == lead) {
        vel_wchar value = static_cast<vel_wchar>(at.in[0] << 8 | at.in[1]);
        if (length == 3) value = value << 8 | at.in[2];
        uint32_t cell = cases.find_quickly(value);
        if (!is_end(cell)) break;
        vel_wchar mapped = case_in<to>(pairs[cell_value(cell)]);
        if (mapped) value = mapped;
        if (utf8_length(value) != length) break;
        put_packed(at.out, value, length);
        at.in += length;
        at.out += length;
        if (length == 3 && !mapped) at = copy_caseless(cases, at, end);
    }
    return at;
}

inline bool is_ascii_word(const unsigned char *in) {
    uint64_t word;
    memcpy(&word, in, sizeof word);
    return (word & 0x8080808080808080) == 0;
}

// Maps the n bytes before the terminator or a window's end. Stops before a character that is
// invalid or that the span does not hold whole.
template <letter_case to>
cursor map_span(vel_locale *locale, ascii_runs<to> &runs, cursor at, size_t n) {
    const sealed_table &cases = cases_of(locale);
    const bool is_utf8 = characters_of(locale).shape == table_shape::utf8;
    const unsigned char *end = at.in + n;
    while (at.in < end) {
        size_t left = static_cast<size_t>(end - at.in);
        if (*at.in < 0x80) {
            if (!runs.plain()) {
                runs.saw_one();
            } else if (left >= 8 && is_ascii_word(at.in)) {
                size_t run = kernels().flip_ascii(at.in, left, at.out, runs.first_letter);
                at.in += run;
                at.out += run;
                continue;
            } else {
                *at.out++ = flip_letter(*at.in++, runs.first_letter);
                continue;
            }
        }
        if (is_utf8) {
            const unsigned char *before = at.in;
            at = *at.in < 0xE0 ? map_run<to, 2>(locale, at, end) : map_run<to, 3>(locale, at, end);
            if (at.in != before) continue;
        }
        valued_walk walked = walk_value(cases, at.in, left);
        if (!is_end(walked.cell)) break;
        at = map_walked<to>(locale, at, walked, is_utf8);
    }
    return at;
}

// One character that no span holds whole; false when it is invalid.
template <letter_case to> bool map_one(vel_locale *locale, cursor &at) {
    valued_walk walked = walk_value(cases_of(locale), at.in, max_character_bytes);
    if (!is_end(walked.cell)) return false;
    at = map_walked<to>(locale, at, walked, false);
    return true;
}

// By the flat table of a single-byte code set.
int32_t map_bytes(const unsigned char *table, unsigned char *out, const unsigned char *in) {
    int32_t count = 0;
    for (; in[count]; ++count) out[count] = table[in[count]];
    out[count] = 0;
    return count;
}

template <letter_case to> const unsigned char *flat_table(const vel_locale *locale) {
    return to == letter_case::upper ? locale->byte_upper : locale->byte_lower;
}

template <letter_case to> int32_t map_string(vel_locale *locale, char *text, const char *string) {
    cursor at = {as_bytes(string), as_bytes(text)};
    if (const unsigned char *flat = flat_table<to>(locale)) return map_bytes(flat, at.out, at.in);
    const sealed_table &table = characters_of(locale);
    ascii_runs<to> runs(locale);
    for (;;) {
        at = map_span<to>(locale, runs, at, span_before_terminator(table, at.in, text_window));
        if (at_terminator(table, at.in)) break;
        if (!map_one<to>(locale, at)) return fail(locale, VEL_EILSEQ);
    }
    put_terminator(table, at.out);
    return static_cast<int32_t>(at.out - as_bytes(text));
}

int32_t map_wide_bytes(vel_locale *locale, const unsigned char *table, vel_wchar *out,
                       const vel_wchar *in) {
    for (; *in; ++in, ++out) {
        if (*in > 0xFF) return fail(locale, VEL_EILSEQ);
        *out = table[*in];
    }
    *out = 0;
    return 0;
}

template <letter_case to>
int32_t map_wide_string(vel_locale *locale, vel_wchar *out, const vel_wchar *in) {
    if (const unsigned char *flat = flat_table<to>(locale)) {
        return map_wide_bytes(locale, flat, out, in);
    }
    const sealed_table &cases = cases_of(locale);
    ascii_runs<to> runs(locale);
    while (size_t n = kernels().wide_run(in, wide_window)) {
        for (const vel_wchar *end = in + n; in < end;) {
            if (*in < 0x80 && runs.plain()) {
                size_t run =
                    kernels().flip_wide(in, static_cast<size_t>(end - in), out, runs.first_letter);
                in += run;
                out += run;
                if (in == end) break;
            } else if (*in < 0x80) {
                runs.saw_one();
            }
            uint32_t cell = cases.find_code(*in);
            if (!is_end(cell)) return fail(locale, VEL_EILSEQ);
            vel_wchar mapped = case_of<to>(locale, cell_value(cell));
            *out++ = mapped ? mapped : *in;
            ++in;
        }
    }
    *out = 0;
    return 0;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_tombsupper(vel_locale *locale, char *out, const char *string) {
    return map_string<letter_case::upper>(locale, out, string);
}

int32_t vel_tombslower(vel_locale *locale, char *out, const char *string) {
    return map_string<letter_case::lower>(locale, out, string);
}

int32_t vel_towcsupper(vel_locale *locale, vel_wchar *out, const vel_wchar *wide) {
    return map_wide_string<letter_case::upper>(locale, out, wide);
}

int32_t vel_towcslower(vel_locale *locale, vel_wchar *out, const vel_wchar *wide) {
    return map_wide_string<letter_case::lower>(locale, out, wide);
}

int32_t vel_case_conv_outbuflen(vel_locale *locale, int32_t n) {
    double factor = locale->case_growth;
    int32_t whole = static_cast<int32_t>(factor);
    if (factor - whole != 0.0) ++whole;
    return static_cast<int32_t>(static_cast<uint32_t>(whole) * static_cast<uint32_t>(n));
}
