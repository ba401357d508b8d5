#include "velc/collate_order.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include <fmt/format.h>

#include "velc/source/diagnostics.h"

namespace velc {

std::span<const symbol_id> order_entry::weight(std::size_t pass) const {
    const auto weights = source->weights(*statement);
    const collate_weight written = pass < weights.size() ? weights[pass] : collate_weight{};
    if (written.kind == weight_kind::ignore) return {};
    if (written.kind == weight_kind::symbols) return source->symbols(written);
    return {&subject, 1};
}

std::uint32_t collate_order::place(symbol_id symbol) const {
    return symbol < places_.size() ? places_[symbol] : no_place;
}

// Follows the statements with a cursor in a doubly linked ring, whose node 0 is both ends. Outside
// of reorder mode the cursor is the last node, and a name that has its place already stays there;
// in reorder mode it moves behind the cursor with the weights of its new line.
class order_builder {
public:
    order_builder(const collation &from, const symbol_table &names)
        : from_(from), names_(names), latin_(names.find("LATIN")) {}

    collate_order build() {
        from_.for_each([&](const collate_source &source, const collate_statement &statement) {
            source_ = &source;
            statement_ = &statement;
            take();
        });
        if (pending_) fail("found an ellipsis at the end, expected an entry behind it");
        write_directions();
        write_places();
        return std::move(order_);
    }

private:
    struct node {
        order_entry entry;
        std::uint32_t previous = 0, next = 0;
    };

    void take() {
        const symbol_id subject = statement_->subject;
        switch (statement_->op) {
        case collate_op::element:
            declare_element();
            break;
        case collate_op::equivalence:
            other_names_.emplace(subject, source_->symbols(*statement_)[0]);
            break;
        case collate_op::order_start:
            start_section();
            break;
        case collate_op::entry:
            fill_ellipsis(subject);
            put({named(subject), source_, statement_});
            break;
        case collate_op::ellipsis:
            pending_ = {no_symbol, source_, statement_};
            break;
        case collate_op::reorder_after:
            reorder_after(subject);
            break;
        case collate_op::reorder_end:
            reordering_ = false;
            break;
        case collate_op::reorder_sections_after:
            fail("found sections to move, expected single entries");
        case collate_op::symbol: // takes its place where it stands as an entry
        case collate_op::script: // sections stand in the order in which they are started
        case collate_op::order_end:
        case collate_op::undefined: // every code set has characters without a place: see the
                                    // encoder
        case collate_op::codepoint_order:
            break;
        }
    }

    void declare_element() {
        const auto from = source_->symbols(*statement_);
        const bool known = std::ranges::any_of(
            order_.sequences_, [&](const auto &one) { return one.subject == statement_->subject; });
        if (!known) order_.sequences_.push_back({statement_->subject, {from.begin(), from.end()}});
    }

    // The section of Latin letters decides which passes run backward, else the first section.
    void start_section() {
        reordering_ = false;
        const auto directions = source_->directions(*statement_);
        if (directions.size() > most_passes)
            fail(fmt::format("found {} passes, expected at most {}", directions.size(),
                             most_passes));
        passes_ = std::max(passes_, directions.size());
        const bool latin = statement_->subject != no_symbol && statement_->subject == latin_;
        if (has_directions_ && (!latin || has_latin_)) return;
        directions_.assign(directions.begin(), directions.end());
        has_directions_ = true;
        has_latin_ = latin;
    }

    void reorder_after(symbol_id anchor) {
        const std::uint32_t *there = find(named(anchor));
        if (!there)
            fail(
                fmt::format("found {}, expected a symbol that has its place", names_.name(anchor)));
        reordering_ = true;
        cursor_ = *there;
    }

    // Every character between the last entry and this one.
    void fill_ellipsis(symbol_id next) {
        if (!pending_) return;
        order_entry between = *pending_;
        pending_.reset();
        const symbol_id last = nodes_[reordering_ ? cursor_ : nodes_[0].previous].entry.subject;
        if (!is_character(last) || !is_character(next) || next <= last)
            fail("found an ellipsis, expected characters of rising code points around it");
        for (between.subject = last + 1; between.subject < next; ++between.subject) put(between);
    }

    void put(const order_entry &entry) {
        std::uint32_t &slot = slot_of(entry.subject);
        if (slot == 0) {
            slot = static_cast<std::uint32_t>(nodes_.size());
            nodes_.emplace_back();
        } else if (!reordering_) {
            return;
        } else {
            if (cursor_ == slot) cursor_ = nodes_[slot].previous;
            unlink(slot);
        }
        nodes_[slot].entry = entry;
        link(slot, reordering_ ? cursor_ : nodes_[0].previous);
        cursor_ = slot;
    }

    void unlink(std::uint32_t at) {
        nodes_[nodes_[at].previous].next = nodes_[at].next;
        nodes_[nodes_[at].next].previous = nodes_[at].previous;
    }
    void link(std::uint32_t at, std::uint32_t behind) {
        nodes_[at].previous = behind;
        nodes_[at].next = nodes_[behind].next;
        nodes_[nodes_[behind].next].previous = at;
        nodes_[behind].next = at;
    }

    symbol_id named(symbol_id symbol) const {
        const auto other = other_names_.find(symbol);
        return other == other_names_.end() ? symbol : other->second;
    }
    const std::uint32_t *find(symbol_id symbol) const {
        return symbol < slots_.size() && slots_[symbol] != 0 ? &slots_[symbol] : nullptr;
    }
    std::uint32_t &slot_of(symbol_id symbol) {
        if (symbol >= slots_.size()) slots_.resize(symbol + 1024);
        return slots_[symbol];
    }

    void write_directions() {
        order_.backward_.assign(std::max<std::size_t>(passes_, 1), false);
        for (std::size_t i = 0; i < directions_.size(); ++i)
            order_.backward_[i] = directions_[i].backward;
    }

    void write_places() {
        order_.places_.assign(slots_.size(), no_place);
        for (std::uint32_t at = nodes_[0].next; at != 0; at = nodes_[at].next) {
            const order_entry &entry = nodes_[at].entry;
            order_.places_[entry.subject] = static_cast<std::uint32_t>(order_.entries_.size());
            order_.entries_.push_back(entry);
        }
        for (const auto &[name, symbol] : other_names_)
            if (name < order_.places_.size()) order_.places_[name] = order_.place(symbol);
    }

    [[noreturn]] void fail(std::string_view text) const {
        throw source_error({source_->file, statement_->line}, text);
    }

    const collation &from_;
    const symbol_table &names_;
    const symbol_id latin_;
    collate_order order_;
    const collate_source *source_ = nullptr;
    const collate_statement *statement_ = nullptr;
    std::vector<node> nodes_ = std::vector<node>(1);
    std::vector<std::uint32_t> slots_; // node of a symbol, 0 for none
    std::unordered_map<symbol_id, symbol_id> other_names_;
    std::optional<order_entry> pending_; // an ellipsis that waits for the entry behind it
    std::vector<collate_direction> directions_;
    std::size_t passes_ = 0;
    bool has_directions_ = false, has_latin_ = false, reordering_ = false;
    std::uint32_t cursor_ = 0; // in reorder mode
};

collate_order resolve_order(const collation &from, const symbol_table &names) {
    return order_builder(from, names).build();
}

} // namespace velc
