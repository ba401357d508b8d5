// Locales of the pack beside the host's, for what is written by their conventions: times, numbers,
// money. Every pair of source and code set of the pack's recipe is held against the host.
#pragma once

#include <atomic>
#include <deque>
#include <fstream>
#include <gtest/gtest.h>
#include <iconv.h>
#include <sstream>
#include <sys/file.h>
#include <thread>
#include <vector>

#include "differential/host_locale.h"
#include "differential/tally.h"

namespace differential {

// Those that are as in the source; overlays give a calendar that the host has not.
inline std::vector<locale_case> cases_of_the_pack() {
    static std::deque<std::string> kept;
    std::vector<locale_case> cases;
    std::ifstream recipe(VELS_TEST_RECIPE "/locales");
    for (std::string line; std::getline(recipe, line);) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string source, charmap;
        words >> source;
        if (source == "default" || line.find('+') != line.npos) continue;
        while (words >> charmap) {
            kept.insert(kept.end(), {source, charmap});
            cases.push_back({kept[kept.size() - 2].c_str(), kept.back().c_str()});
        }
    }
    return cases;
}

// The host reads formats as ASCII, so it has the EBCDIC locales in ISO-8859-1, in which the pack
// has them as well.
inline bool is_ebcdic(const locale_case &of) {
    return std::string(of.charmap) == "IBM037" || std::string(of.charmap) == "IBM273";
}
inline locale_case on_the_host(const locale_case &of) {
    return is_ebcdic(of) ? locale_case{of.source, "ISO-8859-1"} : of;
}

// Locales without LC_COLLATE, which is what takes localedef its time.
inline std::filesystem::path convention_folder() {
    std::filesystem::path folder = host_locale_folder();
    folder += "-conventions";
    return folder;
}

inline bool compile_conventions(const locale_case &of) {
    namespace fs = std::filesystem;
    const fs::path place = convention_folder() / host_name(of);
    if (fs::exists(place)) return true;
    const std::string made = place.string() + ".making-" + std::to_string(getpid());
    std::ofstream source(made + ".source");
    for (const char *name : {"CTYPE", "NUMERIC", "MONETARY", "TIME", "MESSAGES"})
        source << "LC_" << name << "\ncopy \"" << of.source << "\"\nEND LC_" << name << '\n';
    source.close();
    std::error_code ignored;
    // It crashes on copies of some sources; these it takes as a whole.
    if (run_localedef(made + ".source", of.charmap, made) ||
        run_localedef(of.source, of.charmap, made))
        fs::rename(made, place, ignored);
    fs::remove_all(made, ignored);
    fs::remove(made + ".source", ignored);
    return fs::exists(place);
}

// Compiles what is missing on all processors, in one program at a time. Says whether all are there.
inline bool compile_all(const std::vector<locale_case> &cases) {
    std::filesystem::create_directories(convention_folder());
    const int lock =
        open((convention_folder() / ".lock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0666);
    flock(lock, LOCK_EX);
    std::atomic<size_t> next = 0, made = 0;
    const auto work = [&] {
        for (size_t i; (i = next++) < cases.size();)
            made += is_ebcdic(cases[i]) || compile_conventions(cases[i]);
    };
    std::vector<std::jthread> workers;
    for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
        workers.emplace_back(work);
    workers.clear(); // waits
    close(lock);
    return made == cases.size();
}

// One locale on both sides. Text passes between them in the host's code set.
class both {
public:
    explicit both(const locale_case &of)
        : of_(of), ours_(open_ours(of)),
          host_(newlocale(LC_ALL_MASK, host_name(on_the_host(of)).c_str(), nullptr)),
          previous_(host_ ? uselocale(host_) : nullptr) {}
    ~both() {
        if (!host_) return;
        uselocale(previous_);
        freelocale(host_);
    }
    both(const both &) = delete;
    both &operator=(const both &) = delete;

    vel_locale *ours() const { return ours_.get(); }
    locale_t host() const { return host_; }
    const locale_case &of() const { return of_; }
    std::string name() const { return of_.name(); }

    // What a function of ours writes by a format, or its error.
    template <typename Function, typename Value>
    std::string written(Function function, const std::string &format, Value value) const {
        char text[2048];
        *vel_ext_errno(ours()) = 0;
        const int32_t length = function(ours(), text, sizeof text, to_ours(format).c_str(), value);
        const int32_t error = *vel_ext_errno(ours());
        return error ? failed() : from_ours({text, static_cast<size_t>(length)});
    }
    // What it writes again, of a value that `parse` has read from its text.
    template <typename Function, typename Parse, typename Value>
    std::string again(Function function, Parse parse, const std::string &format,
                      const std::string &text, Value value) const {
        value = 77; // no value of the tests
        const int32_t items = parse(ours(), to_ours(text).c_str(), to_ours(format).c_str(), &value);
        return items == 1 ? written(function, format, value) : failed();
    }

    std::string to_ours(const std::string &text) const {
        return is_ebcdic(of_) ? convert(text, "ISO-8859-1", of_.charmap) : text;
    }
    std::string from_ours(const std::string &text) const {
        return is_ebcdic(of_) ? convert(text, of_.charmap, "ISO-8859-1") : text;
    }

private:
    std::string failed() const { return "error " + std::to_string(*vel_ext_errno(ours())); }

    static std::string convert(std::string text, const char *from, const char *to) {
        std::string made(text.size(), '\0');
        char *in = text.data(), *out = made.data();
        size_t left = text.size(), room = left;
        iconv_t converter = iconv_open(to, from);
        iconv(converter, &in, &left, &out, &room);
        iconv_close(converter);
        return made;
    }

    locale_case of_;
    our_locale ours_;
    locale_t host_, previous_;
};

class conventions : public testing::Test {
protected:
    void SetUp() override {
        if (!compile_all(cases_))
            GTEST_SKIP() << "localedef lacks locales (Debian package locales)";
        setenv("LOCPATH", convention_folder().c_str(), 1);
    }

    template <typename Visit> void for_each_locale(Visit &&visit) {
        for (const locale_case &of : cases_) {
            const both locale(of);
            ASSERT_TRUE(locale.ours()) << of.name() << " is not in the pack " VELS_TEST_DATA_ROOT;
            ASSERT_TRUE(locale.host()) << of.name();
            visit(locale);
        }
    }

private:
    const std::vector<locale_case> cases_ = cases_of_the_pack();
};

} // namespace differential
