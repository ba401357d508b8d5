#include <mutex>

#include "velc/source/code_points.h"
#include "velc/source/collate_model.h"

namespace velc {

symbol_id symbol_table::intern(std::string_view name) {
    if (auto code = code_point_of_name(name); code && is_scalar_value(*code)) return *code;
    {
        std::shared_lock reading(mutex_);
        if (auto known = ids_.find(name); known != ids_.end()) return known->second;
    }
    std::unique_lock writing(mutex_);
    if (auto known = ids_.find(name); known != ids_.end()) return known->second;
    const auto id = static_cast<symbol_id>(first_named + names_.size());
    ids_.emplace(names_.emplace_back(name), id);
    return id;
}

symbol_id symbol_table::find(std::string_view name) const {
    if (auto code = code_point_of_name(name); code && is_scalar_value(*code)) return *code;
    std::shared_lock reading(mutex_);
    auto known = ids_.find(name);
    return known == ids_.end() ? no_symbol : known->second;
}

std::string symbol_table::name(symbol_id id) const {
    if (id == no_symbol) return {};
    if (is_character(id)) {
        const std::string bracketed = code_point_name(id);
        return bracketed.substr(1, bracketed.size() - 2);
    }
    std::shared_lock reading(mutex_);
    return names_.at(id - first_named);
}

std::size_t symbol_table::size() const {
    std::shared_lock reading(mutex_);
    return names_.size();
}

} // namespace velc
