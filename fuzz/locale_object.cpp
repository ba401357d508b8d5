// The bytes of a locale object, loaded through stream hooks that read from memory, with an allocator
// that fails at a place the input chooses.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "vels.h"

namespace {

struct memory_stream {
    const uint8_t *data;
    size_t size;
    size_t position;
};

memory_stream input;
memory_stream opened[16];
size_t open_count;
uint32_t allocations_left;

void *open_memory(const char *path, const char *) {
    if (strstr(path, "registry") || open_count == 16) return nullptr;
    opened[open_count] = input;
    return &opened[open_count++];
}
int32_t close_memory(void *) {
    return 0;
}
int32_t get_memory(void *stream) {
    auto *from = static_cast<memory_stream *>(stream);
    return from->position < from->size ? from->data[from->position++] : -1;
}
int32_t unget_memory(int32_t c, void *stream) {
    auto *from = static_cast<memory_stream *>(stream);
    if (c >= 0 && from->position > 0) --from->position;
    return c;
}
char *gets_memory(char *buffer, int32_t size, void *stream) {
    int32_t length = 0;
    while (length < size - 1) {
        int32_t c = get_memory(stream);
        if (c < 0) break;
        buffer[length++] = static_cast<char>(c);
        if (c == '\n') break;
    }
    buffer[length] = '\0';
    return length ? buffer : nullptr;
}
void *allocate(size_t size) {
    return allocations_left && --allocations_left == 0 ? nullptr : malloc(size);
}

template <typename Function> void install(int32_t slot, Function *function) {
    int32_t error = 0;
    vel_setextfunc(&error, slot, reinterpret_cast<vel_hook>(function));
}

// Uses what was loaded: look-ups trust the loader's checks.
void use(vel_locale *locale) {
    static const char text[] = "Stra\xC3\x9F" "e \xA4\xA2\x81\x30\x84\x36\xF0\x9F\x98\x80 end\0\0\0";
    vel_wchar wide[64];
    char back[512];
    int32_t count = vel_im_mbstowcs(locale, wide, text, 60);
    if (count >= 0) {
        wide[count] = 0;
        vel_full_wcstombs(locale, back, wide, 256);
    }
    for (vel_wchar code : {0x41u, 0xDFu, 0xC3A9u, 0xE4B8ADu, 0xF09F9880u}) {
        vel_im_iswctype(locale, code, 0xFFFF);
        vel_im_towupper(locale, code);
        vel_im_towlower(locale, code);
    }
    vel_tombsupper(locale, back, text);
    vel_destroystring(vel_setlocale_4(locale, VEL_ALL, nullptr));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1) return 0;
    install(VEL_HOOK_FOPEN, open_memory);
    install(VEL_HOOK_FCLOSE, close_memory);
    install(VEL_HOOK_FGETC, get_memory);
    install(VEL_HOOK_GETC, get_memory);
    install(VEL_HOOK_UNGETC, unget_memory);
    install(VEL_HOOK_FGETS, gets_memory);
    install(VEL_HOOK_MALLOC, allocate);
    input = {data + 1, size - 1, 0};
    for (uint32_t budget : {0u, data[0] + 1u}) {
        open_count = 0;
        allocations_left = budget;
        vel_locale *locale = nullptr;
        int32_t result = vel_createlocale_4(&locale);
        if (result == 0) use(locale);
        vel_lc_unload(locale);
        open_count = 0;
        if (vel_lc_load(&locale, "object", -1, nullptr) == 0) use(locale);
        vel_lc_unload(locale);
    }
    return 0;
}
