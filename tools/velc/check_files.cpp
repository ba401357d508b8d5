// Charmap objects, conversion objects, registries, and what all objects have in common.
#include <algorithm>

#include "velc/check.h"
#include "velc/cmo_file.h"
#include "velc/object_text.h"
#include "velc/registry_file.h"
#include "velc/text_decoder.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

void check_entries(const fs::path &path, const vel::vel_trie &table, int target_max) {
    for_each_character(table, [&](const byte_sequence &bytes, const unsigned char *value) {
        if ((value[0] & 7) > target_max)
            throw tool_error("{}: {}: found {} bytes, expected at most {}", path.string(),
                             hex_bytes(bytes), value[0] & 7, target_max);
    });
}

bool is_object_name(const fs::path &path) {
    constexpr std::string_view endings[] = {".lco", ".cmo", ".cvo"};
    const std::string name = path.filename().string();
    if (name == "registry") return true;
    if (std::ranges::count(endings, path.extension().string()) > 0) return true;
    return path.parent_path().filename() == "lc11" && !name.starts_with('.');
}

} // namespace

void check_cmo(const fs::path &path, const name_resolver &resolve) {
    const cmo_file file = read_cmo(path);
    const auto name = file.head.value("CODESET"), number = file.head.value("CODESET_NUMBER");
    if (!name) throw tool_error("{}: header: found no CODESET, expected one", path.string());
    const auto known = resolve(*name);
    if (!known)
        throw tool_error("{}: header: found code set {}, expected a name that the registry knows",
                         path.string(), *name);
    if (number && *number != std::to_string(*known))
        throw tool_error("{}: header: found code-set number {}, expected {}, the number of {}",
                         path.string(), *number, *known, *name);
    const std::string expected = fmt::format("{:04x}.cmo", *known);
    if (path.parent_path().filename() == "cm3" && path.filename() != expected)
        throw tool_error("{}: file name: found code-set number {}, expected {}", path.string(),
                         *known, expected);
}

void check_cvo(const fs::path &path) {
    const cvo_file file = read_cvo(path);
    check_entries(path, *file.table, file.target_max);
    if (file.shift_table) check_entries(path, *file.shift_table, file.target_max);
    if (file.expansion <= 0)
        throw tool_error("{}: expansion: found {}, expected more than 0", path.string(),
                         file.expansion);
    const int longest = file.table->longest;
    if (longest > file.source_max)
        throw tool_error("{}: table: found characters of {} bytes, expected at most {}",
                         path.string(), longest, file.source_max);
}

void check_registry(const fs::path &path) {
    (void)read_registry(path);
}

void check_hash(const fs::path &path) {
    const std::string text = read_file(path);
    constexpr std::string_view key = "\nCONTENT_HASH=";
    const std::size_t at = text.find(key);
    if (at == text.npos) return;
    const std::size_t value = at + key.size(), end = text.find('\n', value);
    if (end == text.npos) return;
    const std::string written = text.substr(value, end - value);
    const std::string found = content_hash(std::string_view(text).substr(end + 1));
    if (written != found)
        throw tool_error("{}: content: found hash {}, expected {} as its header says",
                         path.string(), found, written);
}

std::vector<fs::path> objects_at(const fs::path &path) {
    std::error_code error;
    if (!fs::is_directory(path, error)) return {path};
    std::vector<fs::path> files;
    for (const auto &entry : fs::recursive_directory_iterator(path, error))
        if (entry.is_regular_file() && is_object_name(entry.path())) files.push_back(entry.path());
    if (error) throw tool_error("{}: cannot be listed: {}", path.string(), error.message());
    if (files.empty()) throw tool_error("{}: found no objects, expected some", path.string());
    std::ranges::sort(files);
    return files;
}

} // namespace velc
