// Reading the parts of a section of a locale object.
#pragma once

#include "objfile/sealed.h"
#include "objfile/text_reader.h"
#include "record/record.h"

namespace vel {

// Where a category reader reads. Every member gives false when the section cannot go on; `error`
// then says why. Nothing that is read is believed as a size: strings and lists grow as their
// members arrive, each of which takes bytes of the file.
class section {
public:
    explicit section(text_reader &from) : stream(from) {}

    // Stores why the section fails; the first reason stays.
    bool refuse(int32_t number) {
        if (error == 0) error = number;
        return false;
    }
    bool require(bool holds);

    // A number; anything else is refused.
    bool number(int32_t *value);
    // A number that counts something: not negative.
    bool count(int32_t *value);
    // A number and the white space after it.
    bool integer(int32_t *value);
    bool text(locale_text &text);
    bool list(text_list &list, int32_t count);
    bool grouping(vel_grouping &grouping);
    // A table of 16-bit values, sealed. What was read stays with the caller.
    bool table(const sealed_table *&table);

    text_reader &stream;
    int32_t error = 0;
};

} // namespace vel
