#pragma once

// The sections NUMERIC, MONETARY and MESSAGES.

#include <string>
#include <vector>

#include "velc/source/model.h"
#include "velc/text_encoder.h"

namespace velc {

std::string write_numeric(const numeric &from, text_encoder &encoder);
std::string write_monetary(const monetary &from, text_encoder &encoder);
std::string write_messages(const messages &from, text_encoder &encoder);

// Group sizes as the object holds them: no sizes for no grouping, the last size repeats, -1 as last
// size ends grouping, 0 does not occur.
std::vector<int> object_grouping(const grouping_list &written);

} // namespace velc
