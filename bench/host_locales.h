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

// Such a locale, compiled if need be and kept for the rest of the run.
locale_t host_locale(const std::string &name, code_set set);
// The one for texts of a language.
locale_t host_locale_for(language spoken, code_set set);
inline locale_t host_locale_for(const sample &in) {
    return host_locale_for(in.spoken, in.set);
}

// Makes a locale the one of this thread, as the functions want that take no locale. None: nothing
// changes.
class thread_locale {
public:
    explicit thread_locale(locale_t locale) : before_(uselocale(locale)) {}
    ~thread_locale() { uselocale(before_); }
    thread_locale(const thread_locale &) = delete;
    thread_locale &operator=(const thread_locale &) = delete;

private:
    locale_t before_;
};

} // namespace bench
