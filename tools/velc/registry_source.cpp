#include "velc/registry_source.h"

#include <algorithm>

namespace velc {

std::string make_registry(const codeset_table &codesets, source_library &sources) {
    const std::vector<std::string> present = sources.charmap_names();
    std::vector<charmap_names> aliases;
    for (const codeset &one : codesets.all()) {
        if (!std::ranges::binary_search(present, one.charmap)) continue;
        const auto known = sources.charmap(one.charmap);
        charmap_names names{one.charmap, {known->name()}};
        for (const charmap_alias &alias : known->aliases()) names.names.push_back(alias.name);
        aliases.push_back(std::move(names));
    }
    return registry_text(codesets, aliases);
}

} // namespace velc
