// The option that most commands share, and the help that goes with it.
#pragma once

#include <CLI/CLI.hpp>

namespace vel_tool {

constexpr char locale_help[] = "de_DE.UTF-8@euro, ja_JP.SJIS, C or any specification\n"
                               "of the library; without it VEL_ALL, VEL_CTYPE and so\n"
                               "on, VEL_LANG, then default.lco";

inline void add_locale_option(CLI::App *command, std::string &name) {
    command->add_option("-l,--locale", name, locale_help)->type_name("LOCALE");
}

} // namespace vel_tool
