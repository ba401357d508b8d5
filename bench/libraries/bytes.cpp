// The order of bytes, which is that of no language: the limit of what comparing can reach. In the
// rows of conversion, bytes that are copied as they are.
#include "converting.h"
#include "ordering.h"

namespace bench {

library bytes() {
    auto order = [](const word_list_ptr &list) {
        return comparing(list, terminated(*list),
                         [](const char *a, const char *b) { return std::strcmp(a, b); });
    };
    auto copy = [](const conversion_ptr &in) {
        return converting(in, [](const std::string &text, char *out, std::size_t) {
            std::memcpy(out, text.data(), text.size());
            return text.size();
        });
    };
    return {.name = "bytes", .order = order, .convert = copy};
}

} // namespace bench
