// The host table, its defaults, and what stands directly on it.
#include <gtest/gtest.h>

#include <climits>
#include <ctime>

#include "ext/error.h"
#include "ext/host_table.h"
#include "ext/memory.h"
#include "support/host.h"
#include "support/scratch.h"

using namespace vel_test;

namespace {

TEST(host_table, slots) {
    int32_t cell = 0;
    const auto hook = as_hook(+[](void *) -> int32_t { return 5; });
    for (int32_t slot : {0, 17}) {
        EXPECT_EQ(vel_setextfunc(&cell, slot, hook), 0);
        EXPECT_EQ(vel_getextfunc(&cell, slot), hook);
        EXPECT_EQ(vel_setextfunc(&cell, slot, nullptr), 0);
        EXPECT_EQ(vel_getextfunc(&cell, slot), nullptr);
    }
    EXPECT_EQ(cell, 0);
    for (int32_t slot : {18, -1, INT32_MAX}) {
        cell = 0;
        EXPECT_EQ(vel_setextfunc(&cell, slot, hook), -1);
        EXPECT_EQ(cell, VEL_EBADLEN);
        cell = 0;
        EXPECT_EQ(vel_getextfunc(&cell, slot), nullptr);
        EXPECT_EQ(cell, VEL_EBADLEN);
    }
}

TEST(host_table, error_cells) {
    int32_t cell = 0;
    EXPECT_EQ(_vel_ext_errno(&cell), &cell) << "the context is its own cell";
    static int32_t elsewhere;
    vel_setextfunc(&cell, VEL_HOOK_ERRNO, as_hook(+[](void *) { return &elsewhere; }));
    EXPECT_EQ(vel::fail(&cell, VEL_EIO), -1);
    EXPECT_EQ(elsewhere, VEL_EIO);
    EXPECT_EQ(cell, 0);
    EXPECT_EQ(vel::get_error(&cell), VEL_EIO);
    vel_setextfunc(&cell, VEL_HOOK_ERRNO, nullptr);
    EXPECT_EQ(vel::fail_zero(&cell, VEL_EEOF), 0);
    EXPECT_EQ(cell, VEL_EEOF);
}

TEST(host_table, files_and_environment) {
    scratch_directory scratch;
    scratch.put("a", "xy\nz");
    EXPECT_EQ(vel_fopen(scratch.path().c_str(), "r"), nullptr) << "a directory";
    void *stream = vel_fopen((scratch / "a").c_str(), "r");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(_vel_ext_fgetc(stream), 'x');
    EXPECT_EQ(_vel_ext_ungetc('q', stream), 'q');
    char line[8];
    EXPECT_STREQ(_vel_ext_fgets(line, sizeof line, stream), "qy\n");
    EXPECT_EQ(vel_ftell(stream), 3);
    EXPECT_EQ(_vel_ext_getc(stream), 'z');
    EXPECT_FALSE(vel_feof(stream));
    EXPECT_EQ(_vel_ext_getc(stream), -1);
    EXPECT_TRUE(vel_feof(stream));
    EXPECT_EQ(vel_fseek(stream, -1, SEEK_END), 0);
    EXPECT_EQ(_vel_ext_fgetc(stream), 'z');
    EXPECT_EQ(vel_fclose(stream), 0);
    EXPECT_EQ(_vel_ext_putenv("VELS_TEST_VARIABLE=a=b"), 0);
    EXPECT_STREQ(_vel_ext_getenv("VELS_TEST_VARIABLE"), "a=b");
    EXPECT_EQ(_vel_ext_putenv("VELS_TEST_VARIABLE="), 0);
    EXPECT_EQ(_vel_ext_getenv("VELS_TEST_VARIABLE"), nullptr);
    EXPECT_EQ(_vel_ext_putenv("VELS_TEST_VARIABLE"), -1);
    EXPECT_EQ(_vel_ext_putenv("=x"), -1);
}

TEST(host_table, the_clock) {
    time_t before = time(nullptr);
    vel_time_record now{};
    vel_date today{};
    now.subsecond = 5;
    ASSERT_EQ(_vel_ext_currtime(&now), 0);
    ASSERT_EQ(_vel_ext_currdate(&today), 0);
    tm local = *localtime(&before);
    if (local.tm_min != now.minute || today.day != now.day) GTEST_SKIP() << "a minute began";
    EXPECT_EQ(std::tie(now.hour, now.weekday, now.yearday),
              std::tie(local.tm_hour, local.tm_wday, local.tm_yday));
    EXPECT_EQ(now.subsecond, 0);
    EXPECT_EQ(today.month, now.month + 1);
    EXPECT_EQ(today.year, now.year + 1900);
}

TEST(host_table, texts_of_errors) {
    std::set<std::string> texts;
    const std::string unknown = vel_strerror(1000);
    for (int32_t number : {1, 2, 3, 7, 8, 9, 11, 14, 45, 49, 50, 51, 55, 56, 57, 58}) {
        EXPECT_NE(vel_strerror(number), unknown) << number;
        texts.insert(vel_strerror(number));
    }
    EXPECT_EQ(texts.size(), 16u);
    for (int32_t number : {-1, 10, 32, 59, INT_MIN, INT_MAX})
        EXPECT_EQ(vel_strerror(number), unknown);
}

TEST(memory, an_array_that_failed_stays_failed) {
    test_host host;
    {
        vel::host_array<int> array;
        for (int i = 0; i < 1000; ++i) EXPECT_TRUE(array.push(i));
        EXPECT_EQ(array[999], 999);
        host.fail_allocation(1);
        EXPECT_EQ(array.extend(100000), nullptr);
        host.fail_allocation(0);
        EXPECT_TRUE(array.failed());
        EXPECT_FALSE(array.reserve(5000));
        EXPECT_EQ(array.size(), 1000u) << "what it held is still there";
        vel::stack_or_heap<int, 4> small(4), large(5);
        EXPECT_EQ(host.blocks.size(), 2u) << "the array and the large one";
        EXPECT_TRUE(small && large);
        host.fail_allocation(1);
        vel::stack_or_heap<int, 4> none(5);
        EXPECT_FALSE(none);
    }
    EXPECT_EQ(host.blocks.size(), 0u);
    EXPECT_EQ(vel::vel_alloc(0), nullptr);
    EXPECT_EQ(vel::vel_alloc_array<uint64_t>(SIZE_MAX / 4), nullptr) << "does not wrap around";
}

} // namespace
