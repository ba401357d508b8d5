#include "velc/source/resolver.h"

#include <algorithm>
#include <set>

#include <fmt/format.h>

#include "velc/source/ctype_parts.h"

namespace velc {

// Who copies whom at the moment, and every file met on the way.
struct resolver::walk {
    std::vector<std::string> chain;
    std::set<std::string, std::less<>> met;

    class step {
    public:
        step(walk &of, const source_place &place, std::string_view name) : of_(of) {
            if (std::ranges::find(of.chain, name) != of.chain.end())
                throw source_error(place, fmt::format("found a copy of \"{}\" inside itself, "
                                                      "expected copies to end somewhere",
                                                      name));
            of.chain.emplace_back(name);
            of.met.emplace(name);
        }
        ~step() { of_.chain.pop_back(); }
        step(const step &) = delete;
        step &operator=(const step &) = delete;

    private:
        walk &of_;
    };
};

struct resolver::collate_walk {
    collation found;
    std::set<std::string, std::less<>> macros;
};

namespace {

// The place of an error in a file that cannot be opened is the line that names it.
template <typename Fetch>
auto fetch_from(Fetch &fetch, std::string_view name, const source_place &place) {
    try {
        return fetch(name);
    } catch (const source_error &error) {
        if (place.file.empty() || error.place().line != 0) throw;
        throw source_error(place, fmt::format("found the name \"{}\", expected a source that can "
                                              "be read ({})",
                                              name, error.what()));
    }
}

} // namespace

resolver::resolver(std::function<source_pointer(std::string_view)> fetch)
    : fetch_(std::move(fetch)) {}

template <typename T>
std::shared_ptr<const T> resolver::category(section<T> locale_source::*member,
                                            std::string_view name, walk &at) {
    const source_pointer source = fetch_(name);
    const section<T> &own = (*source).*member;
    if (own.copy_from.empty()) return own.own;
    const source_place place{source->file, own.copy_line};
    fetch_from(fetch_, own.copy_from, place);
    walk::step step(at, place, own.copy_from);
    auto copied = category(member, own.copy_from, at);
    if (!copied)
        throw source_error(place, fmt::format("found copy \"{}\", expected a source that has this "
                                              "category",
                                              own.copy_from));
    return copied;
}

std::shared_ptr<const ctype> resolver::ctype(std::string_view name, walk &at) {
    const source_pointer source = fetch_(name);
    const section<velc::ctype> &own = source->ctype;
    if (own.copy_from.empty()) return own.own;
    const source_place place{source->file, own.copy_line};
    fetch_from(fetch_, own.copy_from, place);
    walk::step step(at, place, own.copy_from);
    auto copied = ctype(own.copy_from, at);
    if (!copied)
        throw source_error(place, fmt::format("found copy \"{}\", expected a source that has this "
                                              "category",
                                              own.copy_from));
    if (!own.own) return copied;
    {
        std::lock_guard lock(mutex_);
        if (auto known = ctypes_.find(name); known != ctypes_.end()) return known->second;
    }
    auto merged = std::make_shared<const velc::ctype>(overlaid(*copied, *own.own));
    std::lock_guard lock(mutex_);
    return ctypes_.try_emplace(std::string(name), std::move(merged)).first->second;
}

// Walks the steps of one file. A copy replaces everything that was collected before it; macros stay
// defined, so that a file can steer what it copies.
void resolver::collate_steps(const locale_source &from, collate_walk &to, walk &at) {
    using kind = collate_source::step_kind;
    std::vector<bool> active;
    const collate_source &source = *from.collate;
    for (const collate_source::step &s : source.steps) {
        const source_place place{from.file, s.line};
        const bool branch = s.kind == kind::otherwise || s.kind == kind::endif;
        if (branch && active.empty())
            throw source_error(place, "found else or endif, expected an ifdef before it");
        if (s.kind == kind::ifdef) {
            active.push_back(to.macros.contains(s.name));
        } else if (s.kind == kind::ifndef) {
            active.push_back(!to.macros.contains(s.name));
        } else if (s.kind == kind::otherwise) {
            active.back() = !active.back();
        } else if (s.kind == kind::endif) {
            active.pop_back();
        } else if (std::ranges::find(active, false) != active.end()) {
            continue;
        } else if (s.kind == kind::define) {
            to.macros.insert(s.name);
        } else if (s.kind == kind::undef) {
            to.macros.erase(s.name);
        } else if (s.kind == kind::statements) {
            to.found.parts.push_back({from.collate, s.first, s.last});
            to.found.codepoint_order |= source.codepoint_order;
        } else {
            if (s.kind == kind::copy) to.found = {};
            const source_pointer copied = fetch_from(fetch_, s.name, place);
            walk::step step(at, place, s.name);
            if (!copied->collate)
                throw source_error(place, fmt::format("found copy \"{}\", expected a source that "
                                                      "has this category",
                                                      s.name));
            collate_steps(*copied, to, at);
        }
    }
    if (!active.empty())
        throw source_error({from.file, source.steps.back().line},
                           "found the end of the category, expected an endif");
}

std::shared_ptr<const collation> resolver::collate(std::string_view name, walk &at) {
    const source_pointer source = fetch_(name);
    if (!source->collate) return nullptr;
    collate_walk to;
    collate_steps(*source, to, at);
    if (to.found.codepoint_order) to.found.parts.clear();
    return std::make_shared<const collation>(std::move(to.found));
}

std::shared_ptr<const locale_definition> resolver::locale(std::string_view name) {
    const source_pointer source = fetch_(name);
    walk at;
    walk::step step(at, {source->file, 0}, name);
    auto found = std::make_shared<locale_definition>();
    found->name = name;
    found->file = source->file;
    found->ident = category(&locale_source::ident, name, at);
    found->ctype = ctype(name, at);
    found->collate = collate(name, at);
    found->monetary = category(&locale_source::monetary, name, at);
    found->numeric = category(&locale_source::numeric, name, at);
    found->time = category(&locale_source::time, name, at);
    found->messages = category(&locale_source::messages, name, at);
    found->warnings = source->warnings;
    for (const std::string &other : at.met) {
        if (other == name) continue;
        found->copied.push_back(other);
        const warning_list &more = fetch_(other)->warnings;
        found->warnings.insert(found->warnings.end(), more.begin(), more.end());
    }
    return found;
}

void resolver::translit_layers(std::string_view name, std::vector<translit_table::layer> &layers,
                               walk &at) {
    auto rules = ctype(name, at);
    if (!rules) return;
    layers.push_back({rules});
    const source_place place{fetch_(name)->file, 0};
    for (const std::string &include : rules->translit.includes) {
        if (at.met.contains(include)) continue;
        fetch_from(fetch_, include, place);
        walk::step step(at, place, include);
        translit_layers(include, layers, at);
    }
}

std::shared_ptr<const translit_table> resolver::translit(std::string_view name) {
    walk at;
    std::vector<translit_table::layer> layers;
    translit_layers(name, layers, at);
    return std::make_shared<const translit_table>(std::move(layers));
}

} // namespace velc
