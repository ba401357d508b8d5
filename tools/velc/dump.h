#pragma once

#include <filesystem>
#include <string>

#include "velc/cmo_file.h"
#include "velc/conversion_set.h"
#include "velc/lco_file.h"
#include "velc/text_decoder.h"

namespace velc {

// Objects in readable form. With tables every character is listed.
std::string dump_lco(const lco_file &file, const text_decoder &decoder, bool tables);
std::string dump_cmo(const cmo_file &file, bool tables);
// The decoder tells what source characters are; it may be null.
std::string dump_cvo(const cvo_file &file, const conversion_decoder *source, bool tables);

// "header" lines, common to all.
std::string dump_head(const object_head &head);
// "1112064 characters of 1 to 4 bytes; 17 state tables, 310 value pages"
std::string table_summary(const vel::vel_trie &table);

} // namespace velc
