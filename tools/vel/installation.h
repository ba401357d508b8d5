// The installed data: directories, code-set registry, objects.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vel_tool {

struct codeset_name {
    std::string name;
    uint16_t number;
};

struct registry {
    std::vector<codeset_name> names; // in the order of the file
    std::vector<std::string> paths;  // where the library looks for it, the best first
    int32_t error;                   // 0, or why the built-in names are in use
};

// The registry, read and cached by the first call.
const registry &installed_registry();

// The number of a code set's name, or a number written in decimal.
std::optional<uint16_t> codeset_number(const std::string &name);

// The directories in which the library looks, the first one first; they need not exist.
std::vector<std::string> locale_directories();
std::vector<std::string> charmap_directories();
std::vector<std::string> conversion_directories();

// A data file, as its first lines describe it.
struct data_object {
    std::string directory;
    std::string file;          // below the directory, with '/'
    std::string specification; // what to load it by; of locales only
    std::string codeset;       // name that the file gives, may be empty
    std::optional<uint16_t> number;
    std::string problem; // empty when all is well

    std::string path() const { return directory + "/" + file; }
};

// All locale objects or charmap objects of a directory, by file name.
std::vector<data_object> locales_in(const std::string &directory);
std::vector<data_object> charmaps_in(const std::string &directory);

} // namespace vel_tool
