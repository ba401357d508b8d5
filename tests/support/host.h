// A host for tests: files in memory, an environment of its own, and an allocator that counts its
// blocks and fails on demand.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "vels/host.h"

namespace vel_test {

template <typename Function> vel_hook as_hook(Function *function) {
    return reinterpret_cast<vel_hook>(function);
}

// Installs its hooks for its lifetime. One at a time.
class test_host {
public:
    test_host() {
        self = this;
        install(VEL_HOOK_FOPEN, as_hook(open));
        install(VEL_HOOK_FCLOSE, as_hook(close));
        install(VEL_HOOK_GETENV, as_hook(get));
        install(VEL_HOOK_MALLOC, as_hook(allocate));
        install(VEL_HOOK_FREE, as_hook(release));
    }
    ~test_host() {
        for (int32_t slot = 0; slot < VEL_HOOK_COUNT; ++slot) install(slot, nullptr);
        self = nullptr;
    }
    test_host(const test_host &) = delete;
    test_host &operator=(const test_host &) = delete;

    // Every byte through a hook of its own, as on a host with streams of its own.
    void hook_streams() {
        install(VEL_HOOK_FGETC, as_hook(+[](void *s) { return vel_ext_fgetc(s); }));
        install(VEL_HOOK_GETC, as_hook(+[](void *s) { return vel_ext_getc(s); }));
        install(VEL_HOOK_UNGETC, as_hook(+[](int32_t c, void *s) { return vel_ext_ungetc(c, s); }));
        install(VEL_HOOK_FGETS,
                as_hook(+[](char *b, int32_t n, void *s) { return vel_ext_fgets(b, n, s); }));
    }
    // The allocation with this number, counted from 1, fails; 0 for none.
    void fail_allocation(int number) {
        countdown = number;
        failed = false;
    }

    std::map<std::string, std::string> files; // by the path that is opened
    std::map<std::string, std::string> environment;
    std::vector<std::string> opened; // every path that was tried
    std::set<void *> blocks;         // in use
    int open_streams = 0;
    bool failed = false; // the allocation that was to fail did

private:
    static void install(int32_t slot, vel_hook hook) {
        int32_t cell = 0;
        vel_setextfunc(&cell, slot, hook);
    }
    static void *open(const char *path, const char *) {
        self->opened.push_back(path);
        auto found = self->files.find(path);
        if (found == self->files.end()) return nullptr;
        std::string &content = found->second;
        static char nothing[1];
        FILE *file = content.empty() ? fmemopen(nothing, 1, "r")
                                     : fmemopen(content.data(), content.size(), "r");
        if (content.empty()) fgetc(file);
        ++self->open_streams;
        return file;
    }
    static int32_t close(void *stream) {
        --self->open_streams;
        return vel_ext_fclose(stream);
    }
    static char *get(const char *name) {
        auto found = self->environment.find(name);
        return found == self->environment.end() ? nullptr : found->second.data();
    }
    static void *allocate(size_t size) {
        if (self->countdown > 0 && --self->countdown == 0) {
            self->failed = true;
            return nullptr;
        }
        void *block = malloc(size);
        self->blocks.insert(block);
        return block;
    }
    static void release(void *block) {
        if (self->blocks.erase(block) != 1) abort(); // not ours, or freed already
        free(block);
    }

    static inline test_host *self;
    int countdown = 0;
};

} // namespace vel_test
