#include "rung.h"

#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace bench {

void use_rung(const std::string &, char **arguments) {
    std::string other = std::filesystem::read_symlink("/proc/self/exe").string() + "_rung";
    execv(other.c_str(), arguments);
    throw std::runtime_error(other + " cannot be started");
}

} // namespace bench
