#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/host.h"
#include "vels/errors.h"
#include "vels/names.h"
#include "vels/registry.h"

namespace {

using std::string;
using operation = std::function<int32_t(void *context, const char *in, char *out)>;
using with_path = int32_t (*)(void *, const char *, char *, const char *);

// A long form of six entries: the piece of each is `piece`, but for one.
string long_form(const string &piece, int other = -1, const string &other_piece = "") {
    const char *const names[] = {"VEL_CTYPE",    "VEL_COLLATE", "VEL_NUMERIC",
                                 "VEL_MONETARY", "VEL_TIME",    "VEL_MESSAGES"};
    string text;
    for (int i = 0; i < 6; ++i) {
        text += string(i ? " ; " : "") + names[i] + " = " + (i == other ? other_piece : piece);
    }
    return text;
}

const string us = "en_us.8859-1";
const string us_file = "en_us\\0333.lco";

class names_test : public testing::Test {
protected:
    names_test() {
        for (const char *file : {"en_us/0333.lco", "de_de/0333euro.lco", "de_de/1.lco",
                                 "de_de/0333ab.lco", "en_usx", "de_de/2"})
            host.files[string("/n/") + file];
        host.files[path] = "8859-1 819\nlatin-1 819\nutf8 57372\nabcdefghijklmnopqrstu 1\n";
    }
    ~names_test() override {
        vel_free_registry_cache();
        EXPECT_EQ(host.blocks.size() + host.open_streams, 0u);
    }

    // Each input gives the output, also in place of the input, and stores no number.
    static void gives(const operation &run, const std::vector<std::pair<string, string>> &rows) {
        for (const auto &[in, expected] : rows) {
            SCOPED_TRACE(in);
            int32_t error = -1;
            char out[2048], place[2048] = "";
            EXPECT_EQ(run(&error, in.c_str(), out), 0);
            EXPECT_EQ(error, -1);
            EXPECT_EQ(out, expected);
            in.copy(place, in.size());
            EXPECT_EQ(run(nullptr, place, place), 0);
            EXPECT_EQ(place, expected);
        }
    }
    // Each input fails with the error number; -1: without any.
    static void fails(const operation &run, const std::vector<string> &inputs,
                      int32_t number = VEL_EINVAL) {
        for (const string &in : inputs) {
            SCOPED_TRACE(in);
            int32_t error = -1;
            char out[2048] = "";
            EXPECT_EQ(run(&error, in.c_str(), out), -1);
            EXPECT_EQ(error, number);
            EXPECT_EQ(run(nullptr, in.c_str(), out), -1);
        }
    }

    operation bind(with_path function) {
        return [this, function](void *context, const char *in, char *out) {
            return function(context, in, out, path.c_str());
        };
    }

    vel_test::test_host host;
    string path = "/n/registry";
    const char *dir = nullptr;
    const operation fname = [this](void *context, const char *in, char *out) {
        return vel_lc_spec2lc_fname(context, in, out, path.c_str(), dir);
    };
};

TEST_F(names_test, file_name) {
    gives(fname, {{us, us_file},
                  {"EN_US.utf8", "en_us\\e01c.lco"},
                  {"de_de.819@EuRo", "de_de\\0333EuRo.lco"},
                  {"de_de.819@", "de_de\\0333.lco"},
                  {"en_us.abcdefghijklmnopqrstu", "en_us\\0001.lco"},
                  {"VEL_TIME = en_us.819", "VEL_TIME = " + us_file},
                  {"VEL_TIME = en_us.819 ; ", "VEL_TIME = " + us_file + " ; "},
                  {long_form("DE_de.latin-1", 3, us), long_form("de_de\\0333.lco", 3, us_file)}});
    fails(fname, {"", "en_us", "en-us.819", "e1_us.819", "en_us.", "en_us.#no", "en_us.@euro",
                  "en_us.nothing", "de_de.819@euros", "en_us.abcdefghijklmnopqrstuv", "en_us.819 ",
                  us + string(300, ' '), "VEL_TIME = en_us.819 ;", "VEL_TIME = en_us.819 ; x",
                  "VEL_TIME= en_us.819", "VEL_TIME = en_us.819 ; VEL_TIME = en_us.819",
                  "VEL_TIME = en_us.819 ; VEL_CTYPE = en_us.utf8"});
    dir = "";
    gives(fname, {{us, us_file}});
    dir = "c:\\x";
    const string prefixed = "c:\\x\xFF" + us_file;
    gives(fname, {{us, prefixed}, {long_form(us), long_form(prefixed)}});
}

TEST_F(names_test, error_numbers_of_the_registry_pass_through) {
    path = "/n/none";
    fails(fname, {us}, VEL_EFORMAT);
    fails(fname, {"en_us.#no", "en_us"}); // nothing to look up
    fails(bind(vel_lc_spec2lc_norm), {us, long_form(us) + " ; "}, VEL_EFORMAT);
    fails(bind(vel_lc_short2lc_long), {us}, VEL_EFORMAT);
    fails(bind(vel_lc_spec2lc_short), {long_form(us)}, VEL_EFORMAT);
}

TEST_F(names_test, pieces) {
    auto apart = [](void *context, const char *in, char *out) {
        char codeset[6] = "", modifier[5] = "";
        int32_t result = vel_lc_fname2lc_pieces(context, in, out, codeset, modifier);
        strcat(strcat(strcat(strcat(out, "|"), codeset), "|"), modifier);
        return result;
    };
    gives(apart, {{"EN_us\\0333.lco", "en_US|819|"},
                  {"en_us/ffFFeuro.lco", "en_US|65535|euro"},
                  {"en_us\\0333abcdefg", "en_US|819|abcd"},
                  {"en_us\\0.lco", "en_US|0|"}});
    fails(apart, {"en_us\xFF.lco", "en_us"}, -1);
    fails(apart, {"en_us\\x", "en.us\\0333", "e", ""});

    const char *codeset = "e01c", *modifier = nullptr;
    operation join = [&](void *context, const char *in, char *out) {
        return vel_lc_pieces2lc_spec(context, in, codeset, modifier, out);
    };
    gives(join, {{"en_US", "en_US.e01c"}});
    fails(join, {"en_U", "en-US", ""});
    codeset = "65535", modifier = "euros";
    gives(join, {{"EN_us", "EN_us.65535@euro"}});
    codeset = "8g";
    fails(join, {"en_US"});
}

TEST_F(names_test, normal_form) {
    for (with_path function : {vel_lc_short_spec2lc_short_norm, vel_lc_spec2lc_norm}) {
        gives(bind(function),
              {{"EN_us.Latin-1", "en_US.819"}, {"de_DE.utf8@Euro", "de_DE.57372@Euro"}});
        fails(bind(function), {"en_us", "en_us.819;", long_form(us)});
    }
    const string normal = long_form("en_US.819", 5, "de_DE.819@x") + " ; ";
    string one = "VEL_TIME = en_US.819 ; ", six;
    for (int i = 0; i < 6; ++i) six += one;
    gives(bind(vel_lc_spec2lc_norm),
          {{long_form(us, 5, "de_de.latin-1@x") + " ; x", normal}, {normal, normal}, {six, six}});
    fails(bind(vel_lc_spec2lc_norm), {one, long_form(us, 2, "en_us.utf8") + " ; "});
}

TEST_F(names_test, short_to_long_and_back) {
    gives(bind(vel_lc_short2lc_long),
          {{"en_US", long_form("en_us")},
           {"EN_us.Latin-1@EuroPean", long_form("en_us.latin-1@european")},
           {"en_us.819@" + string(300, 'x'), long_form("en_us.819@" + string(275, 'x'))}});
    fails(bind(vel_lc_short2lc_long), {"", "en_us ", "en_us.", "en_us.819;", "en_us.819@e;",
                                       "en_us@euro", "en_us.nothing", "en_us.#no"});
    gives(bind(vel_lc_spec2lc_short),
          {{long_form("en_US", 2, "EN_us"), "en_us"},
           {long_form(us + "@EuroPean", 5, us + "@european"), us + "@european"},
           {"x " + long_form(us) + " ; x", us}});
    fails(bind(vel_lc_spec2lc_short), {long_form(us, 4, "en_us.latin-1"), long_form(us, 4, "en_us"),
                                       long_form(us, 4, us + "@x"), long_form(us) + ";",
                                       long_form("en_us.nothing"), "VEL_CTYPE = " + us, us});
    EXPECT_EQ(vel_lc_short2lc_long(nullptr, us.c_str(), nullptr, path.c_str()), -1);
}

TEST_F(names_test, category_of_a_long_form) {
    int32_t category;
    operation run = [&](void *context, const char *in, char *out) {
        return vel_lc_spec2category(context, in, category, out, path.c_str());
    };
    for (category = VEL_CTYPE; category <= VEL_MESSAGES; ++category) {
        int i = category - VEL_CTYPE;
        gives(run, {{long_form(us, i, "en_US.latin-1@Eu"), "en_US.latin-1@Eu"},
                    {long_form(us, (i + 1) % 6, "en_us.latin-1"), us},
                    {long_form("en_us", i, "fr_fr"), "fr_fr"}});
        fails(run, {long_form(us, i, "en_us"), long_form(us, i, "en_us.utf8"),
                    long_form(us, i, "en_us.nothing"), " " + long_form(us), "VEL_TIME = " + us});
    }
    for (int32_t unknown : {VEL_ALL, VEL_MESSAGES + 1, INT32_MIN}) {
        EXPECT_EQ(vel_lc_spec2category(nullptr, us.c_str(), unknown, nullptr, nullptr), 0);
    }
}

TEST_F(names_test, validity) {
    auto run = [](void *context, const char *in, char *out) {
        int32_t result = vel_is_lc_spec(context, in);
        strcpy(out, "valid");
        return result;
    };
    gives(run, {{"VEL_TIME = fr_fr.8859-1 ; VEL_CTYPE = fr_fr", "valid"},
                {"VEL_TIME = fr_fr.#what-ever-this-is-called@lengthy ; ", "valid"},
                {"VEL_TIME = fr_fr.@ ; VEL_CTYPE = fr_fr.", "valid"}});
    fails(run, {us, "", "VEL_TIME = fr-fr", "VEL_TIME = fr_fr#", "VEL_TIME = fr_fr;",
                "VEL_TIME = fr_fr.819;", "VEL_TIME = fr_fr.819@a;", "VEL_TIME = fr_fr.819 ",
                "VEL_TIME = fr_fr ; VEL_TIME = fr_fr", "VEL_TIME = fr_fr ; fr_fr"});
    fails(run, {"VEL_TIME = f1_fr", "VEL_TIME = fr_f"}, -1);
    EXPECT_EQ(vel_is_lc_spec(nullptr, nullptr), -1);
}

TEST_F(names_test, file_names_to_specification) {
    auto run = [](void *context, const char *in, char *out) {
        string text = string("/n") + '\0';
        int32_t result = vel_lc_fname2lc_spec(context, in, out, text.data());
        EXPECT_EQ(text.back(), string(in).find("VEL_TIME") == string::npos ? '\0' : '\\');
        return result;
    };
    gives(run, {{long_form(us_file, 1, "de_de\\0333euro.lco"),
                 long_form("en_us.819", 1, "de_de.819@euro")},
                {long_form(us_file, 2, "de_de/0333ab.lco") + " ; ",
                 long_form("en_us.819", 2, "de_de.819@ab") + " ; "},
                {long_form(us_file, 5, "de_de/1.lco"), long_form("en_us.819", 5, "de_de.1")}});
    fails(run,
          {long_form(us_file, 5, "none"), long_form(us_file, 5, ""),
           long_form(us_file, 5, string(400, 'x'))},
          VEL_EFORMAT);
    fails(run, {long_form(us_file, 5, "de_de/2"), "VEL_CTYPE = " + us_file,
                long_form(us_file) + " ; VEL_TIME = " + us_file});
    fails(run, {long_form(us_file, 5, "en_usx")}, -1);
}

TEST_F(names_test, message_directory_and_conversion) {
    operation run = [&](void *context, const char *in, char *out) {
        return vel_lc_spec2msg_dname(context, in, out, path.c_str(), dir);
    };
    gives(run,
          {{"de_de.819@euro", "de_de\\0333"}, {long_form(us, 5, "fr_fr.819@abcd"), "fr_fr\\0333"}});
    fails(run, {"VEL_TIME = " + us, "en_us"});
    dir = "abc";
    gives(run, {{us, string("abc\xFF") + "en_us\\"}});
    dir = "a directory of more than ten";
    gives(run, {{us, "a director"}});

    char out[20];
    vel_cs_nums2cv_fname(nullptr, 819, 437, out, nullptr);
    EXPECT_STREQ(out, "033301b5.cvo");
    vel_cs_nums2cv_fname(nullptr, 0xFFFF, 0, out, "d");
    EXPECT_EQ(out, string("d\xFF") + "ffff0000.cvo");
}

} // namespace
