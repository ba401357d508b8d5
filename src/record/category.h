// The null state of each category, and its release.
#pragma once

#include "record/record.h"

namespace vel {

// Puts the null state in place and forgets what the category held; the caller has freed it or
// leaves it to its owner. What is derived from the category and owned by the locale is freed. These
// cannot fail: a null category needs no memory.
void null_ctype(vel_locale *locale);
void null_collate(vel_locale *locale);
void null_numeric(vel_locale *locale);
void null_monetary(vel_locale *locale);
void null_time(vel_locale *locale);
void null_messages(vel_locale *locale);

// Frees what the category holds, whether it was read whole or in part, and leaves it null.
void release_ctype(vel_locale *locale);
void release_collate(vel_locale *locale);
void release_numeric(vel_locale *locale);
void release_monetary(vel_locale *locale);
void release_time(vel_locale *locale);
void release_messages(vel_locale *locale);

// Frees the three flat tables of a single-byte code set.
void release_byte_tables(vel_locale *locale);
// Frees the trees of names and the list of eras.
void release_time_derived(vel_locale *locale);
// Frees the strings made for information queries and leaves them empty.
void release_query_texts(vel_locale *locale);

} // namespace vel
