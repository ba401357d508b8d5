// The fixture of the tests against the host's C library.
#pragma once

#include <gtest/gtest.h>

#include "differential/findings.h"
#include "differential/host_locale.h"
#include "differential/known_differences.h"

namespace differential {

class against_host : public testing::TestWithParam<locale_case> {
protected:
    void SetUp() override {
        ours_ = open_ours(GetParam());
        ASSERT_TRUE(ours_) << GetParam().name() << " is not in the pack " << VELS_TEST_DATA_ROOT;
        std::string why;
        host_ = host_locale::open(GetParam(), why);
        if (!host_) GTEST_SKIP() << why;
    }

    vel_locale *ours() const { return ours_.get(); }
    const host_locale &host() const { return *host_; }
    findings &found() { return found_; }

    probe read_ours(const char *bytes, int32_t n) const {
        const int32_t length = tuk_vel_full_mblen(ours(), bytes, n);
        if (length > 0) return {probe::character, static_cast<uint32_t>(length)};
        return {*vel_ext_errno(ours()) == VEL_EINVAL ? probe::more : probe::invalid};
    }

    // Visits every sequence of bytes that `look` calls a character, in their order. `look` says of
    // n bytes whether they are one and whether a longer one may begin with them.
    template <typename Look> void walk(Look look, int n = 1) {
        for (int byte = 0; byte < 256; ++byte) {
            bytes_[n - 1] = static_cast<char>(byte);
            if (look(static_cast<const char *>(bytes_), n) && n < 4) walk<Look &>(look, n + 1);
        }
    }

    // Visits every character of our code set that the host knows too.
    template <typename Visit> void for_each_common_character(Visit &&visit) {
        walk([&](const char *bytes, int n) {
            const probe mine = read_ours(bytes, n);
            if (mine.kind != probe::character) return mine.kind == probe::more;
            const probe theirs = host().read(bytes, n);
            if (theirs.kind == probe::character && theirs.length == mine.length) {
                found_.compared();
                visit(std::string(bytes, n), theirs);
            }
            return false;
        });
    }

private:
    char bytes_[4];
    our_locale ours_;
    std::unique_ptr<host_locale> host_;
    findings found_{GetParam(), known_differences};
};

} // namespace differential
