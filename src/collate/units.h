// The units that a text is weighed by: its characters and collating elements.
#pragma once

#include "collate/text.h"
#include "ext/memory.h"

namespace vel {

struct unit {
    uint32_t index;  // collation index, or no_index
    vel_wchar value; // of the character; that of an element is 1
};

constexpr vel_wchar element_value = 1;

// What the functions for single-byte code sets do without. A loaded collation has all of it.
struct collation_scope {
    bool elements = true;
    bool expansions = true;
    bool backward = true;
    bool lone_ends = true; // a character without an index ends a string higher than its end does
};

// How a locale weighs text.
struct weighing {
    const collate_category &by;
    collation_scope scope;
    const uint16_t *traits;
    bool has_elements;

    explicit weighing(const collate_category &collate, collation_scope s = {})
        : by(collate), scope(s), traits(collate.layout.traits),
          has_elements(s.elements && collate.element_count > 0) {}

    int32_t passes() const { return by.pass_count; }
    bool is_backward(int32_t pass) const {
        return scope.backward && by.passes[pass].direction == pass_backward;
    }
    // Whether a character may play that part in an element. One without an index does not tell.
    bool may(uint32_t index, uint16_t part) const {
        return has_elements && (index == no_index || traits[index] & part);
    }
};

// The numbers of the elements that begin with a value, in table order.
struct element_range {
    const uint32_t *begin, *end;
};
element_range elements_from(const collate_category &collate, vel_wchar first);

template <typename Text>
[[gnu::always_inline]] inline uint32_t index_in(const weighing &by, vel_wchar value) {
    uint32_t cell = Text::find(*by.by.characters, value);
    return is_end(cell) ? cell_value(cell) : no_index;
}

// The first element in the table that stands at the text, which is stepped over; null for none.
template <typename Text>
[[gnu::noinline]] const collating_element *take_element(const collate_category &collate,
                                                        Text &text) {
    Text from = text;
    element_range range = elements_from(collate, from.take());
    for (; range.begin < range.end; ++range.begin) {
        const collating_element &element = collate.elements[*range.begin];
        Text at = from;
        int32_t matched = 1;
        while (matched < element.count && !at.done() && at.take() == element.values[matched]) {
            ++matched;
        }
        if (matched < element.count) continue;
        text = at;
        return &element;
    }
    return nullptr;
}

// Whether an element may go on with what comes next. Asked before elements are looked for, as
// common letters begin rare ones.
template <typename Text> bool may_follow(const weighing &by, Text next) {
    if (next.done()) return false;
    vel_wchar value = next.take();
    return by.may(index_in<Text>(by, value), follows_element) && by.by.layout.may_follow(value);
}

template <typename Text> bool may_be_element(const weighing &by, uint32_t index, Text next) {
    return by.may(index, begins_element) &&
           (by.may(index, is_whole_element) || may_follow(by, next));
}

template <typename Text>
[[gnu::always_inline]] inline unit take_unit(const weighing &by, Text &text) {
    Text from = text;
    vel_wchar value = text.take();
    uint32_t index = index_in<Text>(by, value);
    if (may_be_element(by, index, text)) [[unlikely]] {
        if (const collating_element *element = take_element(by.by, from)) {
            text = from;
            return {static_cast<uint32_t>(element->index), element_value};
        }
    }
    return {index, value};
}

// The units of a text, kept for the passes behind the first: on the stack up to 128 of them. After
// a failed growth it stays failed and keeps no more.
class unit_list {
public:
    unit_list() = default;
    unit_list(const unit_list &) = delete;
    unit_list &operator=(const unit_list &) = delete;
    ~unit_list() {
        if (data_ != stack_) vel_free(data_);
    }

    bool failed() const { return failed_; }
    size_t size() const { return size_; }
    const unit *begin() const { return data_; }
    const unit *end() const { return data_ + size_; }
    void clear() { size_ = 0; }
    void push(const unit &added) {
        if (size_ == capacity_) [[unlikely]] {
            if (!grow()) return;
        }
        data_[size_++] = added;
    }

private:
    bool grow();

    static constexpr size_t small = 128;
    unit *data_ = stack_;
    size_t size_ = 0;
    size_t capacity_ = small;
    bool failed_ = false;
    unit stack_[small];
};

} // namespace vel
