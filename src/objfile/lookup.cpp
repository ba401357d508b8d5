#include "objfile/lookup.h"

namespace vel {

found vel_trie_find_key(const sealed_table &table, const vel_mbkey &key) {
    walk_end end = table.walk(key.bytes, static_cast<int32_t>(key.length));
    bool ok = is_end(end.cell) && end.used == static_cast<int32_t>(key.length);
    return {ok, cell_value(end.cell), end.used};
}

} // namespace vel
