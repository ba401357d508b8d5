// vel classify: what a locale knows about each character of a text.
#include <cctype>
#include <memory>

#include <fmt/format.h>

#include "vel/display.h"
#include "vel/failure.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"
#include "vel/locale_option.h"
#include "vel/record_view.h"

namespace vel_tool {
namespace {

struct classify_options {
    std::string locale;
    std::string text;
    bool hex = false;
};

constexpr const char *standard_classes[] = {"upper", "lower", "alpha", "digit", "xdigit", "space",
                                            "blank", "cntrl", "punct", "graph", "print"};

int hex_digit(char c) {
    auto byte = static_cast<unsigned char>(c);
    if (!isxdigit(byte)) return -1;
    return isdigit(byte) ? c - '0' : tolower(byte) - 'a' + 10;
}

// "C3 A4", "c3a4", "C3,A4"
std::string bytes_from_hex(const std::string &text) {
    std::string bytes;
    size_t at = 0;
    while (at < text.size()) {
        if (text[at] == ' ' || text[at] == ',') {
            ++at;
            continue;
        }
        int high = hex_digit(text[at]);
        int low = at + 1 < text.size() ? hex_digit(text[at + 1]) : -1;
        if (high < 0 || low < 0) {
            throw failure(
                fmt::format("'{}' is not hexadecimal: give two digits a byte, as in C3 A4", text),
                exit_usage);
        }
        bytes += static_cast<char>(high << 4 | low);
        at += 2;
    }
    return bytes;
}

struct class_bit {
    std::string name;
    int32_t mask;
};

std::vector<class_bit> classes_of(vel_locale *locale) {
    std::vector<class_bit> classes;
    for (const char *name : standard_classes) classes.push_back({name, vel_ctype(locale, name)});
    for (const std::string &name : locale_classes(locale)) {
        classes.push_back({name, vel_ctype(locale, name.c_str())});
    }
    return classes;
}

class classifier {
public:
    explicit classifier(const code_set &codes)
        : codes_(codes), locale_(codes.locale()), classes_(classes_of(codes.locale())) {}

    std::vector<cell> row(std::string_view bytes) const {
        vel_wchar value = value_of(bytes);
        return {printable_character(codes_, bytes, value),
                hex_bytes(bytes),
                fmt::format("0x{:0{}X}", value, bytes.size() * 2),
                class_names(value),
                counterpart(value, vel_im_towupper(locale_, value)),
                counterpart(value, vel_im_towlower(locale_, value))};
    }

    static std::vector<cell> invalid_row(std::string_view bytes) {
        return {"-", hex_bytes(bytes), "-", "invalid", "-", "-"};
    }

private:
    static vel_wchar value_of(std::string_view bytes) {
        vel_wchar value = 0;
        for (char c : bytes) value = value << 8 | static_cast<unsigned char>(c);
        return value;
    }

    std::string class_names(vel_wchar value) const {
        int32_t mask = vel_im_iswctype(locale_, value, 0xFFFF);
        std::string names;
        for (const class_bit &one : classes_) {
            if (mask & one.mask) names += (names.empty() ? "" : " ") + one.name;
        }
        return names.empty() ? "-" : names;
    }

    cell counterpart(vel_wchar value, vel_wchar mapped) const {
        if (mapped == value) return "-";
        char bytes[8];
        int32_t length = vel_full_wctomb(locale_, bytes, mapped);
        if (length < 1) return fmt::format("0x{:X}", mapped);
        return printable_character(codes_, {bytes, static_cast<size_t>(length)}, mapped);
    }

    const code_set &codes_;
    vel_locale *locale_;
    std::vector<class_bit> classes_;
};

int classify(invocation &run, const classify_options &options) {
    std::string text = options.hex ? bytes_from_hex(options.text) : options.text;
    locale_handle locale = load_locale(options.locale);
    code_set codes(locale.get());
    classifier classes(codes);
    table list({{"character"}, {"bytes"}, {"wide"}, {"classes"}, {"upper"}, {"lower"}});
    bool all_valid = true;
    std::string_view rest = text;
    while (!rest.empty()) {
        int length = codes.character(rest);
        size_t bytes = length < 1 ? codes.invalid_bytes(rest) : static_cast<size_t>(length);
        std::string_view one = rest.substr(0, bytes);
        list.add(length < 1 ? classifier::invalid_row(one) : classes.row(one));
        all_valid = all_valid && length >= 1;
        rest.remove_prefix(bytes);
    }
    list.print(run.out, run.look);
    return all_valid ? exit_success : exit_failure;
}

} // namespace

void add_classify_command(CLI::App &app, invocation &run) {
    CLI::App *command = app.add_subcommand("classify", "show classes and case of characters");
    auto options = std::make_shared<classify_options>();
    command->add_option("TEXT", options->text, "the characters")->type_name("")->required();
    command->add_flag("--hex", options->hex, "TEXT is bytes in hexadecimal: 'C3 A4' or c3a4");
    add_locale_option(command, options->locale);
    command->footer(
        "Columns: character, bytes, wide value, classes, upper and lower case ('-' where a\n"
        "character is its own counterpart).\n\n"
        "TEXT is taken as the bytes that the terminal sends, usually UTF-8, and is not converted:\n"
        "for a locale of another code set give its bytes with --hex, as in\n"
        "    vel classify -l ja_JP.SJIS --hex '82 A0'\n"
        "Characters are shown as they are when the locale is UTF-8, else bytes that are not ASCII\n"
        "as \\xNN. An invalid sequence gets a row of its own and makes the exit status 1.");
    command->callback(
        [&run, options] { run.action = [&run, options] { return classify(run, *options); }; });
}

} // namespace vel_tool
