// Files that are cut or damaged, and memory that runs out.
#include <functional>
#include <random>

#include "locale/locale_fixture.h"
#include "support/make_object.h"

using namespace vel_test;

namespace {

class faults : public locale_test {};

std::vector<object_parts> both_objects() {
    return {object_parts(), multibyte_parts()};
}

TEST_F(faults, a_file_cut_anywhere_fails_and_leaks_nothing) {
    for (const object_parts &parts : both_objects()) {
        std::string text = parts.text();
        ASSERT_EQ(load_error(text), 0);
        // Of the last string, "0\n", the newline is not missed.
        for (size_t length = 0; length + 1 < text.size(); ++length) {
            int32_t error = load_error(text.substr(0, length));
            ASSERT_NE(error, 0) << "cut to " << length << " of " << text.size();
        }
    }
}

// A few bytes changed, taken out or put in. Nothing is expected but that it ends well.
TEST_F(faults, damaged_files_do_no_harm) {
    const uint32_t seed = 20240229;
    std::mt19937 random(seed);
    const char digits[] = "0123456789abcdef -\n";
    int loaded = 0;
    for (const object_parts &parts : both_objects()) {
        const std::string good = parts.text();
        for (int round = 0; round < 4000; ++round) {
            std::string text = good;
            for (size_t i = 0, changes = 1 + random() % 3; i < changes; ++i) {
                size_t place = random() % text.size();
                char c = random() % 4 ? digits[random() % (sizeof digits - 1)]
                                      : static_cast<char>(random());
                const size_t kind = random() % 3;
                if (kind == 0) text[place] = c;
                if (kind == 1) text.insert(place, 1, c);
                if (kind == 2) text.erase(place, 1 + random() % 8);
            }
            SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
            loaded += load_error(text) == 0;
        }
    }
    EXPECT_GT(loaded, 100) << "most damage should be to values, which load";
}

// Of what a record holds, the end of each section and what stands in bulk.
std::string contents(const vel_locale *locale) {
    std::string all = std::to_string(locale->case_growth) + locale->codeset_names[3];
    for (const vel::sealed_table *table :
         {locale->ctype.characters, locale->ctype.cases, locale->collate.characters})
        all.append(reinterpret_cast<const char *>(table->cells()), table->cell_count * 4);
    for (int32_t i = 0; i < locale->ctype.class_count; ++i) all += locale->ctype.classes[i].name;
    for (int32_t i = 0; i < locale->collate.pass_count; ++i) {
        all.append(reinterpret_cast<const char *>(locale->collate.passes[i].weights),
                   static_cast<size_t>(locale->collate.index_count) * 2);
    }
    for (int32_t i = 0; i < locale->time.days.count; ++i) all += locale->time.days.items[i].bytes;
    all += locale->conventions.monetary.int_curr_symbol.bytes;
    return all + locale->conventions.messages.texts[2].bytes;
}

TEST_F(faults, hooked_streams_give_the_same_locale) {
    std::mt19937 random(7);
    for (const object_parts &parts : both_objects()) {
        for (int round = 0; round < 60; ++round) {
            std::string text = parts.text();
            if (round > 0) text[random() % text.size()] ^= 1;
            host.files["/d/x.lco"] = text;
            vel_locale *blocks = nullptr, *hooked = nullptr;
            vel_lc_load(&blocks, "x.lco", -1, "/d");
            std::string expected = contents(blocks);
            int32_t error = error_of(blocks);
            vel_lc_unload(blocks);
            host.hook_streams();
            vel_lc_load(&hooked, "x.lco", -1, "/d");
            EXPECT_EQ(error_of(hooked), error) << round;
            EXPECT_EQ(contents(hooked), expected) << round;
            vel_lc_unload(hooked);
            for (int32_t slot : {VEL_HOOK_FGETC, VEL_HOOK_GETC, VEL_HOOK_UNGETC, VEL_HOOK_FGETS}) {
                vel_setextfunc(&error, slot, nullptr);
            }
        }
    }
}

// Runs the operation with its first, second, third ... allocation failing, until it gets through.
// It returns the error number that it reported. A locale that is `setting` its categories
// keeps some blocks.
void sweep(test_host &host, const char *name, const std::function<int32_t()> &operation,
           bool setting = false) {
    size_t before = host.blocks.size();
    for (int number = 1;; ++number) {
        ASSERT_LT(number, 5000) << name;
        host.fail_allocation(number);
        int32_t error = operation();
        bool failed = host.failed;
        host.fail_allocation(0);
        if (!setting) {
            ASSERT_EQ(host.blocks.size(), before) << name << ": leaked at allocation " << number;
        }
        EXPECT_EQ(error, failed ? VEL_ENOMEM : 0) << name << ", allocation " << number;
        if (failed) continue;
        EXPECT_GT(number, 1) << name << " allocates nothing";
        return;
    }
}

TEST_F(faults, memory_that_runs_out) {
    install("u.lco", multibyte_parts().text());
    const std::string deep = std::string(600, '/') + "root/vels/lc11/";
    const std::pair<const char *, std::function<void(vel_locale **)>> makers[] = {
        {"load", [](vel_locale **made) { vel_lc_load(made, "default.lco", -1, nullptr); }},
        {"load multibyte", [](vel_locale **made) { vel_lc_load(made, "u.lco", -1, nullptr); }},
        {"create", [](vel_locale **made) { vel_createlocale_4(made); }},
        {"create in a directory",
         [&](vel_locale **made) { vel_createlocale2_4(made, deep.c_str()); }},
    };
    for (const auto &[name, make] : makers) {
        sweep(host, name, [&] {
            vel_locale *locale = nullptr;
            make(&locale);
            int32_t error = error_of(locale);
            vel_lc_unload(locale);
            return error;
        });
    }
    vel_locale *locale = create();
    sweep(host, "copy", [&] {
        vel_locale *copy = nullptr;
        vel_create_null_locale_4(&copy);
        if (!vel::is_error_record(copy)) vel_copy_cat(copy, locale, VEL_ALL);
        int32_t error = error_of(copy);
        if (error != 0 && !vel::is_error_record(copy)) {
            EXPECT_TRUE(copy->ctype.characters->empty()) << "unchanged";
        }
        vel_free_nonshared_loc(copy);
        return error;
    });
    for (int32_t category : {VEL_ALL, VEL_CTYPE, VEL_TIME}) {
        const auto operation = [&] {
            locale->error = 0;
            const bool refused = set(locale, category, "default.lco") == "null";
            EXPECT_EQ(refused, host.failed);
            return error_of(locale);
        };
        sweep(host, "set", operation, true);
    }
}

} // namespace
