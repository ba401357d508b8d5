// Where data files are looked for, and what is recorded about it.
#include <gtest/gtest.h>

#include "ext/data_file.h"
#include "ext/diag.h"
#include "ext/platform.h"
#include "support/log.h"
#include "vels/errors.h"

using namespace vel_test;

namespace {

using paths = std::vector<std::string>;

TEST(data_files, where_they_are_looked_for) {
    const std::string root = vel::platform::default_root;
    const std::string r256(256, 'r'), long_name(2000, 'n');
    const auto beneath = [](const std::string &directory) -> paths {
        return {directory + "vels/cm3/f", directory + "vels/cm/f"};
    };
    const struct {
        const char *name;
        std::map<std::string, std::string> environment;
        std::string file;
        paths tried;
    } cases[] = {
        {"default directory", {}, "f", beneath(root)},
        {"empty variables", {{"CORVANEDIR", ""}, {"VEL_PATH", ""}}, "f", beneath(root)},
        {"installation directory", {{"CORVANEDIR", "/i"}}, "f", beneath("/i/")},
        {"256 characters", {{"CORVANEDIR", r256}}, "f", beneath(r256 + "/")},
        {"257 characters", {{"CORVANEDIR", r256 + "r"}}, "f", {}},
        {"257 characters, whatever the file", {{"CORVANEDIR", r256 + "r"}}, "/f", {}},
        {"search path", {{"VEL_PATH", ";;/C/data;"}, {"CORVANEDIR", "/i"}}, "f", {"/C/data/f"}},
        {"search path of two",
         {{"VEL_PATH", "a;b/"}},
         "de_de\\0333.lco",
         {"a/de_de/0333.lco", "b//de_de/0333.lco"}},
        {"absolute", {{"VEL_PATH", "a"}}, "/x/f", {"/x/f"}},
        {"absolute with a drive", {}, "c:\\f", {"c:/f"}},
        {"a drive alone is not", {{"VEL_PATH", "a"}}, "c:f", {"a/c:f"}},
        {"own directory", {{"VEL_PATH", "a"}}, "dir\xFFx", {"dir/x"}},
        {"long", {{"VEL_PATH", long_name}}, long_name, {long_name + "/" + long_name}},
    };
    for (const auto &one : cases) {
        test_host host;
        host.environment = one.environment;
        int32_t cell = 0;
        EXPECT_EQ(vel::vel_find_data_file(&cell, one.file.c_str(), "cm", "3"), nullptr);
        EXPECT_EQ(host.opened, one.tried) << one.name;
        EXPECT_EQ(cell, VEL_ENOFILE) << one.name;
        EXPECT_EQ(vel::vel_find_data_file(nullptr, one.file.c_str(), "cm", "3"), nullptr);
        // The first that opens is taken.
        if (one.tried.empty()) continue;
        host.opened.clear();
        host.files[one.tried.back()] = "x";
        cell = 0;
        void *stream = vel::vel_find_data_file(&cell, one.file.c_str(), "cm", "3");
        ASSERT_NE(stream, nullptr) << one.name;
        EXPECT_EQ(host.opened, one.tried) << one.name;
        EXPECT_EQ(cell, 0);
        vel_fclose(stream);
    }
}

TEST(data_files, memory_for_long_paths) {
    for (const char *file : {"f", "/f", "d\xFFx"}) {
        std::string name = file + std::string(2000, 'n');
        test_host host;
        host.environment["VEL_PATH"] = "a;b";
        host.fail_allocation(1);
        int32_t cell = 0;
        EXPECT_EQ(vel::vel_find_data_file(&cell, name.c_str(), "lc", "11"), nullptr);
        EXPECT_EQ(cell, VEL_ENOMEM) << file;
        EXPECT_EQ(host.blocks.size(), 0u);
    }
}

TEST(data_files, the_direct_search_goes_past_the_hook) {
    scratch_directory scratch;
    scratch.put("vels/cv/f", "x");
    test_host host;
    host.environment["CORVANEDIR"] = scratch.path();
    int32_t cell = 0;
    void *stream = vel::vel_find_data_file_direct(&cell, "f", "cv", "9");
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(host.opened.empty());
    vel_ext_fclose(stream);
}

TEST(diagnostics, switches) {
    const std::pair<const char *, bool> values[] = {{"on", true},  {"On", true},   {"once", true},
                                                    {"ON", false}, {"off", false}, {"", false},
                                                    {"1", false},  {"o", false}};
    for (auto [value, expected] : values) {
        SCOPED_TRACE(value);
        test_host host;
        host.environment["VELSLOG"] = host.environment["VELSDEBUG"] = value;
        const auto action = [] {
            vel::vel_diag("hello");
            vel::vel_diag("again");
        };
        const std::string log = log_of(host, action, expected ? "hello" : "^$");
        EXPECT_EQ(log.substr(0, 22), expected ? "----\nVELS log started " : "");
        EXPECT_EQ(log.ends_with("\n----\nhello\nagain\n"), expected) << log;
    }
}

TEST(diagnostics, every_attempt_is_recorded) {
    test_host host;
    host.files["/i/vels/lc/f"] = "x";
    const std::string log = log_of(host, [&] {
        vel::vel_find_data_file(nullptr, "/none", "lc", "11");
        host.environment["CORVANEDIR"] = "/i";
        vel_fclose(vel::vel_find_data_file(nullptr, "f", "lc", "11"));
        host.environment["CORVANEDIR"] = std::string(257, 'r');
        vel::vel_find_data_file(nullptr, "f", "lc", "11");
    });
    EXPECT_EQ(log.substr(std::min(log.size(), log.find("----\nCould") + 5)),
              "Could not open: /none\nCould not open: /none\n"
              "Could not open: /i/vels/lc11/f\nOpened: /i/vels/lc/f\n"
              "Environment variable CORVANEDIR cannot be greater than 256 characters\n");
}

} // namespace
