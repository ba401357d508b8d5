// Making, sharing, setting, copying and releasing locales.
#include <regex>

#include "locale/locale_fixture.h"
#include "locale/shared.h"
#include "record/error_record.h"
#include "support/log.h"
#include "support/make_object.h"

using namespace vel_test;

namespace {

class lifecycle : public locale_test {};

const char all_default[] =
    "VEL_CTYPE = default.lco ; VEL_COLLATE = default.lco ; VEL_NUMERIC = default.lco ; "
    "VEL_MONETARY = default.lco ; VEL_TIME = default.lco ; VEL_MESSAGES = default.lco ; ";

TEST_F(lifecycle, creating_from_the_default_file) {
    vel_locale *locale = create();
    EXPECT_EQ(set(locale, VEL_ALL, nullptr), all_default);
    EXPECT_EQ(set(locale, VEL_TIME, nullptr), "default.lco");
    EXPECT_EQ(locale->wide_codeset_names[0][2], U'9');

    host.files["/own/default.lco"] = multibyte_parts().text();
    host.opened.clear();
    ASSERT_EQ(vel_createlocale2_4(&locale, "/own/"), 0);
    EXPECT_EQ(host.opened, std::vector<std::string>{"/own/default.lco"}) << "opened once";
    EXPECT_STREQ(locale->codeset_names[3], "57372");
    vel_lc_unload(locale);
    ASSERT_EQ(vel_createlocale2_4(&locale, "/own"), 0) << "no separator added: falls back";
    EXPECT_STREQ(locale->codeset_names[3], "819");
    vel_lc_unload(locale);

    host.files.erase("/root/vels/lc11/default.lco");
    ASSERT_EQ(vel_createlocale_4(&locale), -1);
    EXPECT_EQ(error_of(locale), VEL_ENOFILE);
    EXPECT_TRUE(vel::is_error_record(locale));
    EXPECT_EQ(vel_setlocale_4(locale, VEL_ALL, nullptr), nullptr);
    vel_lc_unload(locale);
    vel_free_nonshared_loc(locale);
    EXPECT_EQ(vel_createlocale_4(nullptr), -1);
}

TEST_F(lifecycle, numbers_in_the_handle_after_a_failed_creation) {
    const std::tuple<std::string object_parts::*, std::string, int32_t> cases[] = {
        {&object_parts::type, "?\n", VEL_EBADFILE},
        {&object_parts::version, "?\n", VEL_EVERSION},
        {&object_parts::collate, "?\n", VEL_ELOCALE},
        {&object_parts::numeric, "?\n", VEL_EBADFILE},
        {&object_parts::calendar, "?\n", VEL_ECALENDAR},
        {&object_parts::class_table, table_text({}), VEL_ENOERA},
    };
    for (const auto &[part, text, error] : cases) {
        object_parts parts;
        parts.*part = text;
        EXPECT_EQ(creation_error(parts), error);
    }
}

TEST_F(lifecycle, sharing_counts) {
    install("de_de/0333.lco", object_parts().text());
    vel_locale *first = nullptr, *second = nullptr, *other = nullptr;
    ASSERT_EQ(vel_lc_load(&first, "de_de.8859-1", -1, nullptr), 0) << error_of(first);
    host.opened.clear();
    ASSERT_EQ(vel_lc_load(&second, "DE_de.latin-1 and more", 13, nullptr), 0);
    EXPECT_EQ(first, second);
    EXPECT_EQ(host.opened, std::vector<std::string>{"/root/vels/cm3/registry"});
    ASSERT_EQ(vel_lc_load(&other, "default.lco", -1, nullptr), 0);
    EXPECT_NE(other, first);
    vel_lc_unload(first);
    EXPECT_EQ(set(second, VEL_CTYPE, nullptr), "de_de\\0333.lco") << "still there";
    vel_lc_unload(second);
    vel_lc_unload(other);
    vel_lc_unload(nullptr);
}

TEST_F(lifecycle, loads_that_fail) {
    vel_locale *locale = nullptr;
    EXPECT_EQ(vel_lc_load(nullptr, "x", -1, nullptr), -1);
    const struct {
        std::string specification;
        int32_t length, error;
    } cases[] = {
        {"none.lco", -1, VEL_ENOFILE},
        {std::string(312, 'x'), -1, VEL_EBADLEN},
        {std::string(400, 'x'), 312, VEL_EBADLEN},
        {"x", -2, VEL_EBADLEN},
        {std::string(311, 'x'), -1, VEL_ENOFILE},
        {"default.lco", 7, VEL_ENOFILE},
    };
    for (const auto &one : cases) {
        vel_locale *again = nullptr;
        EXPECT_EQ(vel_lc_load(&locale, one.specification.c_str(), one.length, nullptr), -1);
        EXPECT_EQ(vel_lc_load(&again, one.specification.c_str(), one.length, nullptr), -1);
        EXPECT_EQ(error_of(locale), one.error) << one.specification;
        EXPECT_NE(again, locale) << "not shared";
        vel_lc_unload(locale);
        vel_lc_unload(again);
    }
}

TEST_F(lifecycle, the_file_of_each_category) {
    install("fr_fr.lco", object_parts().text());
    install("a-file-name-of-exactly-32-chars!", object_parts().text());
    vel_locale *locale = create();
    EXPECT_EQ(set(locale, VEL_TIME, "VEL_TIME = fr_fr.lco ; VEL_CTYPE = x"), "fr_fr.lco");
    EXPECT_EQ(set(locale, VEL_TIME, "VEL_TIME=  fr_fr.lco"), "fr_fr.lco");
    EXPECT_EQ(set(locale, VEL_NUMERIC, "fr_fr.lco"), "fr_fr.lco");
    EXPECT_EQ(set(locale, VEL_NUMERIC, "VEL_NUMERIC=a-file-name-of-exactly-32-chars!more"),
              "a-file-name-of-exactly-32-chars")
        << "named by 32 bytes, remembered by 31";
    EXPECT_EQ(set(locale, VEL_MESSAGES, "native"), "native");
    // Every category but the one that is named takes the whole text as its file.
    EXPECT_EQ(set(locale, VEL_ALL, "VEL_TIME=fr_fr.lco"), "null");
    EXPECT_EQ(error_of(locale), VEL_ENOFILE);
    EXPECT_EQ(set(locale, VEL_CTYPE, nullptr), "default.lco") << "nothing was freed for it";

    host.opened.clear();
    host.files["/d/native"] = object_parts().text();
    vel_locale *native = nullptr;
    ASSERT_EQ(vel_lc_load(&native, "native", -1, "/d"), 0);
    EXPECT_EQ(host.opened.back(), "/d/native");
    vel_lc_unload(native);
}

TEST_F(lifecycle, names_from_the_environment) {
    for (const char *name : {"a.lco", "b.lco", "c.lco"}) install(name, object_parts().text());
    vel_locale *locale = create();
    EXPECT_EQ(set(locale, VEL_TIME, ""), "default.lco");
    const std::tuple<const char *, const char *, const char *> steps[] = {
        {"VEL_LANG", "c.lco", "c.lco"},
        {"VEL_TIME", "b.lco", "b.lco"},
        {"VEL_ALL", "a.lco", "a.lco"},
        {"VEL_ALL", "", "b.lco"}}; // empty is unset
    for (auto [variable, value, expected] : steps) {
        host.environment[variable] = value;
        EXPECT_EQ(set(locale, VEL_TIME, ""), expected) << variable;
    }
    EXPECT_EQ(set(locale, VEL_COLLATE, ""), "c.lco");
}

TEST_F(lifecycle, categories_and_lengths_out_of_range) {
    vel_locale *locale = create();
    for (auto [category, specification] : std::vector<std::pair<int32_t, std::string>>{
             {0, "x"}, {8, "x"}, {-1, "x"}, {VEL_TIME, std::string(312, 'x')}}) {
        EXPECT_EQ(set(locale, category, specification.c_str()), "null");
        EXPECT_EQ(error_of(locale), VEL_EBADLEN);
    }
    EXPECT_EQ(set(locale, 8, nullptr), "null");
    vel_free_category(locale, 8);
    vel_make_null_category(locale, 1);
    EXPECT_EQ(set(locale, VEL_ALL, nullptr), all_default);
}

TEST_F(lifecycle, a_failed_category_is_null_and_an_old_number_does_not_speak_for_it) {
    object_parts parts;
    parts.collate = "no kind\n";
    install("bad.lco", parts.text());
    vel_locale *locale = create();
    locale->error = VEL_EEOF;
    EXPECT_EQ(set(locale, VEL_TIME, "default.lco"), "default.lco");
    EXPECT_EQ(error_of(locale), VEL_EEOF) << "success leaves the cell alone";
    EXPECT_EQ(set(locale, VEL_ALL, "bad.lco"), "null");
    EXPECT_EQ(error_of(locale), VEL_ELOCALE);
    EXPECT_EQ(set(locale, VEL_ALL, nullptr).substr(0, 55),
              "VEL_CTYPE = bad.lco ; VEL_COLLATE =  ; VEL_NUMERIC = de");
    EXPECT_EQ(locale->collate.kind, vel::collation_null);
    EXPECT_STREQ(locale->codeset_names[1], "");
}

TEST_F(lifecycle, code_sets_have_to_agree) {
    const auto install_codeset = [&](const char *name) {
        object_parts parts;
        parts.codeset = std::string(name) + "\n";
        install(std::string(name) + ".lco", parts.text());
    };
    for (const char *name : {"Latin-1", "8859-1", "latin-2", "unknown", "unknown2"}) {
        install_codeset(name);
    }
    vel_locale *locale = create(); // of 819
    EXPECT_EQ(set(locale, VEL_TIME, "Latin-1.lco"), "Latin-1.lco");
    EXPECT_EQ(set(locale, VEL_TIME, "latin-2.lco"), "null");
    EXPECT_EQ(error_of(locale), VEL_ECODESET);
    // CTYPE sets the code set that the others are compared with from then on.
    EXPECT_EQ(set(locale, VEL_CTYPE, "latin-2.lco"), "latin-2.lco");
    EXPECT_STREQ(locale->codeset_names[2], "819") << "what is loaded stays";
    EXPECT_EQ(set(locale, VEL_TIME, "latin-2.lco"), "latin-2.lco");
    EXPECT_EQ(set(locale, VEL_ALL, "8859-1.lco").substr(0, 22), "VEL_CTYPE = 8859-1.lco");
    // Code sets that the registry lacks are told apart by name.
    EXPECT_EQ(set(locale, VEL_ALL, "unknown.lco").substr(0, 23), "VEL_CTYPE = unknown.lco");
    EXPECT_EQ(set(locale, VEL_TIME, "unknown2.lco"), "null");
    EXPECT_EQ(error_of(locale), VEL_ECODESET);

    locale = create_null();
    EXPECT_EQ(set(locale, VEL_NUMERIC, "default.lco"), "null") << "CTYPE is null";
    EXPECT_EQ(error_of(locale), VEL_ECODESET);
    EXPECT_EQ(set(locale, VEL_CTYPE, "default.lco"), "default.lco");
    EXPECT_EQ(set(locale, VEL_NUMERIC, "default.lco"), "default.lco");
}

TEST_F(lifecycle, copies_share_what_they_copied) {
    vel_locale *source = create();
    vel_locale *copy = nullptr;
    ASSERT_EQ(vel_create_null_locale_4(&copy), 0);
    EXPECT_EQ(vel_copy_cat(copy, source, VEL_TIME), 0);
    EXPECT_EQ(copy->time.days.items, source->time.days.items);
    EXPECT_STREQ(copy->file_names[4], "default.lco");
    EXPECT_EQ(vel_copy_cat(copy, source, VEL_ALL), -1);
    EXPECT_EQ(error_of(copy), VEL_ECATLOADED) << "TIME";
    EXPECT_TRUE(copy->ctype.characters->empty()) << "nothing was copied";
    EXPECT_EQ(vel_copy_cat(copy, copy, VEL_CTYPE), -1);
    EXPECT_EQ(error_of(copy), VEL_ENOCAT);
    EXPECT_EQ(vel_copy_cat(copy, source, 8), -1);
    EXPECT_EQ(error_of(copy), VEL_EBADLEN);
    for (int32_t category : {VEL_CTYPE, VEL_COLLATE, VEL_NUMERIC, VEL_MONETARY, VEL_MESSAGES})
        EXPECT_EQ(vel_copy_cat(copy, source, category), 0) << category;
    ASSERT_NE(copy->byte_upper, nullptr);
    EXPECT_NE(copy->byte_upper, source->byte_upper);
    EXPECT_EQ(copy->collate_features, 15u);
    EXPECT_EQ(copy->numeric_marks.decimal_point, source->conventions.numeric.decimal_point.wide);
    // Setting a category anew leaves what was copied to its owner.
    EXPECT_EQ(set(copy, VEL_TIME, "default.lco"), "default.lco");
    EXPECT_NE(copy->time.days.items, source->time.days.items);
    vel_free_category(copy, VEL_TIME);
    vel_free_nonshared_loc(copy);
    EXPECT_STREQ(source->time.days.items[0].bytes, "Sunday");
}

TEST_F(lifecycle, releasing_a_shared_locale_without_its_categories) {
    vel_locale *locale = nullptr, *same = nullptr;
    ASSERT_EQ(vel_lc_load(&locale, "default.lco", -1, nullptr), 0);
    vel_locale copy = *locale; // what its categories hold
    ASSERT_EQ(vel_lc_load(&same, "default.lco", -1, nullptr), 0);
    vel_free_nonshared_loc(locale);
    EXPECT_EQ(set(same, VEL_CTYPE, nullptr), "default.lco") << "held still";
    vel_free_nonshared_loc(locale);
    EXPECT_STREQ(copy.time.days.items[0].bytes, "Sunday") << "categories are never freed";
    EXPECT_EQ(vel_lc_load(&same, "default.lco", -1, nullptr), 0);
    vel_lc_unload(same);
    copy.byte_upper = copy.byte_lower = nullptr;
    copy.byte_classes = nullptr;
    copy.time_derived = {};
    for (int32_t category = VEL_CTYPE; category <= VEL_MESSAGES; ++category) {
        vel_free_category(&copy, category);
    }
}

TEST_F(lifecycle, the_list_of_shared_locales_in_the_log) {
    std::string log = log_of(host, [] {
        vel::dump_shared();
        vel_locale *locale = nullptr;
        vel_lc_load(&locale, "default.lco", -1, nullptr);
        vel_lc_load(&locale, "default.lco", -1, nullptr);
        vel::dump_shared();
        vel_lc_unload(locale);
        vel_lc_unload(locale);
    });
    log = std::regex_replace(log, std::regex("0x[0-9a-f]+"), "ADDRESS");
    EXPECT_NE(log.find("*** No lc nodes saved\n"), std::string::npos);
    EXPECT_TRUE(log.ends_with("*** The lc node list\n    0\n        name: default.lco\n"
                              "        loc:  ADDRESS\n        count:  2\n"
                              "freeing locale ADDRESS\n\n"))
        << log;
}

} // namespace
