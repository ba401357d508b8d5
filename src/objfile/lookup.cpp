#include "objfile/lookup.h"

namespace vel {

found vel_trie_find_key(const sealed_table &table, const vel_mbkey &key) {
    walk_end end = table.walk(key.bytes, static_cast<int32_t>(key.length));
    bool ok = is_end(end.cell) && end.used == static_cast<int32_t>(key.length);
    return {ok, cell_value(end.cell), end.used};
}

found vel_trie_find_reversed(void *context, const sealed_table &table, const char *bytes,
                             int32_t available, int32_t width) {
    if (available < width) {
        set_error(context, VEL_EINVAL);
        return {false, 0, 0};
    }
    char turned[max_character_bytes];
    for (int32_t i = 0; i < width; ++i) turned[i] = bytes[width - 1 - i];
    return vel_trie_find_n(context, table, turned, width);
}

} // namespace vel
