// Which sequences of bytes are characters, and that they are written as they were read: whole code
// sets against the host.
#include "differential/against_host.h"

// The host does not free a path of its own each time it opens a locale beneath LOCPATH.
extern "C" const char *__lsan_default_suppressions() {
    return "leak:argz_add_sep";
}

namespace differential {
namespace {

class repertoire : public against_host {
protected:
    static bool whole(const probe &of, int n) {
        return of.kind == probe::character && of.length == static_cast<uint32_t>(n);
    }

    void compare(const std::string &bytes, bool ours_has, const probe &theirs, bool host_has) {
        found().compared();
        if (ours_has && !host_has)
            found().add("only ours", packed(bytes), [] { return "the host rejects it"; });
        if (host_has && !ours_has)
            found().add("only host", packed(bytes), [&] {
                return "ours rejects it, the host reads U+" + findings::hex(theirs.code);
            });
        if (ours_has) expect_round_trip(bytes);
    }

    // Every character that ours accepts has its bytes as its value and is written as it was read.
    void expect_round_trip(const std::string &bytes) {
        const int32_t length = static_cast<int32_t>(bytes.size());
        vel_wchar value = 1;
        char again[4];
        const int32_t read = vel_full_mbtowc(ours(), &value, bytes.data(), length);
        const int32_t written = vel_full_wctomb(ours(), again, value);
        if (read == (value == 0 ? 0 : length) && value == packed(bytes) && written == length &&
            bytes.compare(0, bytes.size(), again, written) == 0)
            return;
        found().add("round trip", packed(bytes), [&] {
            return "read " + std::to_string(read) + " bytes, value " + findings::hex(value) +
                   ", wrote " + std::to_string(written);
        });
    }
};

TEST_P(repertoire, the_same_bytes_are_characters) {
    walk([&](const char *bytes, int n) {
        const probe mine = read_ours(bytes, n), theirs = host().read(bytes, n);
        const bool ours_has = whole(mine, n), host_has = whole(theirs, n);
        if (ours_has || host_has)
            compare({bytes, static_cast<size_t>(n)}, ours_has, theirs, host_has);
        return mine.kind == probe::more || theirs.kind == probe::more;
    });
    found().settle({"only ours", "only host", "round trip"});
}

INSTANTIATE_TEST_SUITE_P(code_sets, repertoire, testing::ValuesIn(all_cases), parameter_name);

} // namespace
} // namespace differential
