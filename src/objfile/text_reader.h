// Token readers over a host stream: the ground of every object-file loader.
#pragma once

#include "vels/types.h"

namespace vel {

constexpr int32_t end_of_file = -1;

// A host stream being read. While the stream hooks are the defaults, blocks are fetched; otherwise
// every byte comes from the hooks. A block may be fetched ahead of what was asked for, so a stream
// given to a reader is read on only through it.
class text_reader {
public:
    explicit text_reader(void *stream);
    text_reader(const text_reader &) = delete;
    text_reader &operator=(const text_reader &) = delete;

    // The next byte, or end_of_file; through the fgetc hook.
    int32_t get() { return cursor_ != end_ ? *cursor_++ : get_slowly(false); }
    // The same through the getc hook.
    int32_t get_by_getc() { return cursor_ != end_ ? *cursor_++ : get_slowly(true); }
    // Pushes back the byte that was read last; end_of_file is ignored.
    void unget(int32_t c);
    // A line as fgets gives it: at most size-1 bytes, the newline kept. False at the end of file.
    bool gets(char *buffer, int32_t size);
    // Reads lines as gets does with this size until one of them equals `line`, newline included.
    // False at the end of file.
    bool skip_to_line(const char *line, int32_t size);

    // The next `count` bytes when they can be looked at in place, else null: a caller then reads
    // byte by byte. At most max_peek bytes.
    static constexpr size_t max_peek = 2048;
    const unsigned char *peek(size_t count) {
        if (static_cast<size_t>(end_ - cursor_) >= count || fetch(count)) return cursor_;
        return nullptr;
    }
    void advance(size_t count) { cursor_ += count; }

    // True once the stream ended where a token reader needed a character: what it gave then is not
    // to be trusted. (White space skipped up to the end of the file does not count.)
    bool truncated() const { return truncated_; }
    void set_truncated() { truncated_ = true; }

private:
    // Blocks are asked for whole, so that the C library puts them where they are wanted.
    static constexpr size_t block_size = 32 * 1024;

    int32_t get_slowly(bool by_getc);
    bool fetch(size_t count);
    bool gets_until(const char *line, int32_t size);

    void *stream_;
    bool blocks_;
    bool truncated_ = false;
    unsigned char *cursor_ = buffer_;
    unsigned char *end_ = buffer_;
    unsigned char buffer_[block_size + max_peek + 1];
};

// The white space and digits of the C locale, so that an object reads the same in every host.
inline bool is_space(int32_t c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
inline bool is_digit(int32_t c) {
    return c >= '0' && c <= '9';
}

// Reads while there is white space and pushes the first other character back.
void vel_skip_space(text_reader &stream);
// Skips white space, then reads an optional first character (a sign) and decimal digits, 40
// characters in all; further digits are thrown away. Clamped to 32 bits.
int32_t vel_read_int(text_reader &stream);
// `count` such integers, at most 8, one after the other. Returns how many bytes that took when they
// stood in the block in plain form, else 0.
size_t read_ints(text_reader &stream, int32_t *values, int32_t count);
// Skips white space, then reads up to 80 characters of a floating number in the C notation,
// whatever the host's locale.
double vel_read_float(text_reader &stream);
// Exactly `width` hexadecimal digits, at most 8. Any other character adds its own code: the line
// that ends a run list is read as three fields of which the last swallows the newline.
uint32_t vel_read_hex(text_reader &stream, int32_t width);
// Two hexadecimal digits, the first the high nibble; any other character counts as 0.
int32_t vel_read_hex_byte(text_reader &stream);
// `count` fields of four hexadecimal digits without anything between them; at most 256.
void read_hex16_run(text_reader &stream, uint16_t *values, int32_t count);
// `count` fields of four hexadecimal digits, each with white space before it.
void read_hex16_fields(text_reader &stream, uint16_t *values, int32_t count);
// Reads until white space, which is pushed back, or size-1 characters.
void vel_read_token(char *buffer, int32_t size, text_reader &stream);

} // namespace vel
