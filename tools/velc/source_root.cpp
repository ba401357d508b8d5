#include "velc/source_root.h"

#include <filesystem>

#include "velc/tool_error.h"

namespace velc {

void require_sources(const std::string &root) {
    namespace fs = std::filesystem;
    const fs::path charmaps = fs::path(root) / "charmaps", locales = fs::path(root) / "locales";
    std::error_code ignored;
    if (fs::is_directory(charmaps, ignored) && fs::is_directory(locales, ignored)) return;
    throw tool_error("{}: found no locale sources (tried {} and {}), expected both directories; "
                     "install the package with the sources, or name their place with --source",
                     root, charmaps.string(), locales.string());
}

} // namespace velc
