// vel doctor: why locales do not load, and how to mend it.
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <filesystem>
#include <memory>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/installation.h"
#include "vel/invocation.h"
#include "vel/locale_handle.h"
#include "vel/search_log.h"

namespace vel_tool {
namespace {

namespace fs = std::filesystem;

constexpr size_t longest_root = 256;

constexpr const char *variables[] = {"CORVANEDIR",   "VEL_PATH",    "VEL_ALL",      "VEL_CTYPE",
                                     "VEL_COLLATE",  "VEL_NUMERIC", "VEL_MONETARY", "VEL_TIME",
                                     "VEL_MESSAGES", "VEL_LANG",    "VELSLOG",      "VELSDEBUG"};
constexpr size_t first_locale_variable = 2;
constexpr size_t last_locale_variable = 9;

class findings {
public:
    explicit findings(invocation &run) : run_(run) {}

    void title(const char *text) {
        if (run_.look.frames) run_.out.write(run_.look.in(paint::title, text) + "\n");
    }
    void well(const std::string &text) { line(paint::good, "ok", text, ""); }
    void note(const std::string &text) { line(paint::dim, "note", text, ""); }
    void wrong(const std::string &text, const std::string &remedy) {
        ++faults_;
        line(paint::bad, "WRONG", text, remedy);
    }
    int faults() const { return faults_; }

private:
    void line(paint how, const char *verdict, const std::string &text, const std::string &remedy) {
        if (!run_.look.frames) {
            const char *separator = remedy.empty() ? "" : "\t";
            run_.out.write(fmt::format("{}\t{}{}{}\n", verdict, text, separator, remedy));
            return;
        }
        std::string mark = run_.look.in(how, fmt::format("{:>5}", verdict));
        run_.out.write(fmt::format("  {}  {}\n", mark, text));
        if (!remedy.empty()) run_.out.write(fmt::format("         to mend it: {}\n", remedy));
    }

    invocation &run_;
    int faults_ = 0;
};

// 0, or why the directory cannot be listed.
int listing_error(const std::string &directory) {
    DIR *open = opendir(directory.c_str());
    if (!open) return errno;
    closedir(open);
    return 0;
}

void check_root(findings &found, bool in_use) {
    std::string root = search_log::environment("CORVANEDIR");
    if (root.empty()) return;
    if (root.size() > longest_root) {
        found.wrong(fmt::format("the installation directory has {} characters, and the library "
                                "refuses more than {}",
                                root.size(), longest_root),
                    "move the data, or make a short link to it");
    } else if (!in_use) {
        found.note("VEL_PATH is set: CORVANEDIR is not used");
    } else if (int error = listing_error(root)) {
        found.wrong(fmt::format("the installation directory {}: {}", root, strerror(error)),
                    "set CORVANEDIR or --data to the directory that holds vels/");
    }
}

void check_switch(findings &found, const char *name) {
    std::string value = search_log::environment(name);
    bool meant_on = value.size() > 1 && (value[0] == 'o' || value[0] == 'O') && value[1] == 'N';
    if (meant_on) {
        found.note(fmt::format("{}={} does not switch it on: write on or On", name, value));
    }
}

void check_environment(findings &found) {
    found.title("Environment");
    bool any = false;
    for (const char *name : variables) {
        std::string value = search_log::environment(name);
        if (value.empty()) continue;
        found.note(fmt::format("{}={}", name, value));
        any = true;
    }
    if (!any) found.note("no variable of the library is set");
    check_root(found, search_log::environment("VEL_PATH").empty());
    check_switch(found, "VELSLOG");
    check_switch(found, "VELSDEBUG");
}

// Of several directories one is enough, but those that are there must be readable. False when there
// is none, and then nothing in them need be looked for.
bool check_directories(findings &found, const char *kind, const std::vector<std::string> &list) {
    bool any = false;
    std::string missing;
    for (const std::string &directory : list) {
        int error = listing_error(directory);
        if (error == 0) {
            found.well(fmt::format("{}: {}", kind, directory));
            any = true;
        } else if (error == ENOENT) {
            missing += (missing.empty() ? "" : ", ") + directory;
        } else {
            found.wrong(fmt::format("{}: {}: {}", kind, directory, strerror(error)),
                        "make it a directory that everybody can read");
            any = true;
        }
    }
    if (any) return true;
    found.wrong(
        fmt::format("no directory of {}: tried {}", kind, missing.empty() ? "none" : missing),
        "install a data pack (velc makes one), or name its directory with --data or "
        "CORVANEDIR");
    return false;
}

void check_registry(findings &found) {
    const registry &names = installed_registry();
    if (names.error == 0 && !names.names.empty()) {
        return found.well(fmt::format("registry: {} names of code sets", names.names.size()));
    }
    std::string tried;
    for (const std::string &path : names.paths) tried += (tried.empty() ? "" : ", ") + path;
    const char *why = names.error ? vel_strerror(names.error) : "it holds no names";
    found.wrong(fmt::format("registry: {} (error {}): tried {}; built-in names are in use", why,
                            names.error, tried),
                names.error == VEL_EBADFILE
                    ? "give every line a name, blanks, a number and a line end"
                    : "install the registry of the data pack there");
}

void check_default(findings &found) {
    search_log::clear();
    vel_locale *raw = nullptr;
    int32_t status = vel_createlocale_4(&raw);
    locale_handle locale(raw);
    if (status == 0) {
        return found.well(fmt::format("default locale: {}", search_log::attempts().back().path));
    }
    int32_t error = error_of(raw);
    std::string tried = search_log::failed_paths();
    std::string place = tried.empty() && !search_log::attempts().empty()
                            ? "read " + search_log::attempts().back().path
                            : "tried " + tried;
    found.wrong(fmt::format("default.lco: {} (error {}): {}", vel_strerror(error), error, place),
                "install default.lco of the data pack");
}

void check_environment_locale(findings &found) {
    bool any = false;
    for (size_t i = first_locale_variable; i <= last_locale_variable; ++i) {
        any = any || !search_log::environment(variables[i]).empty();
    }
    if (!any) return;
    load_result result = try_load("");
    if (result.locale) return found.well("the locale of the environment loads");
    found.wrong(explain_load("", result.error), "correct or unset the variable");
}

void check_objects(findings &found, const char *kind, const std::vector<std::string> &directories,
                   std::vector<data_object> (*objects_in)(const std::string &directory)) {
    size_t good = 0;
    for (const std::string &directory : directories) {
        for (const data_object &object : objects_in(directory)) {
            if (object.problem.empty()) {
                ++good;
            } else {
                found.wrong(fmt::format("{} {}", object.path(), object.problem),
                            "compile it again with this velc, or remove it");
            }
        }
    }
    found.note(fmt::format("{} {} with a good header", good, kind));
}

void check_subdirectories(findings &found, const std::string &directory) {
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_directory(ignored)) continue;
        std::string path = entry->path().string();
        if (int reason = listing_error(path)) {
            found.wrong(fmt::format("{}: {}", path, strerror(reason)),
                        "make it readable for everybody");
        }
    }
}

void load_all(findings &found, const std::vector<std::string> &directories) {
    size_t good = 0;
    for (const std::string &directory : directories) {
        for (const data_object &object : locales_in(directory)) {
            if (!object.problem.empty()) continue;
            load_result result = try_load(object.specification);
            if (result.locale) {
                ++good;
            } else {
                found.wrong(explain_load(object.specification, result.error),
                            "compile it again with this velc, or remove it");
            }
        }
    }
    found.note(fmt::format("{} locales loaded", good));
}

int examine(invocation &run, bool load) {
    findings found(run);
    std::vector<std::string> locales = locale_directories();
    std::vector<std::string> charmaps = charmap_directories();
    check_environment(found);
    found.title("Directories");
    bool any_locales = check_directories(found, "locales", locales);
    bool any_charmaps = check_directories(found, "charmaps", charmaps);
    for (const std::string &directory : locales) check_subdirectories(found, directory);
    found.title("Files");
    if (any_charmaps) check_registry(found);
    if (any_locales) check_default(found);
    check_environment_locale(found);
    check_objects(found, "locale objects", locales, locales_in);
    check_objects(found, "charmap objects", charmaps, charmaps_in);
    if (load) load_all(found, locales);
    if (found.faults() == 0) return exit_success;
    run.out.flush();
    run.warn(fmt::format("{} fault{} found", found.faults(), found.faults() == 1 ? "" : "s"));
    return exit_failure;
}

} // namespace

void add_doctor_command(CLI::App &app, invocation &run) {
    CLI::App *command =
        app.add_subcommand("doctor", "check the environment and the installed data");
    auto load = std::make_shared<bool>(false);
    command->add_flag("--load", *load, "load every locale too");
    command->footer(
        "Shows what was looked for, what is wrong and how to mend it. Exit status 0 when all\n"
        "is well, 1 otherwise.");
    command->callback([&run, load] { run.action = [&run, load] { return examine(run, *load); }; });
}

} // namespace vel_tool
