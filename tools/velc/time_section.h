#pragma once

#include <string>

#include "velc/source/model.h"
#include "velc/text_encoder.h"

namespace velc {

// The TIME section.
std::string write_time(const time_format &from, text_encoder &encoder);

} // namespace velc
