// Stepping from character to character and addressing one by its number.
#include <cstring>

#include "charmap/character.h"
#include "ext/memory.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

[[gnu::cold, gnu::noinline]] char *cold_fail(vel_locale *locale, int32_t number) {
    return fail_null(locale, number);
}

char *as_position(const unsigned char *at) {
    return const_cast<char *>(reinterpret_cast<const char *>(at));
}

// The position of character `index`, or null.
char *find_index(vel_locale *locale, const char *string, int32_t index) {
    if (index < 0) return cold_fail(locale, VEL_ENOPRINT);
    if (!string) return cold_fail(locale, VEL_EFAULT);
    if (locale->single_byte) return const_cast<char *>(string) + index;
    const sealed_table &table = characters_of(locale);
    const unsigned char *at = as_bytes(string);
    for (; index > 0; --index) {
        walk_end end = table.walk(at);
        if (!is_end(end.cell)) return cold_fail(locale, VEL_EILSEQ);
        at += end.used;
    }
    return as_position(at);
}

} // namespace
} // namespace vel

using namespace vel;

char *vel_full_mbsnext(vel_locale *locale, const char *bytes) {
    const unsigned char *at = as_bytes(bytes);
    walk_end end = characters_of(locale).walk(at);
    if (!is_end(end.cell)) [[unlikely]]
        return cold_fail(locale, VEL_EILSEQ);
    return as_position(at + end.used);
}

char *tuk_vel_full_mbsnext(vel_locale *locale, const char *bytes, int32_t n) {
    if (n < 1) [[unlikely]]
        return cold_fail(locale, VEL_EINVAL);
    const unsigned char *at = as_bytes(bytes);
    walk_end end = characters_of(locale).walk(at, n);
    if (!is_end(end.cell)) [[unlikely]] {
        return cold_fail(locale, is_more(end.cell) ? VEL_EINVAL : VEL_EILSEQ);
    }
    return as_position(at + end.used);
}

char *vel_full_mbsprev(vel_locale *locale, const char *start, const char *position) {
    if (position <= start) return cold_fail(locale, VEL_EBADPOS);
    if (locale->single_byte) return const_cast<char *>(position) - 1;
    const char *previous = start;
    while (start < position) {
        ptrdiff_t rest = position - start;
        int32_t limit =
            rest < max_character_bytes ? static_cast<int32_t>(rest) : max_character_bytes;
        previous = start;
        start = tuk_vel_full_mbsnext(locale, start, limit);
        if (!start) return nullptr;
    }
    return const_cast<char *>(previous);
}

char *vel_full_getmbsi(vel_locale *locale, const char *string, int32_t index) {
    return find_index(locale, string, index);
}

char *vel_full_putmbsi(vel_locale *locale, char *string, int32_t index, const char *character) {
    char *position = find_index(locale, string, index);
    // A position that a single-byte set refuses keeps its number; elsewhere it is a missing one.
    if (!position && locale->single_byte) return nullptr;
    if (!position || !character) return cold_fail(locale, VEL_EFAULT);
    const char *next = locale->single_byte ? position + 1 : vel_full_mbsnext(locale, position);
    if (!next) return nullptr;
    const char *character_end = vel_full_mbsnext(locale, character);
    if (!character_end) return nullptr;
    size_t new_size = static_cast<size_t>(character_end - character);
    int32_t tail = vel_mbsbytes(locale, next);
    if (tail == 0) return nullptr;

    size_t total = new_size + static_cast<size_t>(tail);
    auto moved = make_host_array<char>(total);
    if (!moved) return cold_fail(locale, VEL_ENOMEM);
    memcpy(moved.get(), character, new_size);
    memcpy(moved.get() + new_size, next, static_cast<size_t>(tail));
    memcpy(position, moved.get(), total);
    return position;
}
