#pragma once

// Verifying objects: first their structure, then that the library itself loads them.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velc {

// The number of a code-set name; nothing when the registry does not know it.
using name_resolver = std::function<std::optional<std::uint16_t>(std::string_view name)>;

// Throw tool_error: "file: place: found ..., expected ...".
void check_lco(const std::filesystem::path &path, const name_resolver &resolve);
void check_cmo(const std::filesystem::path &path, const name_resolver &resolve);
void check_cvo(const std::filesystem::path &path);
void check_registry(const std::filesystem::path &path);

// The body of an object has the hash that its header tells, when it tells one.
void check_hash(const std::filesystem::path &path);

// Loads an object with the library, which finds code-set names in its cached registry.
void load_lco(const std::filesystem::path &path);
void load_cmo(const std::filesystem::path &path);

// What a handle of the library says about its failure.
std::string failure_of(const void *handle);

// Every file beneath a directory that is an object by its name, sorted; links are passed over. A file
// as it is.
std::vector<std::filesystem::path> objects_at(const std::filesystem::path &path);

} // namespace velc
