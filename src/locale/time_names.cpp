#include "locale/time_names.h"

#include "ext/error.h"
#include "ext/memory.h"
#include "time/names.h"
#include "vels/multibyte.h"

namespace vel {
namespace {

// Names beyond this many in one list are not searched: no calendar has so many, and a file made up
// to have them would make building take the square of its length.
constexpr int32_t max_names = 4096;

struct wide_piece {
    const vel_wchar *begin, *end;
};

wide_piece whole(const locale_text &text) {
    return {text.wide, text.wide + vel_wcslen(text.wide)};
}

class tree_builder {
public:
    explicit tree_builder(vel_locale *locale) : locale_(locale) {
        for (int32_t i = 0; i < name_list_count; ++i) nodes_.push({0, no_name, 0, 0});
    }

    // Adds the names of a list. Those that begin or end in blanks to fill columns are found without
    // them as well: blanks in front go with the blank of a format, and people leave them out.
    template <typename TextOf> void add_list(name_list list, int32_t count, TextOf text_of) {
        if (count > max_names) count = max_names;
        for (int32_t i = 0; i < count; ++i) add(list, whole(text_of(i)), i);
        for (int32_t i = 0; i < count; ++i) {
            wide_piece name = whole(text_of(i));
            if (name.begin == name.end) continue;
            if (!is_blank(name.begin[0]) && !is_blank(name.end[-1])) continue;
            if (!nodes_.failed()) nodes_[list].value = 1;
            while (name.begin < name.end && is_blank(*name.begin)) ++name.begin;
            if (name.begin == name.end) continue;
            add(list, name, i);
            while (is_blank(name.end[-1])) --name.end;
            add(list, name, i);
        }
    }
    void add_list(name_list list, const text_list &texts) {
        add_list(
            list, texts.count, [&](int32_t i) -> auto & { return texts.items[i]; });
    }
    void add_eras(name_list list, locale_text era_entry::*name) {
        const time_derived &derived = locale_->time_derived;
        add_list(
            list, derived.era_count, [&](int32_t i) -> auto & { return derived.eras[i].*name; });
    }

    void *take() { return nodes_.failed() ? nullptr : nodes_.release(); }

private:
    bool is_blank(vel_wchar c) const { return has_class(locale_, c, VEL_CLASS_BLANK); }

    // Of equal names the first one counts.
    void add(name_list list, wide_piece text, int32_t name) {
        uint32_t at = list;
        for (const vel_wchar *c = text.begin; c < text.end; ++c) {
            at = child(at, folded(locale_, *c));
            if (!at) return;
        }
        if (nodes_[at].name == no_name) nodes_[at].name = name;
    }

    // The node behind a node, made when it is not there; 0 without memory for it.
    uint32_t child(uint32_t parent, vel_wchar value) {
        if (nodes_.failed()) return 0;
        uint32_t last = 0;
        for (uint32_t at = nodes_[parent].child; at; at = nodes_[at].sibling) {
            if (nodes_[at].value == value) return at;
            last = at;
        }
        uint32_t made = static_cast<uint32_t>(nodes_.size());
        if (!nodes_.push({value, no_name, 0, 0})) return 0;
        (last ? nodes_[last].sibling : nodes_[parent].child) = made;
        return made;
    }

    vel_locale *locale_;
    host_array<name_node> nodes_;
};

} // namespace

int32_t build_time_names(vel_locale *locale) {
    const time_category &time = locale->time;
    time_derived &derived = locale->time_derived;
    vel_free(std::exchange(derived.trees, nullptr));
    derived.count = 0;
    if (time.calendar == calendar_none) return 0;
    tree_builder builder(locale);
    builder.add_list(list_days, time.days);
    builder.add_list(list_abbreviated_days, time.abbreviated_days);
    builder.add_list(list_months, time.months);
    builder.add_list(list_abbreviated_months, time.abbreviated_months);
    builder.add_list(
        list_am_pm, 2, [&](int32_t i) -> auto & { return i == 0 ? time.am : time.pm; });
    builder.add_list(list_alt_digits, time.alt_digits);
    builder.add_eras(list_eras, &era_entry::name);
    builder.add_eras(list_other_eras, &era_entry::other_name);
    derived.trees = builder.take();
    if (!derived.trees) return fail(locale, VEL_ENOMEM);
    derived.count = name_list_count;
    return 0;
}

} // namespace vel
