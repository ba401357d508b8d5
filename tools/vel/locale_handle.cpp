#include "vel/locale_handle.h"

#include <filesystem>

#include <fmt/format.h>

#include "common/locale_name.h"
#include "vel/failure.h"
#include "vel/installation.h"
#include "vel/search_log.h"

namespace vel_tool {
namespace {

constexpr const char *name_variables[] = {"VEL_ALL",      "VEL_CTYPE",    "VEL_COLLATE",
                                          "VEL_NUMERIC",  "VEL_MONETARY", "VEL_TIME",
                                          "VEL_MESSAGES", "VEL_LANG"};

struct advice {
    int32_t error;
    const char *text;
};

constexpr advice advices[] = {
    {VEL_EBADFILE, "the file is damaged or no locale object; compile it again with velc"},
    {VEL_EVERSION, "the file has another format version; compile it again with this velc"},
    {VEL_ECODESET, "its categories have different code sets; name locales of one code set"},
    {VEL_EBADLEN, "the name is too long"},
    {VEL_ENOFILE, "the file is damaged; compile it again with velc"},
    {VEL_ECALENDAR, "the file names an unknown calendar; compile it again with velc"},
};

std::string subject(const std::string &name) {
    if (!name.empty()) return fmt::format("cannot load locale '{}'", name);
    for (const char *variable : name_variables) {
        std::string value = search_log::environment(variable);
        if (!value.empty()) {
            return fmt::format("cannot load the locale of the environment ({}={})", variable,
                               value);
        }
    }
    return "cannot load the default locale";
}

bool any_exists(const std::vector<std::string> &directories) {
    for (const std::string &directory : directories) {
        std::error_code ignored;
        if (std::filesystem::is_directory(directory, ignored)) return true;
    }
    return false;
}

bool codeset_is_unknown(const std::string &name) {
    auto parsed = tools::parse_locale_name(name);
    return parsed && !parsed->codeset.empty() && !codeset_number(parsed->codeset);
}

std::string explain_not_found(const std::string &name) {
    std::string tried = search_log::failed_paths();
    if (tried.empty()) return "nothing was tried; run 'vel doctor'";
    if (!any_exists(locale_directories())) {
        return fmt::format("there is no data directory: tried {}; give the installation directory "
                           "with --data or CORVANEDIR",
                           tried);
    }
    if (codeset_is_unknown(name)) {
        return fmt::format("unknown code set '{}': tried {}; 'vel codesets' lists the known ones",
                           tools::parse_locale_name(name)->codeset, tried);
    }
    if (name.empty()) {
        return fmt::format("tried {}; these variables hold file names below the locale directory, "
                           "such as de_de/e01c.lco ('vel locales' lists them)",
                           tried);
    }
    return fmt::format("not installed: tried {}; 'vel locales' lists what is installed", tried);
}

} // namespace

load_result try_load(const std::string &name) {
    installed_registry(); // cached, so that the log shows the locale's files alone
    search_log::clear();
    std::string specification = name.empty() ? "" : tools::locale_specification(name);
    vel_locale *raw = nullptr;
    int32_t status = vel_lc_load(&raw, specification.c_str(),
                                 static_cast<int32_t>(specification.size()), nullptr);
    load_result result{locale_handle(raw), 0};
    if (status == 0) return result;
    result.error = raw ? error_of(raw) : VEL_ENOMEM;
    result.locale.reset();
    return result;
}

locale_handle load_locale(const std::string &name) {
    load_result result = try_load(name);
    if (!result.locale) throw failure(explain_load(name, result.error));
    return std::move(result.locale);
}

std::string explain_load(const std::string &name, int32_t error) {
    std::string what = subject(name);
    const std::vector<attempt> &log = search_log::attempts();
    std::string read = !log.empty() && log.back().error == 0 ? log.back().path : "";
    if (read.empty() && (error == VEL_ENOFILE || error == VEL_ELOCALE)) {
        return what + ": " + explain_not_found(name);
    }
    std::string text = fmt::format("{}: {} (error {})", what, vel_strerror(error), error);
    if (!read.empty()) text += ": read " + read;
    for (const advice &row : advices) {
        if (row.error == error) return text + ", " + row.text;
    }
    return text + ", 'vel doctor' checks the installation";
}

} // namespace vel_tool
