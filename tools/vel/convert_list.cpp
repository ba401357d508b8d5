#include "vel/convert_list.h"

#include <filesystem>
#include <map>
#include <set>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/installation.h"

namespace vel_tool {
namespace {

namespace fs = std::filesystem;

struct code_set_pair {
    uint16_t from, to;
    auto operator<=>(const code_set_pair &) const = default;
};

// "0333e01c.cvo"
std::optional<code_set_pair> pair_of(const std::string &file) {
    bool is_numbered = file.size() == 12 && file.ends_with(".cvo") &&
                       file.find_first_not_of("0123456789abcdef") == 8;
    if (!is_numbered) return std::nullopt;
    auto number = [&](size_t at) {
        return static_cast<uint16_t>(std::stoul(file.substr(at, 4), nullptr, 16));
    };
    return code_set_pair{number(0), number(4)};
}

std::set<code_set_pair> installed_pairs() {
    std::set<code_set_pair> pairs;
    for (const std::string &directory : conversion_directories()) {
        std::error_code error;
        for (fs::directory_iterator at(directory, error), end; !error && at != end;
             at.increment(error)) {
            if (auto pair = pair_of(at->path().filename().string())) pairs.insert(*pair);
        }
    }
    return pairs;
}

// What a charmap calls its code set, else the first name of the registry.
std::map<uint16_t, std::string> names_by_number() {
    std::map<uint16_t, std::string> names;
    for (const std::string &directory : charmap_directories()) {
        for (const data_object &object : charmaps_in(directory)) {
            if (object.number && !object.codeset.empty()) {
                names.try_emplace(*object.number, object.codeset);
            }
        }
    }
    for (const codeset_name &entry : installed_registry().names) {
        names.try_emplace(entry.number, entry.name);
    }
    return names;
}

} // namespace

void list_conversions(invocation &run) {
    std::map<uint16_t, std::string> names = names_by_number();
    auto name = [&](uint16_t number) {
        auto found = names.find(number);
        return found == names.end() ? std::to_string(number) : found->second;
    };
    table list({{"from"}, {"to"}, {"file"}});
    for (const code_set_pair &pair : installed_pairs()) {
        list.add(
            {name(pair.from), name(pair.to), fmt::format("{:04x}{:04x}.cvo", pair.from, pair.to)});
    }
    if (list.empty()) {
        std::string looked;
        for (const std::string &one : conversion_directories()) {
            looked += (looked.empty() ? "" : ", ") + one;
        }
        throw failure(fmt::format("no conversions are installed: looked in {}; 'velc pack' makes "
                                  "them",
                                  looked));
    }
    list.print(run.out, run.look);
}

} // namespace vel_tool
