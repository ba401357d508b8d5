// Opening conversions: names, handles, what is refused, and memory that runs out.
#include <cmath>
#include <functional>

#include "conv/conv_fixture.h"
#include "support/log.h"

using namespace vel_test;

namespace {

class opening : public conv_test {
protected:
    opening() { host.files["/root/vels/cm3/registry"] = "8859-1 819\nlatin-1 819\n437 437\n"; }

    struct opened {
        int32_t result, error;
        std::string path; // that was tried first

        bool operator==(const opened &) const = default;
    };
    opened open_by(const std::function<int32_t(vel_cv **)> &open) {
        host.opened.clear();
        vel_cv *cv = reinterpret_cast<vel_cv *>(this);
        const int32_t result = open(&cv);
        std::erase(host.opened, "/root/vels/cm3/registry");
        const opened one{result, cv ? error_of(cv) : 0,
                         host.opened.empty() ? "" : host.opened.front()};
        EXPECT_EQ(vel_cv_unload(cv), cv ? 0 : -1);
        return one;
    }
};

TEST_F(opening, names_and_results) {
    const std::string object = single_byte_parts().text(), none;
    for (const char *name : {"a_b.cvo", "01b50333.cvo"}) install(name, object);
    host.files["/d/01b50333.cvo"] = object;
    const std::string path = "/root/vels/cv9/", longest(1016, 'n');
    const auto iconv = [&](const char *to, const char *from) {
        return open_by([=](vel_cv **cv) { return vel_iconv_open(cv, to, from); });
    };
    EXPECT_EQ(iconv("b", "a"), (opened{0, 0, path + "a_b.cvo"}));
    EXPECT_EQ(iconv("B", "a"), (opened{-1, VEL_ENOFILE, path + "a_B.cvo"}));
    EXPECT_EQ(iconv("a", "a"), (opened{-1, VEL_ENOFILE, none}));
    EXPECT_EQ(iconv("bc", longest.c_str()).path, path + longest + "_bc.cvo");
    EXPECT_EQ(iconv("bcd", longest.c_str()), (opened{-1, VEL_ENOFILE, none}));
    EXPECT_EQ(open_by([](vel_cv **cv) { return vel_iconv_open1(cv, nullptr); }),
              (opened{-1, VEL_ENOFILE, none}));

    const auto spec = [&](const char *to, const char *from) {
        return open_by([=](vel_cv **cv) { return vel_cv_open(cv, to, from); });
    };
    EXPECT_EQ(spec("xx_yy.b@euro", "en_us.a rest"), (opened{1, 0, path + "a_b.cvo"}));
    EXPECT_EQ(spec("fr_fr.8859-1@x", "en_us.8859-1"), (opened{0, 0, none}));
    EXPECT_EQ(spec("fr_fr", "en_us.a"), (opened{-1, VEL_ENOFILE, none}));
    EXPECT_EQ(spec("fr_fr.a", "en_us.@a"), (opened{-1, VEL_ENOFILE, none}));
    EXPECT_EQ(spec("fr_fr.a", "en_us.b"), (opened{-1, VEL_ENOFILE, path + "b_a.cvo"}));

    const auto load = [&](const char *to, const char *from, const char *directory) {
        return open_by([=](vel_cv **cv) { return vel_cv_load(cv, to, from, nullptr, directory); });
    };
    EXPECT_EQ(load("fr_fr.8859-1", "en_us.437", nullptr), (opened{1, 0, path + "01b50333.cvo"}));
    EXPECT_EQ(load("fr_fr.8859-1", "en_us.437", "/d"), (opened{1, 0, "/d/01b50333.cvo"}));
    EXPECT_EQ(load("fr_fr.8859-1", "en_us.437", "/e"),
              (opened{-1, VEL_ENOFILE, "/e/01b50333.cvo"}));
    EXPECT_EQ(load("fr_fr.8859-1", "en_us.latin-1", nullptr), (opened{0, 0, none}));
    EXPECT_EQ(load("fr_fr.8859-1", "en_us.nn", nullptr), (opened{-1, VEL_EINVAL, none}));
}

TEST_F(opening, what_is_refused) {
    const std::pair<std::function<void(conversion_parts &)>, int32_t> cases[] = {
        {[](auto &p) { p.type = "FILE_TYPE=locale_object\n"; }, VEL_ENOFILE},
        {[](auto &p) { p.version = "COMPILER_VERSION=8\n"; }, VEL_ENOFILE},
        {[](auto &p) { p.length = "HEADER_LENGTH=2\n"; }, VEL_ENOFILE},
        {[](auto &p) { p.length = "HEADER_LENGTH=999999\n"; }, VEL_ENOFILE},
        {[](auto &p) { p.sequences = "05000\n"; }, VEL_EBADFILE},
        {[](auto &p) { p.sequences = "0z000\n"; }, VEL_EBADFILE},
        {[](auto &p) { p.expansion = "-1\n"; }, VEL_EBADFILE},
        {[](auto &p) { p.expansion = "many\n"; }, VEL_EBADFILE},
        {[](auto &p) { p.expansion = "1e300\n"; }, VEL_EBADFILE},
        {[](auto &p) {
             p.entries["\xA4\xA2"] = {plain, "four"};
         },
         VEL_EBADFILE},
        {[](auto &p) {
             p.others = {substitute, "four"};
         },
         VEL_EBADFILE},
        {[](auto &p) { p.shifts = "1 0\n"; }, 0},
    };
    for (const auto &[change, error] : cases) {
        conversion_parts parts = general_parts();
        change(parts);
        EXPECT_EQ(load_error(parts.text()), error) << &change - &cases[0].first;
    }
    for (int32_t most : {0, 5, -1, 1 << 30}) {
        std::string text = general_parts().text();
        text.replace(text.find("\n1 3 "), 5, "\n1 " + std::to_string(most) + " ");
        EXPECT_EQ(load_error(text), -1) << most;
    }
    std::string text = general_parts().text();
    text.replace(text.find("\n4 1 3 "), 3, "\n5 ");
    EXPECT_EQ(load_error(text), VEL_ELONGKEY);
}

TEST_F(opening, files_cut_anywhere_and_memory_that_runs_out) {
    for (const conversion_parts &parts :
         {stateful_parts(), single_byte_parts(), wide_parts(4, false)}) {
        const std::string text = parts.text();
        ASSERT_EQ(load_error(text), 0);
        // The last lines name no table of the root node, and end with the file.
        for (size_t length = 0; length + 2 < text.size(); ++length) {
            ASSERT_NE(load_error(text.substr(0, length)), 0) << length << " of " << text.size();
        }
        for (int number = 1;; ++number) {
            host.fail_allocation(number);
            const int32_t error = load_error(text);
            const bool failed = host.failed;
            host.fail_allocation(0);
            ASSERT_EQ(host.blocks.size(), 0u) << "leaked at allocation " << number;
            if (!failed) break;
            // A converter without a kernel is still one.
            EXPECT_TRUE(error == VEL_ENOMEM || error == 0) << number;
        }
    }
}

TEST_F(opening, sizes_of_output) {
    const struct {
        const char *expansion;
        int32_t n, length;
    } cases[] = {{"1.0\n", 7, 7},          {"1.5\n", 7, 14},      {"0\n", 7, 0},
                 {"0.25\n", 7, 7},         {"3.0001\n", 10, 40},  {"1.5E0\n", INT32_MAX, INT32_MAX},
                 {"1e38\n", 1, INT32_MAX}, {"2147483648\n", 0, 0}};
    for (const auto &one : cases) {
        conversion_parts parts = general_parts();
        parts.expansion = one.expansion;
        vel_cv *cv = open(parts);
        EXPECT_FLOAT_EQ(vel_iconv_expansion(cv), strtof(one.expansion, nullptr));
        EXPECT_EQ(vel_cv_outbuflen(cv, one.n), one.length) << one.expansion;
        vel_cv_unload(cv);
    }
}

TEST_F(opening, the_log_tells_why) {
    install("x.cvo", general_parts().text());
    install("v.cvo", "FILE_TYPE=codeset_conversion_object\nCOMPILER_VERSION=8\n");
    const std::string log = log_of(host, [] {
        vel_cv *cv;
        vel_iconv_open1(&cv, "v.cvo");
        vel_iconv_open1(&cv, "x.cvo");
        for (const auto &[text, space] :
             {std::pair{"\xFF", 9}, {"\xA4", 9}, {"\xA4\xA4", 9}, {"a", 0}}) {
            const unsigned char *in = reinterpret_cast<const unsigned char *>(text);
            int32_t length = static_cast<int32_t>(strlen(text)), room = space, substituted;
            vel_mconvlen(cv, nullptr, &in, &length, &room, &substituted);
        }
    });
    EXPECT_NE(log.find("Invalid CVO file. Wrong Version.\n"), std::string::npos) << log;
    EXPECT_NE(log.find("CVO file loaded successfully.\nError in Translation.\n"
                       "Error in Translation.\nError in Translation (VEL_EILSEQ)\n"
                       "Error in Translation (VEL_E2BIG)\n"),
              std::string::npos)
        << log;
}

} // namespace
