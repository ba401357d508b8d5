#include <cstdio>
#include <filesystem>

#include <fmt/format.h>

#include "velc/charmap_writer.h"
#include "velc/codesets.h"
#include "velc/commands.h"
#include "velc/locale_writer.h"
#include "velc/output_file.h"
#include "velc/pack.h"
#include "velc/registry_source.h"
#include "velc/source_root.h"
#include "velc/tool_error.h"
#include "velc/unicode_forms.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

void print_warnings(const warning_list &warnings, const common_options &options) {
    if (options.quiet) return;
    for (const warning &one : warnings) fmt::print(stderr, "velc: {}\n", to_string(one));
}

// A source given by its path stands in a directory "locales" or "charmaps" beneath a source root;
// what it copies is looked for there.
struct source_name {
    std::string root, name;
};

source_name find_source(const compile_options &options, const char *directory) {
    if (options.source.find('/') == std::string::npos) return {options.source_root, options.source};
    const fs::path path = fs::absolute(options.source).lexically_normal();
    if (path.parent_path().filename() != directory)
        throw tool_error("{}: found a path outside of a directory {}, expected ROOT/{}/NAME",
                         options.source, directory, directory);
    std::string name = path.filename().string();
    if (name.ends_with(".gz")) name.resize(name.size() - 3);
    return {path.parent_path().parent_path().string(), name};
}

void print_losses(const locale_object &object, const compile_options &options) {
    for (const substitution &one : object.substitutions)
        if (one.lossy && options.strict) throw tool_error("{}: {}", options.source, to_string(one));
    if (options.quiet) return;
    for (const substitution &one : object.substitutions)
        fmt::print(stderr, "velc: {}: warning: {}\n", options.source, to_string(one));
    for (const std::string &name : object.dropped_classes)
        fmt::print(stderr, "velc: {}: warning: class {} has no bit left\n", options.source, name);
    for (const std::string &text : object.collate_warnings)
        fmt::print(stderr, "velc: {}: warning: LC_COLLATE: {}\n", options.source, text);
}

std::string megabytes(std::uintmax_t bytes) {
    return fmt::format("{:.1f} MB", static_cast<double>(bytes) / 1e6);
}

void print_plan(const std::vector<pack_item> &plan) {
    for (const pack_item &item : plan)
        fmt::print("{:<40} {}\n", item.file.generic_string(), item.title());
}

} // namespace

int compile_charmap(const compile_options &options) {
    const codeset_table codesets(read_recipe(options.recipe));
    const source_name source = find_source(options, "charmaps");
    require_sources(source.root);
    source_library sources(source.root);
    const auto made = charmap_named(sources, source.name);
    const codeset &known = codesets.at(source.name);
    print_warnings(made->warnings(), options);
    write_output(options.output,
                 write_charmap(*made, codesets.header_name(known, known.number()), known.number()));
    return exit_success;
}

int compile_locale(const compile_options &options) {
    const recipe from = read_recipe(options.recipe);
    const codeset_table codesets(from);
    const overlay_pointer overlay =
        options.overlay.empty() ? nullptr : get_overlay(from, options.overlay);
    const source_name source = find_source(options, "locales");
    require_sources(source.root);
    source_library sources(source.root);
    const codeset &target = codesets.named(options.charmap);
    const locale_object made =
        locale_writer(sources, codesets)
            .write(source.name, target.charmap, target.number(), {overlay.get(), options.collate});
    print_warnings(sources.locale(source.name)->warnings, options);
    print_warnings(made.overlay_warnings, options);
    print_losses(made, options);
    write_output(options.output, made.text);
    return exit_success;
}

int compile_registry(const compile_options &options) {
    const codeset_table codesets(read_recipe(options.recipe));
    require_sources(options.source_root);
    source_library sources(options.source_root);
    write_output(options.output, make_registry(codesets, sources));
    return exit_success;
}

int pack(const pack_command_options &options) {
    const recipe what = read_recipe(options.recipe);
    const codeset_table codesets(what);
    require_sources(options.source_root);
    source_library sources(options.source_root);
    const auto plan = plan_pack(what, codesets, sources, options.everything);
    if (options.list) {
        print_plan(plan);
        return exit_success;
    }
    const pack_result made =
        make_pack(plan, codesets, sources, {options.root, options.jobs, options.quiet});
    if (options.verbose)
        for (const std::string &note : made.notes) fmt::print("{}\n", note);
    if (!options.quiet)
        fmt::print("{}: {} locale objects and {} charmap objects, {} conversions, {}; {} locales "
                   "with substituted characters, {} with lost ones\n",
                   options.root, made.locales, made.charmaps, made.conversions,
                   megabytes(made.bytes), made.substituted, made.lossy);
    if (!options.quiet)
        for (const std::string &text : made.warnings) fmt::print(stderr, "velc: {}\n", text);
    for (const std::string &error : made.errors) fmt::print(stderr, "velc: {}\n", error);
    return made.errors.empty() ? exit_success : exit_failure;
}

} // namespace velc
