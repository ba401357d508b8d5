// Looking a character up in a sealed table: one walk with several faces, and the error number that
// each stores when there is no such character.
#pragma once

#include "ext/error.h"
#include "objfile/sealed.h"

namespace vel {

// What a look-up found: nothing, or a 16-bit value. `used` counts the bytes looked at, the one that
// made the walk fail included.
struct found {
    bool ok;
    uint16_t value;
    int32_t used;

    explicit operator bool() const { return ok; }
};

inline const unsigned char *as_bytes(const char *text) {
    return reinterpret_cast<const unsigned char *>(text);
}

// The value of a key that ends exactly; a miss stores no number.
found vel_trie_find_key(const sealed_table &table, const vel_mbkey &key);

// The value of the character at `bytes`. VEL_EILSEQ for an invalid one.
inline found vel_trie_find(void *context, const sealed_table &table, const char *bytes) {
    walk_end end = table.walk(as_bytes(bytes));
    if (is_end(end.cell)) return {true, cell_value(end.cell), end.used};
    set_error(context, VEL_EILSEQ);
    return {false, 0, end.used};
}

// The same within n bytes. VEL_EINVAL when n is below 1 or the character does not end within them.
inline found vel_trie_find_n(void *context, const sealed_table &table, const char *bytes,
                             int32_t n) {
    if (n < 1) {
        set_error(context, VEL_EINVAL);
        return {false, 0, 0};
    }
    walk_end end = table.walk(as_bytes(bytes), n);
    if (is_end(end.cell)) return {true, cell_value(end.cell), end.used};
    set_error(context, is_more(end.cell) ? VEL_EINVAL : VEL_EILSEQ);
    return {false, 0, end.used};
}

// The same for callers that do not ask how long the character is.
inline found vel_trie_find_value(void *context, const sealed_table &table, const char *bytes) {
    return vel_trie_find(context, table, bytes);
}
inline found vel_trie_find_value_n(void *context, const sealed_table &table, const char *bytes,
                                   int32_t n) {
    return vel_trie_find_n(context, table, bytes, n);
}

// The value of the character with this wide value. VEL_EILSEQ when there is none.
inline found vel_trie_find_code(void *context, const sealed_table &table, vel_wchar code) {
    uint32_t cell = table.find_code(code);
    if (is_end(cell)) return {true, cell_value(cell), table.code_bytes(code)};
    set_error(context, VEL_EILSEQ);
    return {false, 0, 0};
}

// The bytes of the character at `bytes`, or 0 with VEL_EILSEQ.
inline int32_t vel_trie_char_length(void *context, const sealed_table &table, const char *bytes) {
    found character = vel_trie_find(context, table, bytes);
    return character ? character.used : 0;
}

} // namespace vel
