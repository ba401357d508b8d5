// vel locale, locales, codesets and doctor: what is installed, and what is wrong with it.
#include "vel/runner.h"

namespace {

using namespace vel_test;
namespace fs = std::filesystem;

const std::string pack = VELS_TEST_DATA_ROOT "/vels/";

class data : public vel_tool_test {
protected:
    // A small tree with the default locale, one more and the registry.
    void make_tree() {
        copy("lc11/default.lco");
        copy("lc11/de_de/0333.lco");
        copy("cm3/registry");
    }
    void copy(const std::string &file) {
        fs::create_directories(fs::path(tree(file)).parent_path());
        fs::copy_file(pack + file, tree(file));
    }
    std::string tree(const std::string &file) const { return in_folder("tree/vels/") + file; }

    void expect_fault(const std::vector<std::string> &parts,
                      const std::vector<std::string> &variables = {}) {
        outcome got = vel({"doctor"}, variables.empty() ? tree_only() : variables);
        EXPECT_EQ(got.status, 1) << got.out;
        expect_parts(got.out, parts);
    }
    std::vector<std::string> tree_only() const { return {"CORVANEDIR=" + in_folder("tree")}; }
};

bool has_line(const outcome &got, const std::string &line) {
    return ("\n" + got.out).find("\n" + line + "\n") != std::string::npos;
}

TEST_F(data, locale_shows_files_and_contents) {
    outcome got = vel({"locale", "de_DE.UTF-8"});
    EXPECT_EQ(got.status, 0) << got.err;
    const std::string lines[] = {
        "locale.name\tde_DE.UTF-8",
        "locale.file\t" + pack + "lc11/de_de/e01c.lco",
        "ctype.longest_character\t4",
        "numeric.decimal_point\t\",\"",
        "numeric.thousands_sep\t\".\"",
        "monetary.int_curr_symbol\t\"EUR \"",
        "monetary.currency_symbol\t\"\xE2\x82\xAC\"",
        "time.calendar\tgregorian",
        "time.day\t\"Sonntag\" \"Montag\" \"Dienstag\" \"Mittwoch\" "
        "\"Donnerstag\" \"Freitag\" \"Samstag\"",
    };
    for (const std::string &line : lines) {
        EXPECT_TRUE(has_line(got, line)) << line << "\nin\n" << got.out;
    }
    EXPECT_NE(got.out.find("(57372, e01c)"), std::string::npos);
    got = vel({"locale", "ja_JP.SHIFT_JIS"});
    EXPECT_TRUE(has_line(got, "ctype.longest_character\t2")) << got.out;
    EXPECT_NE(got.out.find("time.abday\t\"\\x93\\xFA\" "), std::string::npos) << got.out;
}

TEST_F(data, locale_of_the_environment) {
    struct {
        std::vector<std::string> variables;
        const char *file;
    } cases[] = {
        {{}, "default.lco"},
        {{"VEL_LANG=fr_fr/e01c.lco"}, "fr_fr/e01c.lco"},
        {{"VEL_LANG=fr_fr/e01c.lco", "VEL_ALL=de_de/e01c.lco"}, "de_de/e01c.lco"},
    };
    for (const auto &row : cases) {
        outcome got = vel({"locale"}, row.variables);
        EXPECT_TRUE(has_line(got, std::string("time.file\t") + row.file)) << got.out << got.err;
    }
    outcome got = vel({"locale"}, {"VEL_ALL=de_DE.UTF-8"});
    EXPECT_EQ(got.status, 1);
    expect_parts(got.err, {"VEL_ALL=de_DE.UTF-8", "these variables hold file names"});
}

TEST_F(data, every_listed_locale_loads_by_its_name) {
    make_tree();
    copy("lc11/sr_rs/e01clatn.lco");
    copy("lc11/eo.utf-8");
    put(tree("lc11/notes.txt"), "no locale\n");
    outcome list = vel({"locales"}, tree_only());
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_EQ(std::count(list.out.begin(), list.out.end(), '\n'), 4) << list.out;
    std::istringstream lines(list.out);
    std::string name, codeset, number, file;
    while (std::getline(lines, name, '\t') && std::getline(lines, codeset, '\t') &&
           std::getline(lines, number, '\t') && std::getline(lines, file)) {
        outcome got = vel({"locale", name}, tree_only());
        EXPECT_TRUE(has_line(got, "locale.file\t" + file)) << name << got.err;
    }
}

TEST_F(data, codesets_show_what_there_is) {
    make_tree();
    copy("cm3/0333.cmo");
    outcome got = vel({"codesets"}, tree_only());
    EXPECT_EQ(got.status, 0) << got.err;
    expect_parts(got.out,
                 {"819\t0333\tyes\t1\t", "57372\te01c\t-\t1\t", "57350\te006\t-\t-\t", "latin-1"});
}

TEST_F(data, doctor_on_sound_data) {
    make_tree();
    outcome got = vel({"doctor", "--load"}, tree_only());
    EXPECT_EQ(got.status, 0) << got.out;
    EXPECT_EQ(got.out.find("WRONG"), std::string::npos) << got.out;
    EXPECT_TRUE(has_line(got, "note\t2 locales loaded")) << got.out;
    EXPECT_EQ(vel({"doctor"}).status, 0);
}

TEST_F(data, doctor_on_broken_data) {
    const std::string good = content_of(pack + "lc11/de_de/0333.lco");
    auto changed = [&](const std::string &from, const std::string &to) {
        std::string text = good;
        return text.replace(text.find(from), from.size(), to);
    };
    make_tree();
    put(tree("lc11/de_de/0333.lco"), changed("VERSION=11", "VERSION=10"));
    expect_fault({"0333.lco has format version 10, the library reads 11", "compile it again"});
    put(tree("lc11/de_de/0333.lco"), "hello\n");
    expect_fault({"0333.lco does not begin with FILE_TYPE=locale_object"});
    EXPECT_EQ(vel({"locales"}, tree_only()).status, 1);
    put(tree("lc11/de_de/0333.lco"), good.substr(0, good.size() / 2));
    outcome cut = vel({"doctor", "--load"}, tree_only());
    EXPECT_EQ(cut.status, 1);
    EXPECT_NE(cut.out.find("WRONG\tcannot load locale"), std::string::npos) << cut.out;
    put(tree("lc11/de_de/0333.lco"), good);

    fs::remove(tree("lc11/default.lco"));
    expect_fault({"default.lco: data file not found", tree("lc11/default.lco")});
    copy("lc11/default.lco");
    put(tree("cm3/registry"), "utf8\n");
    expect_fault({"WRONG\tregistry", "built-in names are in use", "a line end"});
    fs::remove(tree("cm3/registry"));
    expect_fault({"WRONG\tregistry", tree("cm3/registry")});
    fs::remove_all(tree("cm3"));
    put(tree("cm3"), "no directory");
    expect_fault({"charmaps", "Not a directory"});
}

TEST_F(data, doctor_on_a_wrong_environment) {
    expect_fault({"no directory of locales", "/nowhere/vels/lc11"}, {"CORVANEDIR=/nowhere"});
    expect_fault({"has 300 characters"}, {"CORVANEDIR=" + std::string(300, '/')});
    expect_fault({"VEL_ALL=nonsense", "correct or unset"}, {"VEL_ALL=nonsense"});
    expect_fault({"CORVANEDIR is not used", "tried /nowhere"}, {"VEL_PATH=/nowhere"});
}

} // namespace
