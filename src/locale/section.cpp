#include "locale/section.h"

#include "ext/memory.h"
#include "record/texts.h"
#include "vels/errors.h"

namespace vel {
namespace {

constexpr int32_t first_reserve = 4096;

// A list under construction. Frees what it holds unless that is taken.
class list_builder {
public:
    ~list_builder() {
        text_list list{static_cast<int32_t>(items_.size()), items_.data()};
        for (int32_t i = 0; i < list.count; ++i) release_text(list.items[i]);
    }
    bool add(locale_text text) {
        if (items_.push(text)) return true;
        release_text(text);
        return false;
    }
    text_list take() {
        int32_t count = static_cast<int32_t>(items_.size());
        return {count, items_.release()};
    }

private:
    host_array<locale_text> items_;
};

} // namespace

bool section::require(bool holds) {
    return (holds && !stream.truncated()) || refuse(VEL_EBADFILE);
}

bool section::number(int32_t *value) {
    vel_skip_space(stream);
    int32_t first = stream.get();
    stream.unget(first);
    if (!require(is_digit(first) || first == '-' || first == '+')) return false;
    *value = vel_read_int(stream);
    return require(true);
}

bool section::count(int32_t *value) {
    return number(value) && require(*value >= 0);
}

bool section::integer(int32_t *value) {
    if (!number(value)) return false;
    vel_skip_space(stream);
    return true;
}

bool section::text(locale_text &text) {
    int32_t length;
    if (!count(&length)) return false;
    if (length == 0) {
        vel_skip_space(stream);
        text = empty_text();
        return true;
    }
    if (stream.get() != ' ') return refuse(VEL_ENOFILE);
    host_array<char> bytes;
    size_t reserved = static_cast<size_t>(length < first_reserve ? length : first_reserve);
    bytes.reserve(reserved + text_padding);
    for (int32_t i = 0; i < length; ++i) {
        if (!bytes.push(static_cast<char>(vel_read_hex_byte(stream)))) return refuse(VEL_ENOMEM);
        if (stream.truncated()) return refuse(VEL_EBADFILE);
    }
    char *padding = bytes.extend(text_padding);
    if (!padding) return refuse(VEL_ENOMEM);
    memset(padding, 0, text_padding);
    vel_skip_space(stream);
    text = {bytes.release(), empty_text().wide};
    return true;
}

bool section::list(text_list &list, int32_t count) {
    list_builder items;
    for (int32_t i = 0; i < count; ++i) {
        locale_text item;
        if (!text(item)) return false;
        if (!items.add(item)) return refuse(VEL_ENOMEM);
    }
    list = items.take();
    return true;
}

// Kept: sizes above 0, and 0 or -1 as the last one. So the formatter never divides by a size of 0,
// and nothing changes: whatever is 0 or less ends grouping, and what follows it is never reached.
bool section::grouping(vel_grouping &grouping) {
    int32_t sizes;
    if (!count(&sizes)) return false;
    if (sizes > max_grouping) return refuse(VEL_ENOPRINT);
    bool ended = false;
    for (int32_t i = 0; i < sizes; ++i) {
        int32_t size;
        if (!integer(&size)) return false;
        if (ended || (i == 0 && size <= 0)) {
            ended = true;
            continue;
        }
        grouping.sizes[i] = size < -1 ? -1 : size;
        grouping.count = i + 1;
        ended = size <= 0;
    }
    return true;
}

bool section::table(const sealed_table *&table) {
    trie_owner owner{vel_trie_create(sizeof(uint16_t), 0, nullptr)};
    if (!owner.trie) return refuse(VEL_ENOMEM);
    if (vel_trie_read(stream, owner.trie, max_character_bytes, read_trie_value16) != 0) {
        bool no_memory = vel_trie_error(owner.trie) == VEL_ENOMEM;
        return refuse(no_memory ? VEL_ENOMEM : VEL_EBADFILE);
    }
    const sealed_table *sealed = seal(owner.trie);
    if (!sealed) return refuse(VEL_ENOMEM);
    table = sealed;
    return true;
}

} // namespace vel
