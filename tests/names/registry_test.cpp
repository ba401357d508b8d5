#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "support/host.h"
#include "vels/errors.h"
#include "vels/registry.h"

namespace {

constexpr uint16_t none = VEL_CS_INVALID;
constexpr int32_t bad = VEL_EBADFILE;

class registry_test : public testing::Test {
protected:
    ~registry_test() override {
        vel_free_registry_cache();
        EXPECT_EQ(host.blocks.size() + host.open_streams, 0u);
    }

    void write(const std::string &content) { host.files[path] = content; }
    const vel_registry_entry *cache() { return vel_cache_registry(&error, path.c_str()); }
    void expect(const char *name, uint16_t number, int32_t expected_error = 0) {
        error = 0;
        EXPECT_EQ(vel_cs_name2cs_num(&error, name, path.c_str()), number) << name;
        EXPECT_EQ(error, expected_error) << name;
        EXPECT_EQ(vel_cs_name2cs_num(nullptr, name, path.c_str()), number) << name;
    }

    vel_test::test_host host;
    const std::string path = "/r/vels/cm3/registry";
    int32_t error = 0;
};

struct lookup_row {
    std::vector<const char *> contents;
    std::vector<const char *> names;
    uint16_t number;
    int32_t error = 0;
    int32_t cache_error = 0; // what caching the same files stores
};

const lookup_row lookups[] = {
    {{"\f\v # c\r\n#\n\tA\t\n 57372 more # x\nb 2\n", "a 57372\na 2\n"}, {"a"}, 57372},
    {{"8859-1 819\n", "8859-1 66355\n"}, {"8859-1", "819"}, 819},
    {{"a#b@;c 1\n"}, {"A#B@;C"}, 1},
    {{"819 5\n"}, {"819"}, 5}, // a listed name goes before its own number
    {{"a 1\n"}, {"65535"}, 65535},
    {{"a 1\n", "# c"}, {"65536", "57344", "", "8x", "10000000000000000000819"}, none, VEL_EINVAL},
    {{"abcdefghijklmnopqrstu 9\n"}, {"abcdefghijklmnopqrstuvwxyz0123"}, 9},
    {{"a 1\nabcdefghijklmnopqrstuv 9\nb 2\n"}, {"b"}, none, VEL_EINVAL}, // too long: the end
    {{"a 1\nb 2"}, {"a"}, 1, 0, bad},
    {{"a 1\nb 2"}, {"b", "c"}, none, bad, bad},
    {{"b ", "b", "b x1\n", "b\x01 1\n", "b 57344\n"}, {"b"}, none, bad, bad},
    {{"a 1\nb 2 "}, {"b"}, 2},
    {{"\xE9 1\nb 2\n"}, {"b"}, 2, 0, bad},
};

TEST_F(registry_test, lookup) {
    for (bool hooked : {false, true}) { // else blocks are read
        if (hooked) host.hook_streams();
        for (const lookup_row &row : lookups) {
            for (const char *content : row.contents) {
                SCOPED_TRACE(content);
                write(content);
                for (const char *name : row.names) expect(name, row.number, row.error);
                error = 0;
                cache();
                EXPECT_EQ(error, row.cache_error);
                if (row.cache_error) {
                    expect("utf8", 57372);
                } else {
                    for (const char *name : row.names) expect(name, row.number, row.error);
                }
                vel_free_registry_cache();
            }
        }
    }
}

TEST_F(registry_test, cache_answers_until_it_is_freed) {
    write("B 2\na 1\n");
    const vel_registry_entry *head = cache();
    ASSERT_TRUE(head && head->next && !head->next->next);
    EXPECT_STREQ(head->name, "b");
    EXPECT_EQ(head->next->number, 1);
    write("b 3\n");
    expect("b", 2);
    expect("utf8", none, VEL_EINVAL); // the built-in table does not stand beside a cache
    EXPECT_EQ(cache()->number, 3);
    vel_free_registry_cache();
    host.files.erase(path);
    expect("819", none, VEL_EFORMAT);

    EXPECT_EQ(cache(), nullptr); // from here on the table answers
    const std::pair<const char *, uint16_t> rows[] = {
        {"ASCII", 364},  {"ccsid28709", 29709}, {"tchhstexsbcs", 28709}, {"csid933", 933},
        {"ujis", 57351}, {"eucjp", 5050},       {"qa-unix-big5", 57387}, {"4711", 4711}};
    for (auto [name, number] : rows) expect(name, number);
    expect("ccsid933", none, VEL_EINVAL);
    vel_free_registry_cache();
    expect("utf8", none, VEL_EFORMAT);
}

TEST_F(registry_test, installed_file_is_found_by_the_search) {
    write("mine 4242\n");
    host.environment["CORVANEDIR"] = "/r";
    EXPECT_EQ(vel_cs_name2cs_num(&error, "mine", nullptr), 4242);
    EXPECT_EQ(vel_cs_name2cs_num(&error, "mine", ""), none); // an empty path is a file here
    EXPECT_NE(vel_cache_registry(&error, ""), nullptr);      // and no path here
}

TEST_F(registry_test, every_allocation_of_caching_may_fail) {
    write("a 1\nb 2\nc 3\n");
    for (int n = 1; n <= 6; ++n) {
        host.fail_allocation(n);
        error = 0;
        EXPECT_EQ(cache(), nullptr) << n;
        EXPECT_EQ(error, VEL_ENOMEM);
        EXPECT_TRUE(host.failed && host.blocks.empty());
        expect("cp437", 437);
    }
    host.fail_allocation(7);
    EXPECT_NE(cache(), nullptr);
}

TEST_F(registry_test, any_content_is_survived) {
    std::mt19937 random(20240229);
    const std::string alphabet = std::string("aZ9#; \t\n\n\r@-\x80\xFF\x01", 15) + '\0';
    for (int i = 0; i < 1000; ++i) {
        std::string content;
        for (auto n = random() % 120; n > 0; --n) content += alphabet[random() % 16];
        write(content);
        error = 0;
        const vel_registry_entry *head = cache();
        EXPECT_TRUE(error == 0 || (error == bad && !head)) << content;
        for (; head; head = head->next) {
            std::string name = head->name;
            EXPECT_TRUE(!name.empty() && name.size() <= 21 && name.find('Z') == name.npos);
        }
        vel_free_registry_cache();
        vel_cs_name2cs_num(&error, "z9", path.c_str());
    }
}

TEST_F(registry_test, code_set_of_a_specification) {
    write("8859-1 819\nlatin-1 819\nutf8 57372\n");
    for (const char *spec : {"8859-1", "819", "en_us.Latin-1", "en_us.819@euro",
                             "VEL_CTYPE = en_us.8859-1 ; VEL_COLLATE = en_us.819 ; "}) {
        EXPECT_EQ(vel_lc_spec2cs_num(&error, spec, path.c_str()), 819) << spec;
        EXPECT_EQ(error, 0) << spec;
    }
    // What follows a piece is looked up as it stands, here with its blank.
    for (const char *spec :
         {"en_us.8859-1 utf8", "en_us.819@euros", "en_us.819@a-", "en_us", "",
          "VEL_CTYPE = en_us.819 ; VEL_COLLATE = en_us.819",
          "VEL_CTYPE = en_us.819 ; VEL_COLLATE = en_us.utf8 ; ",
          "VEL_CTYPE = en_us.819 ; VEL_CTYPE = en_us.819 ; ", "VEL_CTYPE = en_us.819 ; x",
          "VEL_CTYPE= en_us.819 ; ", "VEL_CTYPE = en_us.nothing ; ", "VEL_CTYPE = en_us ; "}) {
        error = 0;
        EXPECT_EQ(vel_lc_spec2cs_num(&error, spec, path.c_str()), none) << spec;
        EXPECT_EQ(error, VEL_EINVAL) << spec;
    }
}

} // namespace
