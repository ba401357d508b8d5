#include "our_locale.h"

#include <map>
#include <stdexcept>

#include "vels/locale.h"
#include "vels/registry.h"

namespace bench {
namespace {

std::string specification(const std::string &posix_name, code_set set) {
    constexpr const char *names[] = {"utf-8", "euc-jp", "shift_jis"};
    return posix_name + "." + names[static_cast<int>(set)];
}

} // namespace

vel_locale *load_locale(const std::string &posix_name, code_set set) {
    std::string wanted = specification(posix_name, set);
    vel_locale *locale = nullptr;
    if (vel_lc_load(&locale, wanted.c_str(), -1, nullptr) == 0) return locale;
    int number = *reinterpret_cast<const int32_t *>(locale);
    vel_lc_unload(locale);
    throw std::runtime_error("vel_lc_load of " + wanted + ": error " + std::to_string(number));
}

vel_locale *our_locale(const std::string &posix_name, code_set set) {
    static std::map<std::string, vel_locale *> loaded;
    vel_locale *&locale = loaded[specification(posix_name, set)];
    if (!locale) locale = load_locale(posix_name, set);
    return locale;
}

void cache_code_set_names() {
    int32_t error = 0;
    if (!vel_cache_registry(&error, nullptr)) throw std::runtime_error("no code-set registry");
}

} // namespace bench
