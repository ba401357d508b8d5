#include "velc/source/source_library.h"

#include <algorithm>
#include <functional>
#include <future>
#include <map>

#include "velc/source/locale_source.h"
#include "velc/source/resolver.h"
#include "velc/source/supported.h"

namespace velc {

namespace {

// Makes each value once; threads that ask for one in the making wait for it. A failure is kept too.
template <typename T> class once_cache {
public:
    using pointer = std::shared_ptr<const T>;

    pointer get(std::string_view name, const std::function<T(const std::string &)> &make) {
        std::promise<pointer> promise;
        std::shared_future<pointer> future;
        {
            std::lock_guard lock(mutex_);
            auto known = values_.find(name);
            if (known != values_.end())
                future = known->second;
            else
                values_.emplace(name, promise.get_future().share());
        }
        if (future.valid()) return future.get();
        try {
            auto made = std::make_shared<const T>(make(std::string(name)));
            promise.set_value(made);
            return made;
        } catch (...) {
            promise.set_exception(std::current_exception());
            throw;
        }
    }

private:
    std::mutex mutex_;
    std::map<std::string, std::shared_future<pointer>, std::less<>> values_;
};

void refuse_paths(std::string_view name) {
    if (name.empty() || name.front() == '.' || name.find('/') != name.npos)
        throw source_error({std::string(name), 0}, "found a path, expected the name of a source");
}

std::vector<std::string> file_names(const std::filesystem::path &directory) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(directory, error))
        if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
    if (error) throw source_error({directory.string(), 0}, "cannot be listed: " + error.message());
    std::ranges::sort(names);
    return names;
}

} // namespace

struct source_library::store {
    explicit store(std::filesystem::path at)
        : root(std::move(at)), follow([this](std::string_view name) { return source(name); }) {}

    std::shared_ptr<const locale_source> source(std::string_view name) {
        refuse_paths(name);
        return sources.get(name, [&](const std::string &file) {
            return read_locale_source(file, (root / "locales" / file).string(), symbols);
        });
    }

    std::filesystem::path root;
    symbol_table symbols;
    once_cache<velc::charmap> charmaps;
    once_cache<locale_source> sources;
    resolver follow;
};

source_library::source_library(std::filesystem::path root)
    : store_(std::make_unique<store>(std::move(root))) {}

source_library::~source_library() = default;

std::shared_ptr<const charmap> source_library::charmap(std::string_view name) {
    refuse_paths(name);
    return store_->charmaps.get(name, [&](const std::string &file) {
        const std::filesystem::path plain = store_->root / "charmaps" / file;
        const std::filesystem::path packed = plain.string() + ".gz";
        return read_charmap((std::filesystem::exists(packed) ? packed : plain).string());
    });
}

std::shared_ptr<const locale_definition> source_library::locale(std::string_view name) {
    return store_->follow.locale(name);
}

std::shared_ptr<const translit_table> source_library::translit(std::string_view locale_name) {
    return store_->follow.translit(locale_name);
}

std::vector<supported_locale> source_library::supported() const {
    return read_supported((store_->root / "SUPPORTED").string());
}

std::vector<std::string> source_library::charmap_names() const {
    std::vector<std::string> names = file_names(store_->root / "charmaps");
    for (std::string &name : names)
        if (name.ends_with(".gz")) name.resize(name.size() - 3);
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::vector<std::string> source_library::locale_names() const {
    return file_names(store_->root / "locales");
}

symbol_table &source_library::symbols() {
    return store_->symbols;
}
const symbol_table &source_library::symbols() const {
    return store_->symbols;
}
const std::filesystem::path &source_library::root() const {
    return store_->root;
}

} // namespace velc
