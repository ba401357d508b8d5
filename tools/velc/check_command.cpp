#include <cstdio>

#include <fmt/format.h>

#include "velc/check.h"
#include "velc/commands.h"
#include "velc/object_input.h"
#include "velc/recipe.h"
#include "velc/registry_file.h"
#include "velc/tool_error.h"
#include "vels/registry.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

class checker {
public:
    explicit checker(const check_options &options) : options_(options) {}
    checker(const checker &) = delete;
    checker &operator=(const checker &) = delete;
    ~checker() { vel_free_registry_cache(); }

    int run() {
        for (const std::string &path : options_.paths)
            for (const fs::path &object : objects_at(path)) check(object);
        if (!options_.quiet) fmt::print("{} checked, {} bad\n", count_, bad_);
        return bad_ == 0 ? exit_success : exit_failure;
    }

private:
    void check(const fs::path &object) {
        ++count_;
        try {
            check_object(object);
        } catch (const std::exception &error) {
            ++bad_;
            fmt::print(stderr, "velc: {}\n", error.what());
        }
    }

    void check_object(const fs::path &object) {
        const object_kind kind = kind_of_file(object);
        if (kind == object_kind::registry) return check_as_registry(object);
        check_hash(object);
        if (kind == object_kind::conversion) return check_cvo(object);
        use_registry_of(object);
        const name_resolver resolve = [this](std::string_view name) { return names_.find(name); };
        if (kind == object_kind::charmap) {
            check_cmo(object, resolve);
            return load_cmo(object);
        }
        check_lco(object, resolve);
        load_lco(object);
    }

    // Whatever is no object by its first line can only be a registry, by its name.
    static void check_as_registry(const fs::path &object) {
        if (object.filename() != "registry")
            throw tool_error("{}: found no FILE_TYPE line, expected an object", object.string());
        check_registry(object);
    }

    // Names are looked up in the registry of the object's own tree, by this program and by the
    // library alike. Without one the built-in names count.
    void use_registry_of(const fs::path &object) {
        const fs::path registry = !options_.registry.empty()
                                      ? fs::path(options_.registry)
                                      : registry_beside(object).value_or(fs::path());
        if (registry == registry_ && !names_.rows().empty()) return;
        registry_ = registry;
        names_ =
            registry.empty() ? codeset_table(read_recipe({})).names() : read_registry(registry);
        vel_free_registry_cache();
        if (!registry.empty()) vel_cache_registry(nullptr, registry.string().c_str());
    }

    const check_options &options_;
    fs::path registry_;
    registry_names names_;
    std::size_t count_ = 0, bad_ = 0;
};

} // namespace

int check(const check_options &options) {
    return checker(options).run();
}

} // namespace velc
