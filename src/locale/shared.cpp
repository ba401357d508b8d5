#include "locale/shared.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "ext/diag.h"
#include "ext/memory.h"

namespace vel {
namespace {

struct shared_locale {
    char *name; // behind the entry, in its block
    vel_locale *locale;
    int32_t count;
    shared_locale *next;
};

struct {
    shared_locale *newest;
} table;

constexpr size_t line_size = 512;

template <typename Value> void record_line(const char *format, Value value) {
    char line[line_size];
    snprintf(line, sizeof line, format, value);
    vel_diag(line);
}

} // namespace

vel_locale *take_shared(const char *name) {
    for (shared_locale *entry = table.newest; entry; entry = entry->next) {
        if (strcmp(entry->name, name) != 0) continue;
        ++entry->count;
        return entry->locale;
    }
    return nullptr;
}

bool share(vel_locale *locale, const char *name) {
    size_t size = strlen(name) + 1;
    void *block = vel_alloc(sizeof(shared_locale) + size);
    if (!block) return false;
    auto *entry = new (block) shared_locale{nullptr, locale, 1, table.newest};
    entry->name = reinterpret_cast<char *>(entry + 1);
    memcpy(entry->name, name, size);
    table.newest = entry;
    return true;
}

sharing give_back(const vel_locale *locale) {
    for (shared_locale **link = &table.newest; *link; link = &(*link)->next) {
        shared_locale *entry = *link;
        if (entry->locale != locale) continue;
        if (--entry->count > 0) return sharing::held;
        *link = entry->next;
        vel_free(entry);
        return sharing::over;
    }
    return sharing::none;
}

void dump_shared() {
    vel_diag(table.newest ? "*** The lc node list" : "*** No lc nodes saved");
    int32_t index = 0;
    for (shared_locale *entry = table.newest; entry; entry = entry->next) {
        record_line("    %" PRId32, index++);
        record_line("        name: %s", entry->name);
        record_line("        loc:  0x%" PRIxPTR, reinterpret_cast<uintptr_t>(entry->locale));
        record_line("        count:  %" PRId32, entry->count);
    }
}

} // namespace vel
