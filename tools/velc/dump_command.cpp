#include <cstdio>

#include <fmt/format.h>

#include "velc/commands.h"
#include "velc/dump.h"

namespace velc {

namespace {

// Code points are shown when the source set can be had.
std::string dump_conversion(const dump_options &options) {
    const cvo_file file = read_cvo(options.file);
    const auto name = file.head.value("FROM");
    if (!options.tables || !name) return dump_cvo(file, nullptr, options.tables);
    try {
        source_library sources(options.source_root);
        const conversion_decoder decoder(*conversion_sets(sources).get(*name));
        return dump_cvo(file, &decoder, true);
    } catch (const missing_set &) {
        return dump_cvo(file, nullptr, true);
    } catch (const source_error &) {
        return dump_cvo(file, nullptr, true);
    }
}

std::string dump_object(const dump_options &options) {
    switch (kind_of_file(options.file)) {
    case object_kind::charmap:
        return dump_cmo(read_cmo(options.file), options.tables);
    case object_kind::conversion:
        return dump_conversion(options);
    case object_kind::registry:
        return read_file(options.file);
    case object_kind::locale:
        break;
    }
    const lco_file file = read_lco(options.file);
    const codeset_table codesets(read_recipe({}));
    const text_decoder decoder(file.codeset, codesets, options.source_root);
    return dump_lco(file, decoder, options.tables);
}

} // namespace

int dump(const dump_options &options) {
    const std::string text = dump_object(options);
    std::fwrite(text.data(), 1, text.size(), stdout);
    return std::fflush(stdout) == 0 ? exit_success : exit_failure;
}

} // namespace velc
