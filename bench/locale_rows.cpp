// Rows about locales themselves: opening them and what they occupy.
#include "fresh_process.h"
#include "host_locales.h"
#include "library.h"
#include "memory_use.h"
#include "row.h"

#include <chrono>
#include <cstdio>
#include <stdexcept>

namespace bench {
namespace {

const std::string one = "de_DE";
const std::vector<std::string> twenty = {
    "cs_CZ", "da_DK", "de_DE", "el_GR", "en_GB", "en_US", "es_ES", "fi_FI", "fr_FR", "hu_HU",
    "it_IT", "ja_JP", "nl_NL", "pl_PL", "pt_BR", "ru_RU", "sv_SE", "tr_TR", "uk_UA", "zh_CN"};

const library &library_named(const std::string &name) {
    for (const library &who : libraries()) {
        if (name == who.name) return who;
    }
    throw std::runtime_error("no library " + name);
}

void *opened(const library &who, const std::string &name) {
    void *locale = who.open(name);
    if (!locale) throw std::runtime_error(std::string(who.name) + " does not open " + name);
    return locale;
}

double nanoseconds_to_open(const library &who, const std::vector<std::string> &names) {
    auto start = std::chrono::steady_clock::now();
    for (const std::string &name : names) opened(who, name);
    std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

double bytes_to_hold(const library &who, const std::vector<std::string> &names) {
    memory_use(); // what the measuring itself needs is there then
    double before = memory_use();
    for (const std::string &name : names) opened(who, name);
    return memory_use() - before;
}

using measurement = double (*)(const library &, const std::vector<std::string> &);

struct fresh_row {
    const char *name;
    const char *question;
    measurement measure;
    unit shown;
    aim wanted;
    std::vector<std::string> locales;
};

const std::vector<fresh_row> &fresh_rows() {
    static const std::vector<fresh_row> rows = {
        {"open a UTF-8 locale, fresh process",
         "open",
         nanoseconds_to_open,
         unit::microseconds,
         aim::at_most(1500),
         {one}},
        {"memory of one UTF-8 locale",
         "hold",
         bytes_to_hold,
         unit::megabytes,
         aim::at_most(4),
         {one}},
        {"memory of 20 UTF-8 locales", "hold20", bytes_to_hold, unit::megabytes, aim::at_most(40),
         twenty},
    };
    return rows;
}

prepared_row prepare_fresh(const fresh_row &of) {
    std::vector<contender> made;
    for (const std::string &name : of.locales) compile_host_locale(name, code_set::utf8);
    for (const library &who : libraries()) {
        if (!who.open) continue;
        std::vector<std::string> arguments = {of.question, who.name};
        ask_fresh_process(arguments); // throws when the locales do not open; warms the page cache
        made.push_back({who.name, nullptr, [=] { return ask_fresh_process(arguments); }});
    }
    return {1, made};
}

enum class preparation { none, done };

prepared_row prepare_held(preparation first) {
    std::vector<contender> made;
    compile_host_locale(one, code_set::utf8);
    for (const library &who : libraries()) {
        if (!who.open) continue;
        if (first == preparation::done && who.prepare_to_open) who.prepare_to_open();
        opened(who, one); // held for the rest of the run
        auto pass = [&who] {
            who.close(who.open(one));
            return std::int64_t{1};
        };
        made.push_back({who.name, pass, nullptr});
    }
    return {1, made};
}

struct held_row {
    const char *name;
    preparation first;
};

// The order matters: what was prepared stays so.
const held_row held_rows[] = {
    {"open it again while held", preparation::none},
    {"the same, code-set names cached", preparation::done},
};

} // namespace

std::vector<row> locale_rows() {
    std::vector<row> rows;
    for (const fresh_row &of : fresh_rows())
        rows.push_back({of.name, of.shown, of.wanted, [&of] { return prepare_fresh(of); }});
    for (const held_row &of : held_rows) {
        rows.push_back({of.name, unit::microseconds, aim::at_most(0.3),
                        [&of] { return prepare_held(of.first); }});
    }
    return rows;
}

int answer_as_fresh_process(const std::vector<std::string> &arguments) {
    for (const fresh_row &of : fresh_rows()) {
        if (arguments.size() != 2 || arguments[0] != of.question) continue;
        std::printf("%.0f\n", of.measure(library_named(arguments[1]), of.locales));
        return 0;
    }
    return 2;
}

} // namespace bench
