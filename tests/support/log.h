// What a process of its own writes into the log: the switches are read by its first message.
#pragma once

#include <gtest/gtest.h>

#include "support/host.h"
#include "support/scratch.h"

namespace vel_test {

template <typename Action>
std::string log_of(test_host &host, Action action, const char *printed = "") {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    scratch_directory scratch;
    host.environment["TMPDIR"] = scratch.path();
    host.environment.try_emplace("VELSLOG", "on");
    EXPECT_EXIT((action(), exit(0)), testing::ExitedWithCode(0), printed);
    return content_of(scratch / "vels.log");
}

} // namespace vel_test
