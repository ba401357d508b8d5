// Locale specifications of any text, with a small registry cached.
#include <cstdint>
#include <cstring>
#include <string>

#include "pack.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string text(reinterpret_cast<const char *>(data), size);
    text.push_back('\0');
    const char *specification = text.c_str();
    int32_t error = 0;
    // No registry is found in an empty directory list, so the built-in names answer.
    static const bool cached = [] {
        int32_t ignored = 0;
        vel_ext_putenv("VEL_PATH=/nonexistent");
        vel_cache_registry(&ignored, nullptr);
        return true;
    }();
    (void)cached;

    char out[2048];
    char language[64], codeset[64], modifier[64];
    vel_lc_spec2cs_num(&error, specification, nullptr);
    vel_cs_name2cs_num(&error, specification, nullptr);
    vel_lc_spec2lc_fname(&error, specification, out, nullptr, nullptr);
    vel_lc_fname2lc_pieces(&error, specification, language, codeset, modifier);
    vel_lc_short_spec2lc_short_norm(&error, specification, out, nullptr);
    if (vel_lc_spec2lc_norm(&error, specification, out, nullptr) == 0) {
        char again[2048];
        const bool is_normal = vel_lc_spec2lc_norm(&error, out, again, nullptr) == 0;
        check(is_normal && strcmp(out, again) == 0, "a normal form is normal");
    }
    vel_lc_short2lc_long(&error, specification, out, nullptr);
    vel_lc_spec2lc_short(&error, specification, out, nullptr);
    for (int32_t category = VEL_CTYPE; category <= VEL_MESSAGES; ++category) {
        vel_lc_spec2category(&error, specification, category, out, nullptr);
    }
    vel_is_lc_spec(&error, specification);
    vel_lc_spec2msg_dname(&error, specification, out, nullptr, nullptr);
    return 0;
}
