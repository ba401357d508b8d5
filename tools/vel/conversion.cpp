#include "vel/conversion.h"

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/installation.h"
#include "vel/search_log.h"

namespace vel_tool {
namespace {

std::string pair_name(const named_code_set &from, const named_code_set &to) {
    return fmt::format("from {} to {}", from.name, to.name);
}

[[noreturn]] void give_up_missing(const conversion_route &route, const std::string &tried) {
    throw failure(fmt::format(
        "there is no conversion {}: tried {}; {}", pair_name(route.from, route.to), tried,
        advice_on_missing_data(fmt::format("'velc conversion {} {}' makes it, 'vel convert --list' "
                                           "lists what is installed",
                                           route.from.name, route.to.name))));
}

} // namespace

std::string advice_on_missing_data(const std::string &otherwise) {
    return installed_registry().error ? "give the installation directory with --data or CORVANEDIR"
                                      : otherwise;
}

named_code_set find_code_set(const std::string &name) {
    installed_registry();
    int32_t ignored = 0;
    uint16_t number = vel_lc_spec2cs_num(&ignored, name.c_str(), nullptr);
    if (number == VEL_CS_INVALID) {
        throw failure(fmt::format("unknown code set '{}'; {}", name,
                                  advice_on_missing_data("'vel codesets' lists the known ones")));
    }
    return {name, number};
}

named_code_set utf8_code_set() {
    return {"UTF-8", VEL_CS_UTF8};
}

bool data_file_was_read() {
    const std::vector<attempt> &log = search_log::attempts();
    return !log.empty() && log.back().error == 0;
}

std::string data_file_failure(const std::string &what, int32_t error) {
    std::string text =
        fmt::format("cannot load {}: {} (error {})", what, vel_strerror(error), error);
    if (!data_file_was_read()) return text;
    return fmt::format("{}: read {}, the file is damaged or of another version; make it again "
                       "with velc",
                       text, search_log::attempts().back().path);
}

conversion_handle open_conversion(const named_code_set &from, const named_code_set &to) {
    installed_registry(); // cached, so that the log shows the conversion's files alone
    search_log::clear();
    vel_cv *raw = nullptr;
    int32_t status = vel_cv_load(&raw, std::to_string(to.number).c_str(),
                                 std::to_string(from.number).c_str(), nullptr, nullptr);
    conversion_handle cv(raw);
    if (status == 1) return cv;
    int32_t error = cv ? error_of(cv.get()) : VEL_ENOMEM;
    if (error == VEL_ENOFILE && !data_file_was_read()) return nullptr;
    throw failure(data_file_failure("the conversion " + pair_name(from, to), error));
}

conversion_route open_route(const std::string &from, const std::string &to) {
    conversion_route route{find_code_set(from), find_code_set(to), {}};
    if (route.from.number == route.to.number) return route;
    route.steps.push_back(open_conversion(route.from, route.to));
    if (route.steps.back()) return route;
    std::string tried = search_log::failed_paths();
    if (route.from.is_utf8() || route.to.is_utf8()) give_up_missing(route, tried);
    route.steps.back() = open_conversion(route.from, utf8_code_set());
    if (!route.steps.back()) give_up_missing(route, tried + ", " + search_log::failed_paths());
    route.steps.push_back(open_conversion(utf8_code_set(), route.to));
    if (!route.steps.back()) give_up_missing(route, tried + ", " + search_log::failed_paths());
    return route;
}

} // namespace vel_tool
