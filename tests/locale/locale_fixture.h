// Locales read from objects in memory.
#pragma once

#include <gtest/gtest.h>

#include "record/record.h"
#include "support/host.h"
#include "support/make_object.h"
#include "vels/errors.h"
#include "vels/locale.h"

namespace vel_test {

inline int32_t error_of(vel_locale *locale) {
    return *reinterpret_cast<const int32_t *>(locale);
}

class locale_test : public testing::Test {
protected:
    locale_test() {
        host.environment["CORVANEDIR"] = "/root";
        host.files["/root/vels/cm3/registry"] =
            "latin-1 819\n8859-1 819\nutf8 57372\nlatin-2 912\n";
        install("default.lco", object_parts().text());
    }
    ~locale_test() override {
        EXPECT_EQ(host.blocks.size(), 0u) << "leaked";
        EXPECT_EQ(host.open_streams, 0);
    }

    void install(const std::string &name, const std::string &text) {
        host.files["/root/vels/lc11/" + name] = text;
    }

    // Loads an object and unloads it again; the error number, 0 when it loaded.
    int32_t load_error(const std::string &text) {
        host.files["/d/x.lco"] = text;
        vel_locale *locale = nullptr;
        int32_t result = vel_lc_load(&locale, "x.lco", -1, "/d");
        int32_t error = error_of(locale);
        EXPECT_EQ(result, error == 0 ? 0 : -1);
        vel_lc_unload(locale);
        return error;
    }

    // The text that vel_setlocale_4 returns, or "null".
    std::string set(vel_locale *locale, int32_t category, const char *specification) {
        char *text = vel_setlocale_4(locale, category, specification);
        std::string result = text ? text : "null";
        vel_destroystring(text);
        return result;
    }

    test_host host;
};

} // namespace vel_test
