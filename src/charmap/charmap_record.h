// What a charmap handle points to.
#pragma once

#include "charmap/charmap_names.h"
#include "names/registry.h"
#include "objfile/sealed.h"

struct vel_charmap {
    int32_t error; // the error cell: first, so that the handle is its own error context
    vel::codeset_name name;
    int32_t source_version;
    int32_t compiler_version;
    const vel::sealed_table *characters;
    vel::charmap_names names;
};
