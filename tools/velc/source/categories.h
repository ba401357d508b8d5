#pragma once

#include <memory>
#include <string_view>

#include "velc/source/model.h"
#include "velc/source/section.h"

namespace velc {

// Each reads one section, from behind its head line to its END. What an LC_TIME does not say stays
// as it is in `start`.
section<identification> read_identification(lexer &in);
section<ctype> read_ctype(lexer &in);
section<numeric> read_numeric(lexer &in);
section<monetary> read_monetary(lexer &in);
section<time_format> read_time(lexer &in, const time_format &start = {});
section<messages> read_messages(lexer &in);
std::shared_ptr<const collate_source> read_collate(lexer &in, symbol_table &symbols);

// Checks the form of a category that has no place in the model; false when the name is none.
bool skip_category(lexer &in, std::string_view category);

} // namespace velc
