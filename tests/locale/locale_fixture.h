// Locales read from objects in memory.
#pragma once

#include <gtest/gtest.h>

#include "record/error_record.h"
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
        for (vel_locale *locale : kept_) vel_lc_unload(locale);
        EXPECT_EQ(host.blocks.size(), 0u) << "leaked";
        EXPECT_EQ(host.open_streams, 0);
    }

    void install(const std::string &name, const std::string &text) {
        host.files["/root/vels/lc11/" + name] = text;
    }

    // A locale that is unloaded when the test ends.
    vel_locale *keep(int32_t result, vel_locale *locale) {
        EXPECT_EQ(result, 0) << error_of(locale);
        kept_.push_back(locale);
        return locale;
    }
    vel_locale *create(int32_t (*make)(vel_locale **) = vel_createlocale_4) {
        vel_locale *locale = nullptr;
        int32_t result = make(&locale);
        return keep(result, locale);
    }
    vel_locale *create_null() { return create(vel_create_null_locale_4); }
    vel_locale *load(const object_parts &parts) {
        const std::string name = "y" + std::to_string(kept_.size());
        host.files["/d/" + name] = parts.text();
        vel_locale *locale = nullptr;
        int32_t result = vel_lc_load(&locale, name.c_str(), -1, "/d");
        return keep(result, locale);
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

    // The error number that creating a locale from this default object leaves in its handle.
    int32_t creation_error(const object_parts &parts) {
        install("default.lco", parts.text());
        vel_locale *locale = nullptr;
        EXPECT_EQ(vel_createlocale_4(&locale), -1);
        EXPECT_FALSE(vel::is_error_record(locale));
        int32_t error = error_of(locale);
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

private:
    std::vector<vel_locale *> kept_;
};

} // namespace vel_test
