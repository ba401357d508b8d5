#include "objfile/text_reader.h"

#include <cstring>

#include "ext/block_read.h"
#include "ext/memory.h"
#include "objfile/hex.h"
#include "vels/host.h"

namespace vel {
namespace {

constexpr int exact_powers = 22; // 10 to this is the largest power of ten that a double holds

// A decimal number, locale-free and without the runtime's big-number machinery: what object files
// hold is a factor such as 2.5, of a few digits.
double parse_float(const char *text) {
    bool negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    double value = 0;
    int scale = 0;
    for (; is_digit(*text); ++text) value = value * 10 + (*text - '0');
    if (*text == '.') {
        for (++text; is_digit(*text); ++text, --scale) value = value * 10 + (*text - '0');
    }
    if (*text == 'e' || *text == 'E') {
        bool down = text[1] == '-';
        text += text[1] == '-' || text[1] == '+' ? 2 : 1;
        int exponent = 0;
        for (; is_digit(*text); ++text) {
            if (exponent < 1000) exponent = exponent * 10 + (*text - '0');
        }
        scale += down ? -exponent : exponent;
    }
    // In one step where a power of ten is exact, so that there is one rounding.
    while (scale != 0) {
        int step = scale < 0 ? -scale : scale;
        if (step > exact_powers) step = exact_powers;
        double power = 1;
        for (int i = 0; i < step; ++i) power *= 10;
        value = scale < 0 ? value / power : value * power;
        scale += scale < 0 ? step : -step;
    }
    return negative ? -value : value;
}

} // namespace

text_reader::text_reader(void *stream) : stream_(stream), blocks_(streams_are_default()) {}

int32_t text_reader::get_slowly(bool by_getc) {
    if (blocks_) return fetch(1) ? *cursor_++ : end_of_file;
    return by_getc ? _vel_ext_getc(stream_) : _vel_ext_fgetc(stream_);
}

void text_reader::unget(int32_t c) {
    if (c == end_of_file) return;
    blocks_ ? static_cast<void>(--cursor_) : static_cast<void>(_vel_ext_ungetc(c, stream_));
}

// Moves what is left, less than max_peek bytes, to the front, behind the byte that may still be
// pushed back, and reads on. A block that comes short is the last.
bool text_reader::fetch(size_t count) {
    if (!blocks_) return false;
    size_t left = static_cast<size_t>(end_ - cursor_);
    size_t kept = cursor_ != buffer_ ? 1 : 0;
    memmove(buffer_, cursor_ - kept, left + kept);
    cursor_ = buffer_ + kept;
    end_ = cursor_ + left;
    end_ += read_block(stream_, end_, block_size);
    return static_cast<size_t>(end_ - cursor_) >= count;
}

bool text_reader::gets(char *buffer, int32_t size) {
    if (!blocks_) return _vel_ext_fgets(buffer, size, stream_) != nullptr;
    size_t room = static_cast<size_t>(size) - 1;
    size_t length = 0;
    while (length < room && (cursor_ != end_ || fetch(1))) {
        size_t available = static_cast<size_t>(end_ - cursor_);
        size_t wanted = available < room - length ? available : room - length;
        const void *newline = memchr(cursor_, '\n', wanted);
        if (newline) {
            wanted = static_cast<size_t>(static_cast<const unsigned char *>(newline) - cursor_) + 1;
        }
        memcpy(buffer + length, cursor_, wanted);
        length += wanted;
        cursor_ += wanted;
        if (newline) break;
    }
    buffer[length] = '\0';
    return length > 0;
}

bool text_reader::gets_until(const char *line, int32_t size) {
    stack_or_heap<char, 128> piece(static_cast<size_t>(size));
    if (!piece) return false;
    while (gets(piece.data(), size)) {
        if (strcmp(piece.data(), line) == 0) return true;
    }
    return false;
}

// Only a place where gets would begin a piece counts: the start of a line, or any multiple of
// size-1 bytes into a longer one. So the line is looked for by its rare first character, and where
// it is found, the bytes before it say whether it may stand there. A match ends a line, so no byte
// is looked at twice for that.
bool text_reader::skip_to_line(const char *line, int32_t size) {
    size_t length = strlen(line);
    size_t piece = static_cast<size_t>(size) - 1;
    if (!blocks_ || length > piece) return gets_until(line, size);
    size_t column = 0; // of the cursor, in its piece
    auto column_at = [&](const unsigned char *place) {
        const unsigned char *start = place;
        while (start != cursor_ && start[-1] != '\n') --start;
        size_t offset = static_cast<size_t>(place - start);
        return (start == cursor_ ? column + offset : offset) % piece;
    };
    while (peek(length)) {
        unsigned char *beyond = end_ - length + 1; // the line cannot begin from here on
        unsigned char *place = cursor_;
        while (place != beyond) {
            size_t room = static_cast<size_t>(beyond - place);
            place = static_cast<unsigned char *>(memchr(place, line[0], room));
            if (!place) break;
            if (memcmp(place, line, length) == 0 && column_at(place) == 0) {
                cursor_ = place + length;
                return true;
            }
            ++place;
        }
        column = column_at(beyond);
        cursor_ = beyond;
    }
    cursor_ = end_;
    return false;
}

void vel_skip_space(text_reader &stream) {
    int32_t c = stream.get();
    while (is_space(c)) c = stream.get();
    stream.unget(c);
}

int32_t vel_read_int(text_reader &stream) {
    vel_skip_space(stream);
    int32_t c = stream.get();
    if (c == end_of_file) {
        stream.set_truncated();
        return 0;
    }
    bool negative = c == '-';
    bool number = is_digit(c) || c == '-' || c == '+';
    int64_t value = is_digit(c) ? c - '0' : 0;
    int32_t kept = 1;
    while (is_digit(c = stream.get())) {
        if (kept++ < 40 && value <= INT32_MAX) value = value * 10 + (c - '0');
    }
    stream.unget(c);
    if (!number) return 0;
    if (negative) return value > INT32_MAX ? INT32_MIN : static_cast<int32_t>(-value);
    return value > INT32_MAX ? INT32_MAX : static_cast<int32_t>(value);
}

namespace {

constexpr size_t longest_field = 10; // a separator and up to nine digits

// Takes the numbers straight from a block of one byte more than `count` longest fields; the bytes
// they took, or 0 when anything about them is unusual.
size_t take_ints(const unsigned char *start, int32_t *values, int32_t count) {
    const unsigned char *text = start;
    const unsigned char *end = start + longest_field * (static_cast<size_t>(count) - 1) + 1;
    for (int32_t i = 0; i < count; ++i) {
        while (text < end && is_space(*text)) ++text;
        int32_t value = 0;
        const unsigned char *digits = text;
        while (text < digits + 9 && is_digit(*text)) value = value * 10 + (*text++ - '0');
        if (text == digits || is_digit(*text) || text >= end) return 0;
        values[i] = value;
    }
    return static_cast<size_t>(text - start);
}

} // namespace

// The node lines of a table are four small numbers each, and there are tens of thousands of them.
size_t read_ints(text_reader &stream, int32_t *values, int32_t count) {
    const unsigned char *block = stream.peek(longest_field * static_cast<size_t>(count) + 1);
    size_t taken = block ? take_ints(block, values, count) : 0;
    stream.advance(taken);
    if (taken == 0) {
        for (int32_t i = 0; i < count; ++i) values[i] = vel_read_int(stream);
    }
    return taken;
}

double vel_read_float(text_reader &stream) {
    vel_skip_space(stream);
    char text[81];
    size_t length = 0;
    int32_t c = stream.get();
    while (length < sizeof text - 1 && (is_digit(c) || (c > 0 && strchr("Ee.-+", c)))) {
        text[length++] = static_cast<char>(c);
        c = stream.get();
    }
    stream.unget(c);
    text[length] = '\0';
    return parse_float(text);
}

uint32_t vel_read_hex(text_reader &stream, int32_t width) {
    uint32_t value = 0;
    if (const unsigned char *digits = stream.peek(static_cast<size_t>(width))) {
        if (decode_hex(digits, width, &value)) {
            stream.advance(static_cast<size_t>(width));
            return value;
        }
    }
    value = 0;
    for (int32_t i = 0; i < width; ++i) {
        int32_t c = stream.get();
        if (c == end_of_file) {
            stream.set_truncated();
            return value;
        }
        unsigned char digit = hex.value[c & 0xFF];
        value = (value << 4) + (digit == not_hex ? static_cast<uint32_t>(c) : digit);
    }
    return value;
}

namespace {

// Takes fields that follow one another straight from a block. How many that were.
int32_t take_hex16(const unsigned char *digits, uint16_t *values, int32_t count) {
    int32_t i = 0;
    while (i + 2 <= count && decode_hex16_pair(digits + 4 * i, values + i)) i += 2;
    for (uint32_t value; i < count && decode_hex(digits + 4 * i, 4, &value); ++i) {
        values[i] = static_cast<uint16_t>(value);
    }
    return i;
}

} // namespace

void read_hex16_run(text_reader &stream, uint16_t *values, int32_t count) {
    int32_t i = 0;
    if (const unsigned char *digits = stream.peek(static_cast<size_t>(count) * 4)) {
        i = take_hex16(digits, values, count);
        stream.advance(static_cast<size_t>(i) * 4);
    }
    for (; i < count; ++i) values[i] = static_cast<uint16_t>(vel_read_hex(stream, 4));
}

void read_hex16_fields(text_reader &stream, uint16_t *values, int32_t count) {
    constexpr size_t stretch = 1024;
    int32_t i = 0;
    while (i < count && !stream.truncated()) {
        // As many fields as the stretch holds in plain form, then one by the reader for anything.
        if (const unsigned char *text = stream.peek(stretch)) {
            const unsigned char *cursor = text;
            const unsigned char *last = text + stretch - 4;
            while (i < count) {
                while (cursor < last && is_space(*cursor)) ++cursor;
                int32_t room = static_cast<int32_t>((last - cursor + 3) / 4);
                int32_t taken = take_hex16(cursor, values + i, room < count - i ? room : count - i);
                if (taken == 0) break;
                cursor += 4 * taken;
                i += taken;
            }
            stream.advance(static_cast<size_t>(cursor - text));
        }
        if (i == count) return;
        vel_skip_space(stream);
        values[i++] = static_cast<uint16_t>(vel_read_hex(stream, 4));
    }
    memset(values + i, 0, static_cast<size_t>(count - i) * sizeof *values);
}

int32_t vel_read_hex_byte(text_reader &stream) {
    int32_t value = 0;
    for (int i = 0; i < 2; ++i) {
        int32_t c = stream.get_by_getc();
        if (c == end_of_file) stream.set_truncated();
        unsigned char digit = c == end_of_file ? not_hex : hex.value[c & 0xFF];
        value = value << 4 | (digit == not_hex ? 0 : digit);
    }
    return value;
}

void vel_read_token(char *buffer, int32_t size, text_reader &stream) {
    int32_t length = 0;
    while (length < size - 1) {
        int32_t c = stream.get_by_getc();
        if (c == end_of_file) break;
        if (is_space(c)) {
            stream.unget(c);
            break;
        }
        buffer[length++] = static_cast<char>(c);
    }
    buffer[length] = '\0';
}

} // namespace vel
