#include "host_locales.h"

#include "fresh_process.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace bench {
namespace {

namespace fs = std::filesystem;

const fs::path folder = BENCH_HOST_LOCALES;

} // namespace

void use_host_locale_folder() {
    fs::create_directories(folder);
    setenv("LOCPATH", folder.c_str(), 1);
}

std::string host_locale_name(const std::string &name, code_set set) {
    return name + "." + name_of(set);
}

void compile_host_locale(const std::string &name, code_set set) {
    fs::path target = folder / host_locale_name(name, set);
    if (fs::exists(target / "LC_IDENTIFICATION")) return; // the last file that localedef writes
    fs::path partial = target;
    partial += ".partial";
    fs::remove_all(partial);
    // SHIFT_JIS has no backslash, so that localedef warns, writes and still reports a failure.
    run_program({"localedef", "-c", "-i", name, "-f", name_of(set), partial.string()});
    if (!fs::exists(partial / "LC_CTYPE"))
        throw std::runtime_error("localedef makes no " + target.filename().string());
    fs::remove_all(target);
    fs::rename(partial, target);
}

locale_t host_locale(const std::string &name, code_set set) {
    static std::map<std::string, locale_t> opened;
    compile_host_locale(name, set);
    std::string full = host_locale_name(name, set);
    locale_t &locale = opened[full];
    if (!locale) locale = newlocale(LC_ALL_MASK, full.c_str(), nullptr);
    if (!locale) throw std::runtime_error("newlocale of " + full + " fails");
    return locale;
}

locale_t host_locale_for(language spoken, code_set set) {
    constexpr const char *names[] = {"en_US", "de_DE", "ru_RU", "ja_JP", "en_US"};
    return host_locale(names[static_cast<int>(spoken)], set);
}

} // namespace bench
