// Charmap objects, conversion objects, registries, and what all objects have in common.
#include <algorithm>
#include <cstdio>

#include "conv/read.h"
#include "ext/memory.h"
#include "velc/check.h"
#include "velc/cmo_file.h"
#include "velc/entry_table.h"
#include "velc/object_text.h"
#include "velc/registry_file.h"
#include "velc/text_decoder.h"
#include "velc/tool_error.h"
#include "vels/charmap.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

// Every entry fits in what the head of the object promises.
void check_entries(const fs::path &path, const cvo_file &file, const vel::vel_trie &table) {
    const std::size_t around = file.sequences[0].size() + file.sequences[1].size();
    for_each_character(table, [&](const byte_sequence &bytes, const unsigned char *value) {
        const int length = value[0] & 7;
        if (length > file.target_max)
            throw tool_error("{}: {}: found {} bytes, expected at most {}", path.string(),
                             hex_bytes(bytes), length, file.target_max);
        if (bytes.length > file.source_max || bytes.length < file.source_min)
            throw tool_error("{}: {}: found a character of {} bytes, expected {} to {}",
                             path.string(), hex_bytes(bytes), bytes.length, file.source_min,
                             file.source_max);
        const std::size_t shifts = value[0] & entry_in_shifted ? around : 0;
        const double ratio =
            (length + static_cast<double>(shifts)) / static_cast<double>(bytes.length);
        if (ratio > file.expansion)
            throw tool_error("{}: {}: found {:.4f} times as many bytes, expected at most {}",
                             path.string(), hex_bytes(bytes), ratio, file.expansion);
    });
}

void load_cvo(const fs::path &path) {
    vel_cv *cv = vel::make_host<vel_cv>().release();
    if (!cv) throw std::bad_alloc();
    const std::int32_t result = vel::vel_cv_read(std::fopen(path.string().c_str(), "rb"), cv);
    const std::string failure = result == 0 ? "" : failure_of(cv);
    vel_cv_unload(cv);
    if (result != 0)
        throw tool_error("{}: found {} when the library loads it, expected a conversion",
                         path.string(), failure);
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

void load_cmo(const fs::path &path) {
    const std::string directory = path.has_parent_path() ? path.parent_path().string() : ".";
    vel_charmap *charmap = nullptr;
    const std::int32_t result =
        vel_cm_load(&charmap, path.filename().string().c_str(), -1, directory.c_str());
    if (result != 0)
        throw tool_error("{}: found {} when the library loads it, expected a charmap",
                         path.string(), failure_of(charmap));
    vel_cm_unload(charmap);
}

void check_cvo(const fs::path &path) {
    const cvo_file file = read_cvo(path);
    if (file.expansion <= 0)
        throw tool_error("{}: expansion: found {}, expected more than 0", path.string(),
                         file.expansion);
    check_entries(path, file, *file.table);
    if (file.shift_table) check_entries(path, file, *file.shift_table);
    load_cvo(path);
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
        if (entry.is_regular_file() && !entry.is_symlink() && is_object_name(entry.path()))
            files.push_back(entry.path());
    if (error) throw tool_error("{}: cannot be listed: {}", path.string(), error.message());
    if (files.empty()) throw tool_error("{}: found no objects, expected some", path.string());
    std::ranges::sort(files);
    return files;
}

} // namespace velc
