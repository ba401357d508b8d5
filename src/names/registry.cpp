// Looking code-set names up, and the cache of the registry.
#include "names/registry.h"

#include "ext/data_file.h"
#include "ext/host_stream.h"
#include "ext/memory.h"
#include "ext/version.h"
#include "names/text.h"

namespace vel {
namespace {

// An entry of the cache. Entries whose names hash alike form a chain, in the order of the file.
struct cached_entry : vel_registry_entry {
    cached_entry *next_alike;
};

constexpr size_t chain_count = 256;

// At most one of cache and fallback is set. With neither, look-ups read the file.
struct {
    vel_registry_entry *cache;
    const builtin_codeset *fallback; // after a failed attempt to cache
    cached_entry *chains[chain_count];
} registry;

size_t chain_of(const char *name) {
    uint32_t hash = 2166136261u;
    for (; *name; ++name) hash = (hash ^ static_cast<unsigned char>(*name)) * 16777619u;
    return (hash ^ hash >> 16) % chain_count;
}

void make_chains() {
    cached_entry **ends[chain_count];
    for (size_t i = 0; i < chain_count; ++i) {
        registry.chains[i] = nullptr;
        ends[i] = &registry.chains[i];
    }
    for (vel_registry_entry *entry = registry.cache; entry; entry = entry->next) {
        auto *added = static_cast<cached_entry *>(entry);
        size_t chain = chain_of(entry->name);
        *ends[chain] = added;
        ends[chain] = &added->next_alike;
    }
}

// Why the file could not be opened does not matter to callers, so no number is asked for.
void *open_registry(const char *path) {
    return path ? _vel_ext_fopen(path, "r")
                : vel_find_data_file(nullptr, "registry", "cm", VEL_CM_VERSION);
}

// Entries in the order in which they were added.
class entry_list {
public:
    entry_list() = default;
    entry_list(const entry_list &) = delete;
    entry_list &operator=(const entry_list &) = delete;
    ~entry_list() { vel_free_registry_list(head_); }

    vel_registry_entry *add(const codeset_name &name) {
        host_ptr<cached_entry> entry = make_host<cached_entry>();
        host_ptr<char> copy = make_host_array<char>(entry ? sizeof name : 0);
        if (!copy) return nullptr;
        memcpy(copy.get(), name, strlen(name) + 1);
        entry->name = copy.release();
        *tail_ = entry.get();
        tail_ = &entry->next;
        return entry.release();
    }
    vel_registry_entry *release() { return std::exchange(head_, nullptr); }

private:
    vel_registry_entry *head_ = nullptr;
    vel_registry_entry **tail_ = &head_;
};

const vel_registry_entry *fall_back(void *context, int32_t number) {
    refuse(context, number);
    registry.fallback = vel_builtin_codesets;
    return nullptr;
}

uint16_t find_in_cache(const char *name) {
    const cached_entry *entry = registry.chains[chain_of(name)];
    for (; entry; entry = entry->next_alike) {
        if (strcmp(entry->name, name) == 0) return entry->number;
    }
    return VEL_CS_INVALID;
}

uint16_t find_in_fallback(const char *name) {
    for (const builtin_codeset *row = registry.fallback; row->name; ++row) {
        if (strcmp(row->name, name) == 0) return row->number;
    }
    return VEL_CS_INVALID;
}

// VEL_CS_INVALID with `error` 0 means that the file is in order and lacks the name.
uint16_t find_in_file(const char *name, const char *path, int32_t &error) {
    host_stream stream(open_registry(path));
    if (!stream) {
        error = VEL_EFORMAT;
        return VEL_CS_INVALID;
    }
    text_reader file(stream.get());
    codeset_name entry;
    while (vel_read_registry_name(file, entry)) {
        if (strcmp(entry, name) == 0) {
            uint16_t number = vel_read_registry_number(nullptr, file);
            error = number == VEL_CS_INVALID ? VEL_EBADFILE : 0;
            return number;
        }
        if (!vel_skip_registry_line(file)) {
            error = VEL_EBADFILE;
            return VEL_CS_INVALID;
        }
    }
    return VEL_CS_INVALID;
}

uint16_t find(const char *name, const char *path, int32_t &error) {
    if (registry.cache) return find_in_cache(name);
    if (registry.fallback) return find_in_fallback(name);
    return find_in_file(name, path, error);
}

// A name that is a number stands for itself.
uint16_t numeric_codeset(const char *name) {
    if (!vel_is_decimal_string(name)) return VEL_CS_INVALID;
    int32_t value = 0;
    for (; *name && value <= UINT16_MAX; ++name) value = value * 10 + (*name - '0');
    return value <= UINT16_MAX ? static_cast<uint16_t>(value) : VEL_CS_INVALID;
}

} // namespace

void vel_free_registry_list(vel_registry_entry *head) {
    while (vel_registry_entry *entry = head) {
        head = entry->next;
        vel_free(entry->name);
        vel_free(entry);
    }
}

} // namespace vel

using namespace vel;

const vel_registry_entry *vel_cache_registry(void *context, const char *path) {
    vel_free_registry_cache();
    host_stream stream(open_registry(path && *path ? path : nullptr));
    if (!stream) return fall_back(context, VEL_EFORMAT);
    text_reader file(stream.get());
    entry_list list;
    codeset_name name;
    while (vel_read_registry_name(file, name)) {
        vel_registry_entry *entry = list.add(name);
        if (!entry) return fall_back(context, VEL_ENOMEM);
        entry->number = vel_read_registry_number(nullptr, file);
        if (entry->number == VEL_CS_INVALID) return fall_back(context, VEL_EBADFILE);
        if (!vel_skip_registry_line(file)) break;
    }
    registry.cache = list.release();
    make_chains();
    return registry.cache;
}

void vel_free_registry_cache(void) {
    vel_free_registry_list(std::exchange(registry.cache, nullptr));
    registry.fallback = nullptr;
}

uint16_t vel_cs_name2cs_num(void *context, const char *name, const char *path) {
    input_copy<max_codeset_name> sought(name);
    for (char *c = sought.text; *c; ++c) *c = to_lower(*c);
    int32_t error = 0;
    uint16_t number = find(sought.text, path, error);
    if (number == VEL_CS_INVALID && !error) number = numeric_codeset(sought.text);
    if (number == VEL_CS_INVALID) refuse(context, error ? error : VEL_EINVAL);
    return number;
}
