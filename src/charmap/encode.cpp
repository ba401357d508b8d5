// Encoding wide values as strings.
#include "charmap/spans.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// How the values of a string become bytes. `length` is what a value takes of the output, by its
// magnitude alone; `put` writes it, or fails; `run` does both for as many values as it can.

struct table_encoding {
    explicit table_encoding(const sealed_table &t) : table(t), state(t) {}

    const sealed_table &table;
    span_state state;

    int32_t length(vel_wchar value) const { return table.code_bytes(value); }
    bool put(vel_wchar value, unsigned char *out) const {
        return put_character(table, value, out) != 0;
    }
    span_progress run(const vel_wchar *in, size_t n, unsigned char *out, size_t room) {
        return kernels().of(table).encode(state, in, n, out, room);
    }
};

inline span_progress run_bytes(const vel_wchar *in, size_t n, unsigned char *out, size_t room) {
    size_t count = kernels().narrow(in, smaller(n, room), out);
    return {count, count};
}

// A single-byte code set as the general functions treat it: values are not checked.
struct low_byte_encoding {
    const sealed_table &table;

    int32_t length(vel_wchar value) const { return table.code_bytes(value); }
    bool put(vel_wchar value, unsigned char *out) const {
        *out = static_cast<unsigned char>(value);
        return true;
    }
    span_progress run(const vel_wchar *in, size_t n, unsigned char *out, size_t room) const {
        return run_bytes(in, n, out, room);
    }
};

// The same as the single-byte functions treat it: one byte for each value, which has to fit.
struct byte_encoding {
    const sealed_table &table;

    int32_t length(vel_wchar) const { return 1; }
    bool put(vel_wchar value, unsigned char *out) const {
        if (value > 0xFF) return false;
        *out = static_cast<unsigned char>(value);
        return true;
    }
    span_progress run(const vel_wchar *in, size_t n, unsigned char *out, size_t room) const {
        return run_bytes(in, n, out, room);
    }
};

constexpr int32_t terminated = -1;

template <typename Encoding>
int32_t encode(vel_locale *locale, char *text, const vel_wchar *in, int32_t nvalues,
               int32_t max_bytes) {
    Encoding encoding{characters_of(locale)};
    unsigned char *out = as_bytes(text);
    int32_t written = 0;
    size_t left = nvalues > 0 ? static_cast<size_t>(nvalues) : 0;
    for (;;) {
        int32_t room = max_bytes - written;
        if (nvalues != terminated && left == 0) return written;
        if (room <= 0) return written;
        size_t span = left;
        if (nvalues == terminated) {
            size_t window = smaller(static_cast<size_t>(room), wide_window);
            span = kernels().wide_run(in, window);
        }
        span_progress done = encoding.run(in, span, out + written, static_cast<size_t>(room));
        in += done.read;
        left -= done.read;
        written += static_cast<int32_t>(done.written);
        if (nvalues != terminated && left == 0) return written;

        vel_wchar value = *in;
        int32_t length = encoding.length(value);
        if (length > max_bytes - written) return written;
        if (nvalues == terminated && value == 0) {
            put_terminator(encoding.table, out + written);
            return written;
        }
        if (!encoding.put(value, out + written)) return fail(locale, VEL_EILSEQ);
        written += length;
        ++in;
        --left;
    }
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_is_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide, int32_t max_bytes) {
    return encode<byte_encoding>(locale, out, wide, terminated, max_bytes);
}

int32_t is_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide, int32_t max_bytes) {
    return encode<byte_encoding>(locale, out, wide, terminated, max_bytes);
}

int32_t tuk_vel_is_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide, int32_t nvalues,
                            int32_t max_bytes) {
    return encode<byte_encoding>(locale, out, wide, nvalues, max_bytes);
}

int32_t vel_full_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide, int32_t max_bytes) {
    return tuk_vel_full_wcstombs(locale, out, wide, terminated, max_bytes);
}

int32_t tuk_vel_full_wcstombs(vel_locale *locale, char *out, const vel_wchar *wide, int32_t nvalues,
                              int32_t max_bytes) {
    if (locale->single_byte) {
        return encode<low_byte_encoding>(locale, out, wide, nvalues, max_bytes);
    }
    return encode<table_encoding>(locale, out, wide, nvalues, max_bytes);
}
