// vel symbols: text as symbolic character names, and back.
#include <memory>

#include "vel/block_reader.h"
#include "vel/failure.h"
#include "vel/invocation.h"
#include "vel/symbols_text.h"

namespace vel_tool {
namespace {

struct symbols_options {
    std::string charmap = "UTF-8";
    std::string text;
    bool has_text = false;
    bool reverse = false;
    bool all = false;
};

constexpr size_t block_bytes = 64 << 10;

template <class Worker> void work_through(const symbols_options &options, Worker worker) {
    if (options.has_text) {
        worker.take(options.text, true);
        return;
    }
    input source("-");
    for_each_block(source, block_bytes,
                   [&](std::string_view text, bool at_end) { return worker.take(text, at_end); });
}

int show_symbols(invocation &run, const symbols_options &options) {
    charmap_handle charmap = load_charmap(options.charmap);
    symbols_source source{charmap.get(), options.charmap, options.has_text ? "" : "standard input",
                          run.out};
    try {
        if (!options.reverse) {
            work_through(options, name_writer(source, options.all));
            return exit_success;
        }
        work_through(options, name_reader(source));
        if (options.has_text) run.out.write(newline_of(charmap.get()));
    } catch (const failure &) {
        run.out.flush(); // what comes before the failure
        throw;
    }
    return exit_success;
}

} // namespace

void add_symbols_command(CLI::App &app, invocation &run) {
    CLI::App *command =
        app.add_subcommand("symbols", "write text as symbolic character names, or names as text");
    auto options = std::make_shared<symbols_options>();
    command->add_option("--charmap", options->charmap, "the code set of the text")
        ->type_name("CODESET")
        ->capture_default_str();
    CLI::Option *reverse = command->add_flag("-r,--reverse", options->reverse,
                                             "TEXT is names: write their characters");
    command->add_flag("-a,--all", options->all, "all names of each character, a line for each")
        ->excludes(reverse);
    CLI::Option *text =
        command->add_option("TEXT", options->text, "the text; standard input without it")
            ->type_name("");
    command->footer(
        "Every line of text becomes a line of names, the one of the line feed included. --reverse\n"
        "passes over blanks and line ends between names, and gives standard input back as it was;\n"
        "behind a TEXT it ends the line. A name has brackets around it, and a \\ in front of "
        "every\n"
        "< and \\ in it.\n\n"
        "--all writes the bytes of the character, a tab, and the names with blanks between them.");
    command->callback([&run, options, text] {
        options->has_text = text->count() > 0;
        run.action = [&run, options] { return show_symbols(run, *options); };
    });
}

} // namespace vel_tool
