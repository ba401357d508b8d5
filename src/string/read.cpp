// Reading characters and lines from host streams.
#include <cstring>

#include "string/text_range.h"
#include "vels/string.h"

namespace vel {
namespace {

// A character as it came from a stream; `error` when it did not.
struct stream_character {
    unsigned char bytes[max_character_bytes]; // those read, also on failure
    int32_t length;
    int32_t error; // VEL_EEOF before the first byte, VEL_EINVAL behind it, VEL_EILSEQ

    vel_wchar value() const {
        vel_wchar packed = 0;
        for (int32_t i = 0; i < length; ++i) packed = packed << 8 | bytes[i];
        return packed;
    }
};

stream_character read_bytes(const vel_locale *locale, vel_get_byte get, void *stream) {
    const sealed_table &table = characters_of(locale);
    stream_character read{{}, 0, 0};
    uint32_t cell = 0;
    do {
        int32_t byte = get(stream);
        if (byte < 0) {
            read.error = read.length ? VEL_EINVAL : VEL_EEOF;
            return read;
        }
        uint32_t b = byte & 0xFF;
        cell = read.length ? table.step(cell, read.length, b) : table.cells()[b];
        read.bytes[read.length++] = static_cast<unsigned char>(b);
    } while (is_more(cell));
    if (!is_end(cell)) read.error = VEL_EILSEQ;
    return read;
}

// The same from a host stream, which says why it gave no byte. The end inside a character is an
// error of its own only for those who ask for values: who asks for bytes has got them.
enum class asked : bool { bytes, value };

stream_character read_stream(const vel_locale *locale, void *stream, asked wanted) {
    stream_character read = read_bytes(locale, _vel_ext_fgetc, stream);
    if (read.error == 0 || read.error == VEL_EILSEQ) return read;
    if (_vel_ext_feof(stream)) {
        if (wanted == asked::bytes) read.error = VEL_EEOF;
        return read;
    }
    read.error = _vel_ext_ferror(stream) ? VEL_EIO : VEL_EREAD;
    return read;
}

// The buffer of a line, in its units.
template <typename Unit> struct line_buffer {
    Unit *at;
    int32_t room;

    // False when they do not fit.
    bool put(const Unit *units, int32_t count) {
        if (count > room) return false;
        memcpy(at, units, static_cast<size_t>(count) * sizeof(Unit));
        at += count;
        room -= count;
        return true;
    }
};

bool put_character(line_buffer<unsigned char> &line, const stream_character &read) {
    return line.put(read.bytes, read.length);
}
bool put_character(line_buffer<vel_wchar> &line, const stream_character &read) {
    vel_wchar value = read.value();
    return line.put(&value, 1);
}

// The error number, or 0.
template <typename Unit>
int32_t read_line(const vel_locale *locale, line_buffer<Unit> line, void *stream) {
    constexpr bool wide = sizeof(Unit) != 1;
    const int32_t shortest = characters_of(locale).shortest;
    for (;;) {
        stream_character read = read_stream(locale, stream, wide ? asked::value : asked::bytes);
        if (read.error) return read.error;
        if (!put_character(line, read)) return VEL_E2BIG;
        if (read.value() == '\n' && read.length == shortest) break;
    }
    const Unit nothing[max_character_bytes] = {};
    return line.put(nothing, wide ? 1 : shortest) ? 0 : VEL_E2BIG;
}

template <typename Unit, typename Result>
Result *get_line(vel_locale *locale, line_buffer<Unit> line, void *stream, Result *buffer) {
    int32_t number = buffer ? read_line(locale, line, stream) : VEL_EFAULT;
    if (number) return fail_null(locale, number);
    return buffer;
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_getmb(vel_locale *locale, char *out, vel_get_byte get, void *stream, int32_t *length) {
    stream_character read = read_bytes(locale, get, stream);
    memcpy(out, read.bytes, static_cast<size_t>(read.length));
    if (read.error) return fail(locale, read.error);
    *length = read.length;
    return 0;
}

int32_t vel_full_fgetmb(vel_locale *locale, char *out, void *stream) {
    stream_character read = read_stream(locale, stream, asked::bytes);
    memcpy(out, read.bytes, static_cast<size_t>(read.length));
    return read.error ? fail(locale, read.error) : read.length;
}

vel_wchar vel_full_fgetwc(vel_locale *locale, void *stream) {
    stream_character read = read_stream(locale, stream, asked::value);
    if (read.error) set_error(locale, read.error);
    return read.error ? VEL_WEOF : read.value();
}

char *vel_fgetmbs(vel_locale *locale, char *buffer, int32_t nbytes, void *stream) {
    line_buffer<unsigned char> line{as_bytes(buffer), nbytes};
    return get_line(locale, line, stream, buffer);
}

vel_wchar *vel_fgetwcs(vel_locale *locale, vel_wchar *buffer, int32_t nvalues, void *stream) {
    return get_line(locale, line_buffer<vel_wchar>{buffer, nvalues}, stream, buffer);
}
