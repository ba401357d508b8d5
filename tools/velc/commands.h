#pragma once

// What the subcommands of velc do. Each returns an exit code; problems come as tool_error and
// source_error.

#include <string>
#include <vector>

#include "velc/collate_section.h"

namespace velc {

enum : int { exit_success = 0, exit_failure = 1, exit_usage = 2 };

// Options that every compiling command has.
struct common_options {
    std::string source_root; // directory with charmaps/ and locales/
    std::string recipe;      // directory with its files; empty: the built-in one
    bool quiet = false;      // no warnings, no progress
};

struct compile_options : common_options {
    std::string source; // name of a source, or its path
    std::string charmap;
    std::string overlay; // name in the recipe, or its path; empty: none
    std::string output;
    bool strict = false; // a character that cannot be written at all is an error
    collate_options collate;
};

struct conversion_options : common_options {
    std::string from, to; // code sets by any of their names
    std::string output;   // empty: the name that the library looks for, in this directory
};

struct pack_command_options : common_options {
    std::string root;
    unsigned jobs = 0;
    bool everything = false;
    bool verbose = false;
    bool list = false; // only say what would be made
};

struct dump_options {
    std::string file;
    std::string source_root;
    bool tables = false;
};

struct check_options {
    std::vector<std::string> paths;
    std::string registry;
    bool quiet = false;
};

int compile_charmap(const compile_options &options);
int compile_locale(const compile_options &options);
int compile_conversion(const conversion_options &options);
int compile_registry(const compile_options &options);
int pack(const pack_command_options &options);
int dump(const dump_options &options);
int check(const check_options &options);

// The whole program.
int run(int argc, const char *const *argv);

} // namespace velc
