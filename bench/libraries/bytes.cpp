// The order of bytes, which is that of no language: the limit of what comparing can reach.
#include "ordering.h"

namespace bench {

library bytes() {
    auto order = [](const word_list_ptr &list) {
        return comparing(list, terminated(*list),
                         [](const char *a, const char *b) { return std::strcmp(a, b); });
    };
    return {.name = "bytes", .order = order};
}

} // namespace bench
