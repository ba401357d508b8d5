#include "velc/commands.h"
#include "velc/conversion_writer.h"
#include "velc/output_file.h"
#include "velc/recipe.h"
#include "velc/source_root.h"
#include "velc/tool_error.h"

namespace velc {

int compile_conversion(const conversion_options &options) {
    const codeset_table codesets(read_recipe(options.recipe));
    const codeset &from = codesets.named(options.from), &to = codesets.named(options.to);
    if (from.number() == to.number())
        throw tool_error("{}: is the same code set as {}, expected two different ones", options.to,
                         options.from);
    require_sources(options.source_root);
    source_library sources(options.source_root);
    conversion_sets sets(sources);
    const conversion_object made = write_conversion({sets.get(from.charmap), from.number()},
                                                    {sets.get(to.charmap), to.number()});
    write_output(options.output.empty() ? conversion_file_name(from.number(), to.number())
                                        : options.output,
                 made.text);
    return exit_success;
}

} // namespace velc
