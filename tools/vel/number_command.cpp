// vel number and vel parse-number: numbers written and read by a format.
#include <memory>

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"
#include "vel/formatted.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"
#include "vel/number_directive.h"
#include "vel/values.h"

namespace vel_tool {
namespace {

struct number_options {
    std::string locale;
    std::string format;
    std::vector<std::string> values;
};

bool is_text(value_kind kind) {
    return kind == value_kind::text || kind == value_kind::character;
}

class number_writer {
public:
    number_writer(const code_set &codes, const std::string &format)
        : codes_(codes), format_(format), directive_(only_directive(codes, format)) {}

    bool takes_text() const { return is_text(directive_.kind); }

    std::string text_of(const std::string &value) const {
        const bool is_short = directive_.is_short;
        switch (directive_.kind) {
        case value_kind::integer:
            return with(static_cast<int32_t>(is_short
                                                 ? integer_value(value, INT16_MIN, INT16_MAX)
                                                 : integer_value(value, INT32_MIN, INT32_MAX)));
        case value_kind::natural:
            return with(
                static_cast<uint32_t>(integer_value(value, 0, is_short ? UINT16_MAX : UINT32_MAX)));
        case value_kind::real:
            return with(double_value(value));
        case value_kind::character:
            require_one_character(value);
            [[fallthrough]];
        case value_kind::text:
            break;
        }
        return with(terminated(value).c_str());
    }

private:
    template <class Argument> std::string with(Argument argument) const {
        std::string format = terminated(format_);
        return formatted(codes_, format_, [&](char *buffer, int32_t size) {
            return vel_mbsfnum(codes_.locale(), buffer, size, format.c_str(), argument);
        });
    }

    void require_one_character(const std::string &value) const {
        if (value.empty() || codes_.character(value) != static_cast<int>(value.size())) {
            throw failure(fmt::format("'{}' is not one character of {}", printable(codes_, value),
                                      codes_.name()));
        }
    }

    const code_set &codes_;
    const std::string &format_;
    number_directive directive_;
};

class number_reader {
public:
    number_reader(const code_set &codes, const std::string &format)
        : codes_(codes), format_(format), directive_(only_directive(codes, format)) {}

    std::string line_of(const std::string &text) const {
        const bool is_short = directive_.is_short;
        switch (directive_.kind) {
        case value_kind::integer:
            return is_short ? number<int16_t>(text) : number<int32_t>(text);
        case value_kind::natural:
            return is_short ? number<uint16_t>(text) : number<uint32_t>(text);
        case value_kind::real:
            return number<double>(text);
        case value_kind::text:
        case value_kind::character:
            break;
        }
        std::string read = terminated(text); // as long as what is read from it, or longer
        std::fill(read.begin(), read.end(), '\0');
        take(text, read.data());
        return read.substr(0, codes_.find_null(read)) + codes_.newline();
    }

private:
    template <class Number> std::string number(const std::string &text) const {
        Number value{};
        take(text, &value);
        return fmt::format("{}\n", value);
    }

    template <class Target> void take(const std::string &text, Target *target) const {
        vel_locale *locale = codes_.locale();
        clear_error(locale);
        int32_t assigned =
            vel_mbspnum(locale, terminated(text).c_str(), terminated(format_).c_str(), target);
        if (assigned == 1) return;
        std::string reason = error_of(locale) ? error_text(locale) : "the text ends too soon";
        throw failure(fmt::format("cannot read '{}' by '{}': {}", printable(codes_, text),
                                  printable(codes_, format_), reason));
    }

    const code_set &codes_;
    const std::string &format_;
    number_directive directive_;
};

int write_numbers(invocation &run, const number_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    number_writer writer(codes, options.format);
    value_source values(options.values, writer.takes_text() ? codes.newline() : "\n");
    return for_each_value(run, values, [&](const std::string &value) {
        run.out.write(writer.text_of(value) + codes.newline());
    });
}

int read_numbers(invocation &run, const number_options &options) {
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    number_reader reader(codes, options.format);
    value_source values(options.values, codes.newline());
    return for_each_value(run, values,
                          [&](const std::string &text) { run.out.write(reader.line_of(text)); });
}

using number_action = int (*)(invocation &run, const number_options &options);

CLI::App *add_command(CLI::App &app, invocation &run, const char *name, const char *purpose,
                      const char *value_name, const char *value_purpose, number_action action) {
    CLI::App *command = app.add_subcommand(name, purpose);
    auto options = std::make_shared<number_options>();
    add_locale_option(command, options->locale);
    command->add_option("FORMAT", options->format, "text with one directive, such as '%'\\''d'")
        ->type_name("")
        ->required();
    command->add_option(value_name, options->values, std::string(value_purpose) + values_help)
        ->type_name("");
    command->callback([&run, options, action] {
        run.action = [&run, options, action] { return action(run, *options); };
    });
    return command;
}

} // namespace

void add_number_command(CLI::App &app, invocation &run) {
    add_command(app, run, "number", "write numbers as the locale has it", "VALUE",
                "numbers as in C", write_numbers)
        ->footer(
            "The letter of the directive says what VALUE is: a whole number for d i o q b x X\n"
            "(32 bits with a sign) and u (without), any number for e E f g G, text for s, one\n"
            "character for c. Flags: ' groups the digits, + - # 0 and blank as in C.\n\n"
            "    vel number -l de_DE \"%'d\" 1234567          1.234.567\n"
            "    vel number -l en_IN \"%'d\" 1234567          12,34,567\n"
            "    vel number -l fr_FR '%.2f EUR' 3.14159     3,14 EUR\n"
            "    seq 8 11 | vel number -l C '%#o'           010, 011, 012, 013\n\n"
            "Format, text and result are in the code set of the locale; other values are ASCII.");
}

void add_parse_number_command(CLI::App &app, invocation &run) {
    add_command(app, run, "parse-number", "read numbers as the locale has it", "TEXT",
                "what is to be read", read_numbers)
        ->footer(
            "The number is printed as in C. Text behind what the format reads is not looked at.\n\n"
            "    vel parse-number -l de_DE \"%'d\" 1.234.567  1234567\n"
            "    vel parse-number -l fr_FR %f 3,14          3.14\n"
            "    vel parse-number -l C %x -- -ff            -255\n\n"
            "Format and text are in the code set of the locale.");
}

} // namespace vel_tool
