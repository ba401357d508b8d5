// The bytes of a charmap object, loaded with an allocator that fails at a place the input chooses,
// in blocks or with every byte through a hook; then its names, forth and back.
#include <cstdint>
#include <initializer_list>
#include <string>

#include "pack.h"
#include "support/host.h"

namespace {

// A name of a character is that of a character.
void check_names(vel_charmap *charmap, const char *character, int32_t length) {
    char slots[4][VEL_SYMBOL_SLOT];
    char names[VEL_SYMBOL_SLOT], back[8];
    vel_mbtosymlist(charmap, slots, 4, character, length);
    const char *cursor = character;
    if (vel_mbstosyms(charmap, names, sizeof names, &cursor, length) <= 1) return;
    cursor = names;
    int32_t size = vel_symstombs(charmap, back, sizeof back, &cursor);
    if (size < 0) return; // a name with ">", or with more digits than those of its range
    int32_t bytes = size - vel_mb_cm_min(charmap);
    check(vel_cm_mblen(charmap, back, bytes) == bytes, "a name leads to a character");
}

void use(vel_charmap *charmap, const char *text, size_t size) {
    for (size_t i = 0; i < size && i < 256; ++i) {
        int32_t length = vel_cm_mblen(charmap, text + i, static_cast<int32_t>(size - i));
        if (length > 0) check_names(charmap, text + i, length);
        char byte = static_cast<char>(i);
        if (vel_cm_mblen(charmap, &byte, 1) == 1) check_names(charmap, &byte, 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 1) return 0;
    vel_test::test_host host;
    if (data[0] & 1) host.hook_streams();
    host.files["/d/object"].assign(data + 1, data + size);
    for (int failing : {0, data[0] + 1}) {
        host.fail_allocation(failing);
        vel_charmap *charmap = nullptr;
        if (vel_cm_load(&charmap, "object", -1, "/d") == 0) {
            use(charmap, reinterpret_cast<const char *>(data + 1), size - 1);
        }
        vel_cm_unload(charmap);
    }
    check(host.blocks.empty() && host.open_streams == 0, "nothing is left behind");
    return 0;
}
