// Choosing the kernels. Only a program that is linked with the library's archive can, so there are
// two of this program: one on the shared library, as hosts use it, and one on the archive.
#pragma once

#include <string>

namespace bench {

// Throws when there is no such rung. May replace this process by the other program, which is
// started with the same arguments.
void use_rung(const std::string &name, char **arguments);

} // namespace bench
