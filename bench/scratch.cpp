#include "scratch.h"

#include <cstring>

namespace bench {
namespace {

alignas(4096) char memory[2][scratch_bytes];

} // namespace

void *scratch(place where) {
    return memory[static_cast<int>(where)];
}

void spoil_scratch() {
    std::memset(memory, 0xEE, sizeof memory);
}

} // namespace bench
