#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "velc/source/model.h"
#include "velc/source/section.h"

namespace velc {

// One locale file as it stands: what it says itself, and from where it copies.
struct locale_source {
    std::string name, file;
    section<identification> ident;
    section<velc::ctype> ctype;
    section<velc::monetary> monetary;
    section<velc::numeric> numeric;
    section<velc::time_format> time;
    section<velc::messages> messages;
    std::shared_ptr<const collate_source> collate; // null when the file has no such section
    warning_list warnings;
};

// Throw source_error. The text variant is told the path for its messages only.
locale_source read_locale_source(std::string name, const std::string &path, symbol_table &symbols);
locale_source parse_locale_source(std::string name, const std::string &path, std::string_view text,
                                  symbol_table &symbols);

} // namespace velc
