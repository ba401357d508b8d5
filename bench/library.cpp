#include "library.h"

namespace bench {

const std::vector<library> &libraries() {
    static const std::vector<library> all = {
        ours(),      host(),
#ifdef BENCH_WITH_ICU
        icu(),
#endif
#ifdef BENCH_WITH_UNISTRING
        unistring(),
#endif
#ifdef BENCH_WITH_UTF8PROC
        utf8proc(),
#endif
        bytes(),
    };
    return all;
}

} // namespace bench
