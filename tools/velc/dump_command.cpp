#include <cstdio>

#include <fmt/format.h>

#include "velc/commands.h"
#include "velc/dump.h"

namespace velc {

namespace {

std::string dump_object(const dump_options &options) {
    switch (kind_of_file(options.file)) {
    case object_kind::charmap:
        return dump_cmo(read_cmo(options.file), options.tables);
    case object_kind::conversion:
        return dump_cvo(read_cvo(options.file), options.tables);
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
