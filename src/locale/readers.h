// The category readers: each fills a null category from its section of a locale object. False with
// the section's error number; the category then holds what was read so far, to be released.
#pragma once

#include "locale/section.h"

namespace vel {

bool read_ctype(section &in, vel_locale *locale);
bool read_collate(section &in, vel_locale *locale);
bool read_numeric(section &in, vel_locale *locale);
bool read_monetary(section &in, vel_locale *locale);
bool read_time(section &in, vel_locale *locale);
bool read_messages(section &in, vel_locale *locale);

} // namespace vel
