// Locales of our own, as rows use them.
#pragma once

#include "sample.h"

#include <string>

#include "vels/types.h"

namespace bench {

// Loads the locale of a POSIX name such as "de_DE". Throws when it does not load.
vel_locale *load_locale(const std::string &posix_name, code_set set);

// The same, kept for the rest of the run.
vel_locale *our_locale(const std::string &posix_name, code_set set);

// Once a program is going to open many locales.
void cache_code_set_names();

} // namespace bench
