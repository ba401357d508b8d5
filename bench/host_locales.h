// Locales of the host's C library, compiled on first use from the same sources that ours come from.
#pragma once

#include "sample.h"

#include <locale.h>
#include <string>

namespace bench {

// Makes the folder of compiled locales the one that the host's library looks into.
void use_host_locale_folder();

// Compiles a locale such as "de_DE" unless it is there. Throws when localedef cannot.
void compile_host_locale(const std::string &name, code_set set);

// The name under which newlocale finds it.
std::string host_locale_name(const std::string &name, code_set set);

// The locale for a text, kept for the rest of the run.
locale_t host_locale_for(const sample &in);

} // namespace bench
