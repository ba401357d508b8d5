#include <algorithm>
#include <map>
#include <set>

#include "common/locale_name.h"
#include "velc/conversion_recipe.h"
#include "velc/conversion_writer.h"
#include "velc/pack.h"
#include "velc/tool_error.h"

namespace velc {

namespace {

// Among the charmaps of a locale: order by the Thai algorithm instead of tables.
constexpr std::string_view thai_word = "thai_smo";

// One line of the recipe's locales.
struct listed_locale {
    std::string name;   // under which the object is found: "he_IL@hebr"
    std::string source; // "he_IL"
    overlay_pointer overlay;
    bool is_default = false;
    bool thai = false;
    std::vector<std::string> charmaps;
};

listed_locale read_listed(const recipe &from, const recipe_line &line) {
    listed_locale one;
    one.is_default = line.words[0] == "default";
    const std::size_t plus = line.words.size() > 1 ? line.words[1].find('+') : std::string::npos;
    const bool overlaid = !one.is_default && plus != std::string::npos;
    const std::size_t first = one.is_default || overlaid ? 2 : 1;
    if (line.words.size() <= first)
        throw tool_error("{}: found {} words, expected a locale source and its charmaps",
                         place(from.locales, line), line.words.size());
    one.name = one.source = line.words[one.is_default ? 1 : 0];
    one.charmaps.assign(line.words.begin() + static_cast<std::ptrdiff_t>(first), line.words.end());
    one.thai = std::erase(one.charmaps, thai_word) > 0;
    if (!overlaid) return one;
    one.source = line.words[1].substr(0, plus);
    one.overlay = from.find_overlay(line.words[1].substr(plus + 1));
    if (!one.overlay)
        throw tool_error("{}: found {}, expected a locale source, + and an overlay of the recipe",
                         place(from.locales, line), line.words[1]);
    return one;
}

class planner {
public:
    planner(const codeset_table &codesets) : codesets_(codesets) {}

    void add(const listed_locale &listed, const codeset &of) {
        listed.is_default ? add_default(listed.source, of) : add_locale(listed, of);
    }

    void use_charmap(const std::string &name) { used_.insert(name); }

    void add_conversion(const conversion_recipe &listed, const codeset &from, const codeset &to) {
        pack_item item{pack_item::kind::conversion,
                       {},
                       from.charmap,
                       from.number(),
                       std::filesystem::path(conversion_directory) /
                           conversion_file_name(from.number(), to.number())};
        item.target = to.charmap;
        item.target_number = to.number();
        for (std::uint16_t source : from.numbers)
            for (std::uint16_t target : to.numbers)
                item.links.push_back(conversion_file_name(source, target));
        item.links.erase(item.links.begin()); // the file itself
        for (const std::string &source : listed.names(from))
            for (const std::string &target : listed.names(to))
                item.links.push_back(fmt::format("{}_{}.cvo", source, target));
        add(std::move(item));
        for (const codeset *one : {&from, &to})
            if (const unicode_form *form = find_unicode_form(one->charmap);
                form && form->has_charmap)
                use_charmap(one->charmap);
    }

    std::vector<pack_item> finish() {
        for (const std::string &name : used_)
            for (const codeset &of = codesets_.at(name); std::uint16_t number : of.numbers)
                add({pack_item::kind::charmap,
                     {},
                     name,
                     number,
                     std::filesystem::path(charmap_directory) / fmt::format("{:04x}.cmo", number)});
        add({pack_item::kind::registry, {}, {}, 0, registry_file});
        std::vector<pack_item> items;
        for (auto &[file, item] : items_) items.push_back(std::move(item));
        std::ranges::stable_sort(items, {}, cost_rank);
        return items;
    }

private:
    void add_default(const std::string &source, const codeset &of) {
        add({pack_item::kind::locale, source, of.charmap, of.number(),
             std::filesystem::path(locale_directory) / tools::default_object});
        used_.insert(of.charmap);
    }

    // A locale under every number of its code set. The plain name, which has the charmap's name in
    // it, is there once.
    void add_locale(const listed_locale &listed, const codeset &of) {
        const auto name = tools::parse_locale_name(listed.name);
        if (!name) throw tool_error("{}: found no locale name, expected one", listed.name);
        for (std::uint16_t number : of.numbers) {
            const std::string file = tools::locale_object_file(*name, number, of.charmap);
            if (file.size() > tools::longest_object_name)
                throw tool_error("{}: found a file name of {} characters, expected at most {}",
                                 file, file.size(), tools::longest_object_name);
            add({pack_item::kind::locale, listed.source, of.charmap, number,
                 std::filesystem::path(locale_directory) / file, listed.overlay, listed.thai});
            if (!tools::fits_specification(*name)) break;
        }
        used_.insert(of.charmap);
    }

    void add(pack_item item) {
        const auto [there, is_new] = items_.emplace(item.file, item);
        if (is_new) return;
        const pack_item &other = there->second;
        if (other.title() == item.title()) return; // listed twice
        throw tool_error("{}: would be both {} and {}, expected one object for each file",
                         item.file.generic_string(), other.title(), item.title());
    }

    // Threads end together when the long work is begun first.
    static int cost_rank(const pack_item &item) {
        if (item.what == pack_item::kind::registry) return 0;
        if (item.what == pack_item::kind::conversion)
            return find_unicode_form(item.charmap) && find_unicode_form(item.target) ? 1 : 3;
        if (item.charmap == "GB18030") return 1;
        return item.charmap == "UTF-8" ? 2 : 3;
    }

    const codeset_table &codesets_;
    std::map<std::filesystem::path, pack_item> items_;
    std::set<std::string> used_;
};

void add_recipe(planner &plan, const recipe &from, const codeset_table &codesets) {
    for (const recipe_line &line : from.locales.lines) {
        const listed_locale listed = read_listed(from, line);
        for (const std::string &charmap : listed.charmaps) {
            const codeset *known = codesets.find(charmap);
            if (!known)
                throw tool_error("{}: found {}, expected a charmap that has a number",
                                 place(from.locales, line), charmap);
            plan.add(listed, *known);
        }
    }
}

void add_conversions(planner &plan, const recipe &from, const codeset_table &codesets) {
    const conversion_recipe listed(from.conversions, codesets);
    for (const auto &[source, target] : listed.pairs())
        plan.add_conversion(listed, *source, *target);
}

void add_everything(planner &plan, const codeset_table &codesets, const source_library &sources) {
    for (const supported_locale &one : sources.supported())
        plan.add({one.source, one.source, nullptr, false, false, {}}, codesets.at(one.charmap));
    const std::vector<std::string> present = sources.charmap_names();
    for (const codeset &one : codesets.all())
        if (std::ranges::binary_search(present, one.charmap)) plan.use_charmap(one.charmap);
}

} // namespace

std::string pack_item::title() const {
    if (what == kind::registry) return "registry";
    if (what == kind::charmap) return charmap;
    if (what == kind::conversion) return fmt::format("{} to {}", charmap, target);
    return overlay ? fmt::format("{}+{} in {}", source, overlay->name, charmap)
                   : fmt::format("{} in {}", source, charmap);
}

std::vector<pack_item> plan_pack(const recipe &from, const codeset_table &codesets,
                                 const source_library &sources, bool everything) {
    planner plan(codesets);
    add_recipe(plan, from, codesets);
    add_conversions(plan, from, codesets);
    if (everything) add_everything(plan, codesets, sources);
    return plan.finish();
}

} // namespace velc
