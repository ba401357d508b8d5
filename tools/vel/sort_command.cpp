// vel sort and vel sort-key: lines in the order of a locale, and what makes that order.
#include <memory>
#include <optional>

#include "vel/failure.h"
#include "vel/keyed_lines.h"
#include "vel/line_store.h"
#include "vel/locale_handle.h"
#include "vel/sort_program.h"

namespace vel_tool {
namespace {

struct sort_options {
    line_options lines;
    bool reverse = false;
    bool unique = false;
    uint64_t memory = uint64_t{256} << 20;
};

// The first byte of what is sorted by.
enum line_class : char { valid_line = '0', invalid_line = '1' };

// Keeps lines in memory while there is room, then hands them on to the sort program.
class sorter {
public:
    sorter(bool reverse, uint64_t memory)
        : reverse_(reverse), memory_(memory), store_(new line_store) {}

    void add(const keyed_line &one) {
        key_.assign(1, one.is_valid ? valid_line : invalid_line);
        key_.append(one.key);
        if (program_) return program_->add(key_, one.line);
        store_->add(key_, one.line);
        if (store_->bytes() > memory_) hand_on();
    }

    void for_each(const line_consumer &take) {
        if (program_) return program_->for_each(take);
        store_->sort(reverse_);
        store_->for_each(take);
    }

private:
    void hand_on() {
        program_.emplace(reverse_, memory_);
        store_->for_each(
            [&](std::string_view key, std::string_view line) { program_->add(key, line); });
        store_.reset();
    }

    bool reverse_;
    uint64_t memory_;
    std::unique_ptr<line_store> store_;
    std::optional<sort_program> program_;
    std::string key_;
};

void write_sorted(sorter &lines, bool unique, std::string_view newline, output &out) {
    std::optional<std::string> last;
    lines.for_each([&](std::string_view key, std::string_view line) {
        if (unique) {
            if (last == key) return;
            last = key;
        }
        out.write(line);
        out.write(newline);
    });
}

int sort_lines(invocation &run, const sort_options &options) {
    locale_handle locale = load_locale(options.lines.locale);
    code_set codes(locale.get());
    sorter lines(options.reverse, options.memory);
    uint64_t invalid =
        for_each_line(run, options.lines, codes, [&](const keyed_line &one) { lines.add(one); });
    write_sorted(lines, options.unique, codes.newline(), run.out);
    return invalid == 0 ? exit_success : exit_failure;
}

void append_hex(std::string &out, std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    for (char c : bytes) {
        auto byte = static_cast<unsigned char>(c);
        out += digits[byte >> 4];
        out += digits[byte & 0xF];
    }
}

int write_keys(invocation &run, const line_options &options) {
    constexpr char behind_all_digits = '~';
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    std::string text;
    uint64_t invalid = for_each_line(run, options, codes, [&](const keyed_line &one) {
        text.clear();
        if (!one.is_valid) text += behind_all_digits;
        append_hex(text, one.key);
        text += '\t';
        text += one.line;
        text += codes.newline();
        run.out.write(text);
    });
    return invalid == 0 ? exit_success : exit_failure;
}

} // namespace

void add_sort_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("sort", "sort lines in the order of the locale");
    auto options = std::make_shared<sort_options>();
    add_line_options(command, options->lines);
    command->add_flag("-r,--reverse", options->reverse, "turn the order round");
    command->add_flag("-u,--unique", options->unique,
                      "write only the first of lines whose keys are equal");
    command
        ->add_option("--memory", options->memory,
                     "sort with temporary files what takes more, as in 500KB,\n"
                     "2GB (default 256MB)")
        ->type_name("SIZE")
        ->transform(CLI::AsSizeValue(false).description(""));
    command->footer(
        "Lines whose keys are equal stay in their order, also with --reverse. The blanks before a\n"
        "field are no part of it; a line that has no such field has an empty key.\n\n"
        "Lines with invalid text come behind all others, by their bytes. They are reported on\n"
        "standard error, with the number of the first invalid byte in the file, and make the exit\n"
        "status 1.\n\n"
        "Beyond --memory the program 'sort' of the system puts the lines in order, by the keys,\n"
        "with temporary files in TMPDIR.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return sort_lines(run, *options); }; });
}

void add_sort_key_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("sort-key", "write lines with their sort keys");
    auto options = std::make_shared<line_options>();
    add_line_options(command, *options);
    command->footer(
        "Each line gets its key in hexadecimal and a tab in front, so that anything that sorts by\n"
        "bytes puts lines in the order of the locale:\n"
        "    vel sort-key -l sv_SE FILE | LC_ALL=C sort -s -k 1,1 | cut -f 2-\n\n"
        "The key of a line with invalid text is '~' and its bytes.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return write_keys(run, *options); }; });
}

} // namespace vel_tool
