// A locale of the host's C library, compiled with localedef from the source that ours is made of.
#pragma once

#include <climits>
#include <cwchar>
#include <cwctype>
#include <fcntl.h>
#include <filesystem>
#include <gnu/libc-version.h>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <memory>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "differential/cases.h"

namespace differential {

// What the bytes at the start of a text are.
struct probe {
    enum { invalid, more, character } kind;
    uint32_t length = 0; // of a character, in bytes
    char32_t code = 0;
};

// The folder of compiled locales, beside the data pack: all builds that test on one pack share it.
inline std::filesystem::path host_locale_folder() {
    return std::filesystem::path(VELS_TEST_DATA_ROOT).lexically_normal().parent_path() /
           (std::string("host-locales-") + gnu_get_libc_version());
}

// A name without a dot: behind one the host expects the name of the code set.
inline std::string host_name(const locale_case &of) {
    std::string name = std::string(of.source) + "+" + of.charmap;
    std::ranges::replace(name, '.', '_');
    return name;
}

inline bool run_localedef(const std::string &source, const std::string &charmap,
                          const std::string &out) {
    const char *arguments[] = {"localedef", "--quiet",       "-c",        "-i",   source.c_str(),
                               "-f",        charmap.c_str(), out.c_str(), nullptr};
    posix_spawn_file_actions_t silence;
    posix_spawn_file_actions_init(&silence);
    posix_spawn_file_actions_addopen(&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child;
    const bool begun = posix_spawnp(&child, arguments[0], &silence, nullptr,
                                    const_cast<char **>(arguments), environ) == 0;
    posix_spawn_file_actions_destroy(&silence);
    int status;
    // Warnings make the status 1.
    return begun && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) <= 1;
}

// Made beside its place and then renamed, so that programs that start together do not disturb each
// other.
inline bool compile_host_locale(const locale_case &of, const std::filesystem::path &place) {
    namespace fs = std::filesystem;
    if (fs::exists(place / "LC_CTYPE")) return true;
    fs::path made = place;
    made += ".making-" + std::to_string(getpid());
    std::error_code ignored;
    fs::create_directories(place.parent_path(), ignored);
    if (run_localedef(of.source, of.charmap, made)) fs::rename(made, place, ignored);
    fs::remove_all(made, ignored); // still there when another program was faster
    return fs::exists(place / "LC_CTYPE");
}

class host_locale {
public:
    // Null, with the reason in `why`, on a host that lacks localedef, the sources or the code set.
    static std::unique_ptr<host_locale> open(const locale_case &of, std::string &why) {
        const std::filesystem::path folder = host_locale_folder();
        if (!compile_host_locale(of, folder / host_name(of))) {
            why = "localedef makes no " + of.name() + " (Debian package locales)";
            return nullptr;
        }
        setenv("LOCPATH", folder.c_str(), 1);
        locale_t handle = newlocale(LC_CTYPE_MASK, host_name(of).c_str(), nullptr);
        if (!handle) {
            why = "the host does not open its " + of.name();
            return nullptr;
        }
        std::unique_ptr<host_locale> made(new host_locale(handle));
        if (made->converts()) return made;
        why = std::string("the host has no conversion for ") + of.charmap;
        return nullptr;
    }
    ~host_locale() {
        uselocale(previous_);
        freelocale(handle_);
    }
    host_locale(const host_locale &) = delete;
    host_locale &operator=(const host_locale &) = delete;

    probe read(const char *bytes, size_t n) const {
        mbstate_t state{};
        wchar_t code = 0;
        const size_t length = mbrtowc(&code, bytes, n, &state);
        if (length == static_cast<size_t>(-1)) return {probe::invalid};
        if (length == static_cast<size_t>(-2)) return {probe::more};
        // A character that may join the next one is held back: the null character fetches it.
        if (code == 0 && !mbsinit(&state)) mbrtowc(&code, "", 1, &state);
        return {probe::character, length == 0 ? 1 : static_cast<uint32_t>(length),
                static_cast<char32_t>(code)};
    }

    // Empty for a code point that the code set lacks. Here too characters may be held back.
    std::string write(char32_t code) const {
        mbstate_t state{};
        char bytes[MB_LEN_MAX];
        size_t length = wcrtomb(bytes, static_cast<wchar_t>(code), &state);
        if (length == static_cast<size_t>(-1)) return {};
        if (length == 0) {
            length = wcrtomb(bytes, L'\0', &state);
            if (length == static_cast<size_t>(-1) || length == 0) return {};
            --length;
        }
        return {bytes, length};
    }

    bool in_class(char32_t code, wctype_t type) const { return iswctype_l(code, type, handle_); }
    wctype_t class_named(const char *name) const { return wctype_l(name, handle_); }
    char32_t upper(char32_t code) const { return towupper_l(code, handle_); }
    char32_t lower(char32_t code) const { return towlower_l(code, handle_); }
    int columns(char32_t code) const { return wcwidth(static_cast<wchar_t>(code)); }

private:
    explicit host_locale(locale_t handle) : handle_(handle), previous_(uselocale(handle)) {}

    // Without a converter the host would silently take the text for ASCII.
    bool converts() const {
        iconv_t converter = iconv_open(nl_langinfo_l(CODESET, handle_), "UTF-8");
        if (converter == reinterpret_cast<iconv_t>(-1)) return false;
        iconv_close(converter);
        return true;
    }

    locale_t handle_, previous_;
};

} // namespace differential
