// The bytes of a locale object, loaded with an allocator that fails at a place the input chooses,
// in blocks or with every byte through a hook.
#include <cstdint>
#include <initializer_list>
#include <string>

#include "pack.h"
#include "support/host.h"

namespace {

// Uses what was loaded: look-ups trust the loader's checks.
void use(vel_locale *locale) {
    static const char text[] = "Stra\xC3\x9F"
                               "e \xA4\xA2\x81\x30\x84\x36\xF0\x9F\x98\x80 end\0\0\0";
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
    vel_test::test_host host;
    if (data[0] & 1) host.hook_streams();
    host.environment["CORVANEDIR"] = "/r";
    for (const char *name : {"default.lco", "object"})
        host.files[std::string("/r/vels/lc11/") + name].assign(data + 1, data + size);
    for (int failing : {0, data[0] + 1}) {
        host.fail_allocation(failing);
        vel_locale *locale = nullptr;
        if (vel_createlocale_4(&locale) == 0) use(locale);
        vel_lc_unload(locale);
        if (vel_lc_load(&locale, "object", -1, nullptr) == 0) use(locale);
        vel_lc_unload(locale);
    }
    check(host.blocks.empty() && host.open_streams == 0, "nothing is left behind");
    return 0;
}
