#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "velc/source/charmap.h"
#include "velc/source/model.h"
#include "velc/source/translit.h"

namespace velc {

inline constexpr std::string_view default_source_root = "/usr/share/i18n";

// A directory of sources (charmaps/, locales/, SUPPORTED) and everything read from it so far. Each
// file is read once however many locales copy from it. All members may be called from many threads.
class source_library {
public:
    explicit source_library(std::filesystem::path root = default_source_root);
    ~source_library();
    source_library(const source_library &) = delete;
    source_library &operator=(const source_library &) = delete;

    // By file name as in charmaps/ ("ISO-8859-1", "UTF-8"), no aliases. Throws source_error.
    std::shared_ptr<const velc::charmap> charmap(std::string_view name);
    // By file name as in locales/ ("de_DE@euro"), all copies resolved. Throws source_error.
    std::shared_ptr<const locale_definition> locale(std::string_view name);
    // The substitutions of a locale, own ones and included ones. Throws source_error.
    std::shared_ptr<const translit_table> translit(std::string_view locale_name);

    // The locale x charmap pairs of the SUPPORTED file.
    std::vector<supported_locale> supported() const;
    std::vector<std::string> charmap_names() const; // sorted, without .gz
    std::vector<std::string> locale_names() const;  // sorted; includes the templates (i18n, ...)

    symbol_table &symbols();
    const symbol_table &symbols() const;
    const std::filesystem::path &root() const;

private:
    struct store;
    std::unique_ptr<store> store_;
};

} // namespace velc
