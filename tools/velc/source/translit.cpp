#include "velc/source/translit.h"

#include <algorithm>

namespace velc {

translit_table::translit_table(std::vector<layer> layers) : layers_(std::move(layers)) {}

namespace {

const translit_rule *rule_for(const translit_source &in, char32_t code) {
    const std::u32string_view from(&code, 1);
    auto found = std::ranges::lower_bound(
        in.rules, from, {}, [](const translit_rule &r) { return std::u32string_view(r.from); });
    return found != in.rules.end() && found->from == from ? &*found : nullptr;
}

} // namespace

text_list translit_table::candidates(char32_t code) const {
    text_list all;
    for (const layer &l : layers_)
        if (const translit_rule *rule = rule_for(l.rules->translit, code))
            all.insert(all.end(), rule->to.begin(), rule->to.end());
    return all;
}

std::optional<std::u32string> translit_table::substitute(char32_t code,
                                                         const charmap &target) const {
    for (const layer &l : layers_) {
        const translit_rule *rule = rule_for(l.rules->translit, code);
        if (!rule) continue;
        for (const std::u32string &to : rule->to)
            if (target.has_all(to)) return to;
    }
    for (const layer &l : layers_)
        for (const std::u32string &to : l.rules->translit.default_missing)
            if (target.has_all(to)) return to;
    return std::nullopt;
}

std::optional<std::u32string> translit_table::fit(std::u32string_view text,
                                                  const charmap &target) const {
    std::u32string fitting;
    for (char32_t code : text) {
        if (target.has(code)) {
            fitting += code;
            continue;
        }
        auto other = substitute(code, target);
        if (!other) return std::nullopt;
        fitting += *other;
    }
    return fitting;
}

} // namespace velc
