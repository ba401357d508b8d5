#include "vel/installation.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <fmt/format.h>

#include "vel/search_log.h"
#include "vels.h"

namespace vel_tool {
namespace {

namespace fs = std::filesystem;

constexpr int most_header_lines = 1000;

registry read_registry() {
    registry result{};
    result.paths = search_log::paths_tried([] {
        int32_t ignored = 0;
        vel_cache_registry(&ignored, nullptr);
    });
    const vel_registry_entry *entry = vel_cache_registry(&result.error, nullptr);
    for (; entry; entry = entry->next) result.names.push_back({entry->name, entry->number});
    return result;
}

std::vector<std::string> parents(const std::vector<std::string> &paths) {
    std::vector<std::string> result;
    for (const std::string &path : paths) {
        std::string directory = fs::path(path).parent_path().string();
        if (std::find(result.begin(), result.end(), directory) == result.end()) {
            result.push_back(directory);
        }
    }
    return result;
}

// What objects of one kind have in their first lines.
struct object_kind {
    const char *suffix;
    const char *type_line;
    const char *(*version)();
};
constexpr object_kind locale_kind = {".lco", "FILE_TYPE=locale_object", vel_lc_version};
constexpr object_kind charmap_kind = {".cmo", "FILE_TYPE=charmap_object", vel_cm_version};

// Reads the header lines; what is wrong with them goes into `object`. False when the file is
// neither named like an object of this kind nor begins like one.
bool read_header(std::ifstream &file, const object_kind &kind, data_object &object) {
    bool named = object.file.ends_with(kind.suffix);
    errno = 0;
    if (!file) {
        object.problem = "cannot be opened";
        return named;
    }
    std::string type, version, count;
    std::getline(file, type);
    if (type != kind.type_line) {
        object.problem = fmt::format("does not begin with {}", kind.type_line);
        return named;
    }
    std::getline(file, version);
    std::getline(file, count);
    if (version != fmt::format("COMPILER_VERSION={}", kind.version())) {
        object.problem = fmt::format("has format version {}, the library reads {}",
                                     version.substr(version.find('=') + 1), kind.version());
        return true;
    }
    int lines = atoi(count.c_str() + count.find('=') + 1);
    std::string line;
    for (int n = 3; n < std::min(lines, most_header_lines) && std::getline(file, line); ++n) {
        if (line.starts_with("CODESET=")) object.codeset = line.substr(strlen("CODESET="));
    }
    return true;
}

// The line after the header of a locale object names its code set.
void read_locale_codeset(std::ifstream &file, data_object &object) {
    std::getline(file >> std::ws, object.codeset);
    object.number = codeset_number(object.codeset);
    if (!object.number) {
        object.problem =
            fmt::format("the registry does not know its code set '{}'", object.codeset);
    }
}

// "de_de/0333euro.lco" is loaded by "de_DE.iso-8859-1@euro"; other names by themselves.
std::string specification_of(const data_object &object) {
    int32_t ignored = 0;
    char language[8], number[8], modifier[8];
    if (vel_lc_fname2lc_pieces(&ignored, object.file.c_str(), language, number, modifier) != 0) {
        return object.file;
    }
    bool named_well = object.number && std::to_string(*object.number) == number;
    std::string text = fmt::format("{}.{}", language, named_well ? object.codeset : number);
    return *modifier ? fmt::format("{}@{}", text, modifier) : text;
}

void add_locale(std::vector<data_object> &list, data_object object) {
    std::ifstream file(object.path(), std::ios::binary);
    if (!read_header(file, locale_kind, object)) return;
    if (object.problem.empty()) read_locale_codeset(file, object);
    object.specification = specification_of(object);
    list.push_back(std::move(object));
}

void add_charmap(std::vector<data_object> &list, data_object object) {
    std::ifstream file(object.path(), std::ios::binary);
    if (!read_header(file, charmap_kind, object)) return;
    std::string digits = object.file.substr(0, object.file.find('.'));
    if (digits.size() == 4 && digits.find_first_not_of("0123456789abcdef") == std::string::npos) {
        object.number = static_cast<uint16_t>(std::stoul(digits, nullptr, 16));
    }
    list.push_back(std::move(object));
}

template <class Add>
std::vector<data_object> objects_in(const std::string &directory, int depth, Add add) {
    std::vector<data_object> list;
    std::error_code error;
    auto options = fs::directory_options::skip_permission_denied |
                   fs::directory_options::follow_directory_symlink;
    fs::recursive_directory_iterator walk(directory, options, error), end;
    for (; !error && walk != end; walk.increment(error)) {
        if (walk.depth() >= depth) walk.disable_recursion_pending();
        std::error_code ignored;
        if (!walk->is_regular_file(ignored)) continue;
        data_object object;
        object.directory = directory;
        object.file = walk->path().lexically_relative(directory).generic_string();
        add(list, std::move(object));
    }
    std::sort(list.begin(), list.end(),
              [](const data_object &a, const data_object &b) { return a.file < b.file; });
    return list;
}

} // namespace

const registry &installed_registry() {
    static const registry cached = read_registry();
    return cached;
}

std::optional<uint16_t> codeset_number(const std::string &name) {
    installed_registry();
    int32_t ignored = 0;
    uint16_t number = vel_cs_name2cs_num(&ignored, name.c_str(), nullptr);
    return number == VEL_CS_INVALID ? std::nullopt : std::optional(number);
}

std::vector<std::string> locale_directories() {
    return parents(search_log::paths_tried([] {
        vel_locale *locale = nullptr;
        vel_createlocale_4(&locale);
        vel_lc_unload(locale);
    }));
}

std::vector<std::string> charmap_directories() {
    return parents(installed_registry().paths);
}

std::vector<std::string> conversion_directories() {
    return parents(search_log::paths_tried([] {
        vel_cv *cv = nullptr;
        vel_iconv_open1(&cv, "any");
        vel_cv_unload(cv);
    }));
}

std::vector<data_object> locales_in(const std::string &directory) {
    return objects_in(directory, 1, add_locale);
}

std::vector<data_object> charmaps_in(const std::string &directory) {
    return objects_in(directory, 0, add_charmap);
}

} // namespace vel_tool
