#include "string/walk.h"

#include "charmap/spans.h"

namespace vel {
namespace {

// The bytes, at most `limit`, in which only one-byte null characters can stand; see
// span_before_terminator for what follows them.
size_t span_at(const sealed_table &table, const unsigned char *at, const unsigned char *end,
               size_t limit) {
    if (!end) return span_before_terminator(table, at, limit);
    return is_end(table.cells()[0]) ? smaller(static_cast<size_t>(end - at), limit) : 0;
}

walked<unsigned char> walk_single_bytes(byte_range text, size_t most) {
    size_t size = static_cast<size_t>(text.length);
    if (text.terminated()) {
        const void *zero = memchr(text.begin, 0, smaller(most, PTRDIFF_MAX));
        size = zero ? static_cast<size_t>(static_cast<const unsigned char *>(zero) - text.begin)
                    : most;
    }
    size = smaller(size, most);
    return {text.begin + size, size, 0};
}

} // namespace

// A span of as many bytes as characters are left holds no more of them than that: what remains
// shrinks by the length of the characters each time.
walked<unsigned char> walk(const vel_locale *locale, byte_range text, size_t most) {
    if (locale->single_byte) return walk_single_bytes(text, most);
    const sealed_table &table = characters_of(locale);
    count_span *count = kernels().of(table).count;
    span_state state(table);
    const unsigned char *at = text.begin;
    size_t characters = 0;
    while (characters < most) {
        size_t limit = smaller(most - characters, text_window);
        if (size_t span = span_at(table, at, text.end(), limit)) {
            span_progress done = count(state, at, span);
            at += done.read;
            characters += done.written;
            if (characters == most) break;
        }
        int32_t left = text.terminated() ? -1 : static_cast<int32_t>(text.end() - at);
        stepper<unsigned char> one(locale, {at, left});
        valued_walk here = one.peek();
        if (!here.used) return {at, characters, one.error()};
        at += here.used;
        ++characters;
    }
    return {at, characters, 0};
}

walked<vel_wchar> walk(const vel_locale *, wide_range text, size_t most) {
    size_t length = 0;
    if (!text.terminated()) {
        length = smaller(static_cast<size_t>(text.length), most);
        return {text.begin + length, length, 0};
    }
    while (length < most) {
        size_t run = kernels().wide_run(text.begin + length, smaller(most - length, wide_window));
        if (run == 0) break;
        length += run;
    }
    return {text.begin + length, length, 0};
}

} // namespace vel
