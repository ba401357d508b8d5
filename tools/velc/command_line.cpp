#include <cstdio>
#include <functional>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "velc/commands.h"
#include "velc/source/diagnostics.h"
#include "velc/source/source_library.h"
#include "vels/host.h"

namespace velc {

namespace {

constexpr const char *about =
    "velc - compiles charmap and locale sources into the objects that VELS loads.\n"
    "\n"
    "Sources are POSIX charmap and localedef files; DIR of --source holds them in charmaps/ and\n"
    "locales/ with a list SUPPORTED. Output depends on nothing but the sources and the recipe.";

constexpr const char *exit_codes = "Exit codes: 0 success, 1 failure, 2 wrong use.";

void add_common(CLI::App &command, common_options &options) {
    options.source_root = default_source_root;
    command.add_option("--source", options.source_root, "Directory of the sources")
        ->type_name("DIR")
        ->capture_default_str();
    command
        .add_option("--recipe", options.recipe,
                    "Directory with the files codesets, aliases and locales and perhaps the "
                    "file conversions and the directory overlays, instead of the built-in recipe")
        ->type_name("DIR");
    command.add_flag("-q,--quiet", options.quiet, "No warnings, no progress");
}

void add_output(CLI::App &command, std::string &output) {
    command.add_option("-o,--output", output, "File to write; - is the standard output")
        ->type_name("FILE")
        ->required();
}

// Everything that can be asked for, and what was.
class command_line {
public:
    command_line() : app_(about, "velc") {
        app_.footer(exit_codes);
        app_.require_subcommand(1);
        app_.set_version_flag("--version", std::string("velc ") + vel_version());
        add_charmap();
        add_locale();
        add_conversion();
        add_registry();
        add_pack();
        add_dump();
        add_check();
    }

    int run(int argc, const char *const *argv) {
        const std::string_view first = argc > 1 ? argv[1] : "";
        if (!first.empty() && first[0] != '-' && !is_command(first))
            return usage(fmt::format("found {}, expected a command", first));
        try {
            app_.parse(argc, argv);
        } catch (const CLI::ParseError &error) {
            if (error.get_exit_code() == 0) return app_.exit(error);
            return usage(error.what());
        }
        return action_();
    }

private:
    bool is_command(std::string_view name) {
        return !app_.get_subcommands([&](CLI::App *one) { return one->get_name() == name; })
                    .empty();
    }
    static int usage(std::string_view complaint) {
        fmt::print(stderr, "velc: {}\nTry 'velc --help'.\n", complaint);
        return exit_usage;
    }

    CLI::App *add(const char *name, const char *description, std::function<int()> action) {
        CLI::App *command = app_.add_subcommand(name, description);
        command->footer(exit_codes);
        command->callback([this, action = std::move(action)] { action_ = action; });
        return command;
    }

    void add_charmap() {
        auto *command = add("charmap", "Compile a charmap into a charmap object (.cmo)",
                            [this] { return compile_charmap(compile_); });
        command->add_option("SOURCE", compile_.source, "Charmap by name, or a path")->required();
        add_output(*command, compile_.output);
        add_common(*command, compile_);
    }

    void add_locale() {
        auto *command = add("locale", "Compile a locale into a locale object (.lco)",
                            [this] { return compile_locale(compile_); });
        command->add_option("SOURCE", compile_.source, "Locale source by name, or a path")
            ->required();
        command->add_option("-c,--charmap", compile_.charmap, "Code set, by any of its names")
            ->type_name("NAME")
            ->required();
        command
            ->add_option("--overlay", compile_.overlay,
                         "Overlay with another calendar, by its name in the recipe, or a path "
                         "with a / in it")
            ->type_name("NAME");
        command->add_flag("--strict", compile_.strict,
                          "Fail when a text has a character that the code set cannot write and "
                          "for which the locale knows no substitution");
        command
            ->add_option_function<std::string>(
                "--undefined",
                [this](const std::string &where) {
                    compile_.collate.undefined =
                        where == "host" ? undefined_order::as_lowest : undefined_order::behind_all;
                },
                "Where characters without a place in the order go: last, by value; or to the "
                "lowest one, as in the host's C library")
            ->check(CLI::IsMember({"last", "host"}))
            ->type_name("");
        command->add_flag("--tie", compile_.collate.tie,
                          "A last pass by value: different strings are never equal");
        command->add_flag("--thai", compile_.collate.thai,
                          "Order by the Thai algorithm instead of tables");
        add_output(*command, compile_.output);
        add_common(*command, compile_);
    }

    void add_conversion() {
        auto *command = add("conversion", "Compile the conversion of two code sets (.cvo)",
                            [this] { return compile_conversion(conversion_); });
        command->add_option("FROM", conversion_.from, "Code set to read, by any of its names")
            ->required();
        command->add_option("TO", conversion_.to, "Code set to write")->required();
        command
            ->add_option("-o,--output", conversion_.output,
                         "File to write; - is the standard output; without it the file is named "
                         "as the library looks for it")
            ->type_name("FILE");
        add_common(*command, conversion_);
    }

    void add_registry() {
        auto *command = add("registry", "Write the registry of code-set names",
                            [this] { return compile_registry(compile_); });
        add_output(*command, compile_.output);
        add_common(*command, compile_);
    }

    void add_pack() {
        auto *command = add("pack", "Make a whole data tree", [this] { return pack(pack_); });
        pack_.root = "corvane";
        command->add_option("-o,--output", pack_.root, "Root of the tree, for CORVANEDIR")
            ->type_name("DIR")
            ->capture_default_str();
        command->add_flag("--all", pack_.everything,
                          "All supported locales and all charmaps, not only those of the recipe");
        command->add_option("-j,--jobs", pack_.jobs, "Threads; 0 is one for each processor")
            ->type_name("N")
            ->check(CLI::Range(0, 1024));
        command->add_flag("-v,--verbose", pack_.verbose,
                          "List what could not be written as it stands in the sources");
        command->add_flag("-n,--dry-run", pack_.list, "Only list what would be made");
        add_common(*command, pack_);
    }

    void add_dump() {
        auto *command =
            add("dump", "Show an object in readable form", [this] { return dump(dump_); });
        dump_.source_root = default_source_root;
        command->add_option("FILE", dump_.file, "A .lco, .cmo or .cvo object, or a registry")
            ->required();
        command->add_flag("--tables", dump_.tables, "Every character with its values");
        command
            ->add_option("--source", dump_.source_root,
                         "Directory of the sources, to show text of other code sets than UTF-8")
            ->type_name("DIR")
            ->capture_default_str();
    }

    void add_check() {
        auto *command = add("check", "Load objects and verify their structure",
                            [this] { return check(check_); });
        command->add_option("PATH", check_.paths, "Objects, or directories to search")->required();
        command
            ->add_option("--registry", check_.registry,
                         "Registry to resolve code-set names with; else the one of the tree "
                         "that the object is in")
            ->type_name("FILE");
        command->add_flag("-q,--quiet", check_.quiet, "Only failures");
    }

    CLI::App app_;
    compile_options compile_;
    conversion_options conversion_;
    pack_command_options pack_;
    dump_options dump_;
    check_options check_;
    std::function<int()> action_;
};

} // namespace

int run(int argc, const char *const *argv) {
    try {
        return command_line().run(argc, argv);
    } catch (const source_error &error) {
        fmt::print(stderr, "velc: {}\n", error.what());
    } catch (const std::bad_alloc &) {
        fmt::print(stderr, "velc: out of memory\n");
    } catch (const std::exception &error) {
        fmt::print(stderr, "velc: {}\n", error.what());
    }
    return exit_failure;
}

} // namespace velc
