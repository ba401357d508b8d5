#include "rung.h"

#include <map>
#include <stdexcept>

#include "charmap/kernels.h"

namespace bench {

void use_rung(const std::string &name, char **) {
    using vel::kernel_rung;
    const std::map<std::string, kernel_rung> rungs = {{"scalar", kernel_rung::scalar},
                                                      {"sse", kernel_rung::sse},
                                                      {"avx2", kernel_rung::avx2},
                                                      {"avx512", kernel_rung::avx512}};
    auto found = rungs.find(name);
    if (found == rungs.end() || !vel::use_kernels(found->second))
        throw std::runtime_error("no rung " + name + " here");
}

} // namespace bench
