// Stated results of the twin forms: multibyte and wide, plain and counted, in every kind of code
// set.
#include <gtest/gtest.h>

#include <functional>

#include "string/string_sets.h"
#include "support/host.h"
#include "vels/errors.h"
#include "vels/string.h"

namespace {

using namespace vel_test;

TEST(strings, are_searched_for_nothing_and_for_null_characters) {
    for_each_set([&](const code_set &set, vel_locale *l) {
        const std::string inside = set.bytes("aX") + std::string(set.least, '\0') + set.bytes("Y");
        block<char> text(terminated(set, inside)), none(std::string(set.least, '\0'));
        const vel_wchar wide[] = {'a', 0, 'b', 0};
        int32_t n = set.size("aX"), all = static_cast<int32_t>(inside.size());
        int32_t least = static_cast<int32_t>(set.least);
        // The terminator is found in terminated text, null characters in counted text.
        EXPECT_RESULT(text + n, 0, l, vel_full_mbschr(l, text, none));
        EXPECT_RESULT(text + n, 0, l, vel_full_mbsrchr(l, text, none));
        EXPECT_RESULT(text + n, 0, l, tuk_vel_mbsrchr(l, text, all, none, least));
        EXPECT_RESULT(2, 0, l, tuk_vel_mbscspn(l, text, all, none, least));
        EXPECT_RESULT(wide + 1, 0, l, vel_wcsrchr(l, wide, 0));
        EXPECT_RESULT(wide + 3, 0, l, tuk_vel_wcsrchr(l, wide, 4, 0));
        l->error = 99; // what is not found leaves 0
        EXPECT_EQ(nullptr, tuk_vel_mbschr(l, text, n, none, least));
        EXPECT_EQ(0, std::exchange(l->error, 99));
        EXPECT_EQ(nullptr, tuk_vel_wcschr(l, wide, 1, 0));
        EXPECT_EQ(0, std::exchange(l->error, 99));
        // Empty needles and sets.
        EXPECT_EQ(text, vel_full_mbsmbs(l, text, none));
        EXPECT_EQ(wide + 3, vel_wcswcs(l, wide + 3, wide + 1));
        EXPECT_EQ(99, std::exchange(l->error, 99));
        EXPECT_EQ(nullptr, vel_full_mbsmbs(l, none, none));
        EXPECT_EQ(0, l->error);
        EXPECT_RESULT(2, 0, l, vel_full_mbscspn(l, text, none));
        EXPECT_RESULT(0, 0, l, tuk_vel_wcsspn(l, wide, 4, wide, 0));
        EXPECT_RESULT(-1, VEL_EINVAL, l, tuk_vel_mbscspn(l, text, all, none, 0));
    });
}

enum operation { cpy, ncpy, cat, ncat };

int32_t join(operation o, vel_locale *l, char *d, int32_t dn, char *s, int32_t sn, int32_t n) {
    if (o == cpy) return tuk_vel_mbscpy(l, d, s, sn);
    if (o == ncpy) return tuk_vel_mbsncpy(l, d, s, sn, n);
    return o == cat ? tuk_vel_mbscat(l, d, dn, s, sn) : tuk_vel_mbsncat(l, d, dn, s, sn, n);
}
int32_t join(operation o, vel_locale *l, vel_wchar *d, int32_t dn, vel_wchar *s, int32_t sn,
             int32_t n) {
    if (o == cpy) return tuk_vel_wcscpy(l, d, s, sn);
    if (o == ncpy) return tuk_vel_wcsncpy(l, d, s, sn, n);
    return o == cat ? tuk_vel_wcscat(l, d, dn, s, sn) : tuk_vel_wcsncat(l, d, dn, s, sn, n);
}

// Joins dst and src in a block of the size of what is to be made.
template <typename Unit, typename Text>
void check_join(operation o, vel_locale *l, const Text &dst, const Text &src, int32_t n,
                const Text &made, bool counted, int32_t extra) {
    Text start = dst;
    start.resize(made.size(), 7);
    block<Unit> out(start), in(src);
    int32_t dn = static_cast<int32_t>(dst.size()), sn = static_cast<int32_t>(src.size());
    int32_t result = static_cast<int32_t>(made.size()) + extra;
    EXPECT_RESULT(result, 0, l, join(o, l, out, counted ? dn : -1, in, counted ? sn : -1, n));
    EXPECT_EQ(made, Text(out.get(), out.get() + made.size()));
}

TEST(strings, are_copied_and_appended) {
    struct row {
        operation o;
        const char *dst, *src;
        int32_t n;
        const char *made;
    };
    const row rows[] = {
        {cpy, "", "aXb", 0, "aXb"},    {cpy, "", "", 0, ""},       {ncpy, "", "XYa", 2, "XY"},
        {ncpy, "", "XYa", 9, "XYa"},   {ncpy, "", "XYa", 0, ""},   {cat, "aX", "Yb", 0, "aXYb"},
        {cat, "", "Yb", 0, "Yb"},      {cat, "aX", "", 0, "aX"},   {ncat, "X", "Yab", 2, "XYa"},
        {ncat, "X", "Yab", 8, "XYab"}, {ncat, "aX", "Y", 0, "aX"}, {ncat, "", "", 3, ""},
    };
    for_each_set([&](const code_set &set, vel_locale *l) {
        for (const row &r : rows) {
            SCOPED_TRACE(std::to_string(r.o) + ' ' + r.dst + " + " + r.src);
            const std::string d = set.bytes(r.dst), s = set.bytes(r.src), made = set.bytes(r.made);
            const wide_text wd = set.wide(r.dst), ws = set.wide(r.src), wmade = set.wide(r.made);
            // Results of terminated bytes have or lack terminators, as the operation states.
            const int32_t terminators[] = {0, -2, 0, -1};
            int32_t extra = terminators[r.o] * static_cast<int32_t>(set.least);
            check_join<char>(r.o, l, d, s, r.n, made, true, 0);
            check_join<char>(r.o, l, terminated(set, d), terminated(set, s), r.n,
                             terminated(set, made), false, extra);
            check_join<vel_wchar>(r.o, l, wd, ws, r.n, wmade, true, 0);
            check_join<vel_wchar>(r.o, l, terminated(wd), terminated(ws), r.n, terminated(wmade),
                                  false, -1);
        }
    });
}

TEST(strings, have_plain_forms) {
    locale_ptr made = make_utf8();
    vel_locale *l = made->get();
    char d[9], s[] = "abcb";
    vel_wchar w[9], ws[] = {'a', 'b', 'c', 'b', 0}, b[] = {'b', 0}, ab[] = {'b', 'a', 0};
    EXPECT_TRUE(vel_full_mbscpy(l, d, "abcb") == d && vel_wcscpy(w, ws) == w);
    EXPECT_TRUE(vel_full_mbscat(l, d, "b") == d && vel_wcscat(w, b) == w);
    EXPECT_TRUE(vel_mbsncat(l, d, s, 1) == d && vel_wcsncat(w, ws, 1) == w);
    EXPECT_STREQ("abcbba", d);
    EXPECT_EQ((wide_text{'a', 'b', 'c', 'b', 'b', 'a', 0}), wide_text(w, w + 7));
    EXPECT_TRUE(vel_mbsncpy(l, d, s, 2) == d && vel_wcsncpy(w, ws, 2) == w);
    EXPECT_TRUE(strcmp("ab", d) == 0 && w[1] == 'b' && w[2] == 0);
    EXPECT_TRUE(vel_full_mbschr(l, s, "b") == s + 1 && vel_wcschr(l, ws, 'b') == ws + 1);
    EXPECT_TRUE(vel_full_mbsrchr(l, s, "b") == s + 3 && vel_wcsrchr(l, ws, 'b') == ws + 3);
    EXPECT_TRUE(vel_full_mbsmbs(l, s, "cb") == s + 2 && vel_wcswcs(l, ws, b) == ws + 1);
    EXPECT_TRUE(vel_full_mbspbrk(l, s, "cb") == s + 1 && vel_wcspbrk(l, ws, b) == ws + 1);
    EXPECT_TRUE(vel_full_mbsspn(l, s, "ba") == 2 && vel_wcsspn(l, ws, ab) == 2);
    EXPECT_TRUE(vel_full_mbscspn(l, s, "cb") == 1 && vel_wcscspn(l, ws, b) == 1);
    EXPECT_TRUE(vel_mbsntslen(l, "\xC3\xA9 ") == 1 && vel_mbsntsbytes(l, "\xC3\xA9 ") == 2);
}

TEST(strings, fail_in_a_stated_order) {
    locale_ptr made = make_utf8();
    vel_locale *l = made->get();
    char d[16] = "", a[] = "a";
    vel_wchar wd[16] = {0}, wa[] = {'a', 0};
    using fails = std::function<bool(bool, int32_t, bool, int32_t)>; // null?, length, null?, length
    auto of = [&](auto function, auto *first, auto *second, auto... more) -> fails {
        return [=](bool p, int32_t n, bool q, int32_t m) {
            auto result = function(l, p ? nullptr : first, n, q ? nullptr : second, m, more...);
            if constexpr (std::is_pointer_v<decltype(result)>)
                return !result;
            else
                return result == -1;
        };
    };
    const fails pairs[] = {
        of(tuk_vel_mbscat, d, a),       of(tuk_vel_mbsncat, d, a, 1), of(tuk_vel_wcscat, wd, wa),
        of(tuk_vel_wcsncat, wd, wa, 0), of(tuk_vel_mbsspn, d, a),     of(tuk_vel_wcscspn, wd, wa),
        of(tuk_vel_mbspbrk, d, a),      of(tuk_vel_mbschr, d, a),     of(tuk_vel_mbsmbs, d, a),
        of(tuk_vel_wcswcs, wd, wa),
    };
    for (const fails &f : pairs) {
        SCOPED_TRACE(&f - pairs);
        EXPECT_RESULT(true, VEL_EFAULT, l, f(true, -2, false, -1));
        EXPECT_RESULT(true, VEL_EFAULT, l, f(false, 1, true, -1));
        EXPECT_RESULT(true, VEL_EMIXEDLEN, l, f(false, -7, false, -1));
        EXPECT_RESULT(true, VEL_EBADLEN, l, f(false, -2, false, 1));
        EXPECT_RESULT(true, VEL_EBADLEN, l, f(false, 1, false, -3));
    }
    struct row {
        int32_t error;
        std::function<bool()> fails;
    };
    const char *cut = "b\xE3\x81", *bad = "b\xFFz";
    const row rows[] = {
        {VEL_EFAULT, [&] { return tuk_vel_mbscpy(l, nullptr, a, -2) == -1; }},
        {VEL_EBADLEN, [&] { return !tuk_vel_wcschr(l, wa, -2, 'a'); }},
        {VEL_EBADLEN, [&] { return tuk_vel_mbsntslen(l, a, -2) == -1; }},
        {VEL_ENOPRINT, [&] { return !vel_mbsncpy(l, d, a, -1); }},
        {VEL_ENOPRINT, [&] { return tuk_vel_mbsncat(l, d, 0, a, 1, -1) == -1; }},
        {VEL_EILSEQ, [&] { return !vel_full_mbschr(l, bad, "z"); }},
        {VEL_EILSEQ, [&] { return !vel_full_mbsrchr(l, bad, "b"); }},
        {VEL_EINVAL, [&] { return !tuk_vel_mbsmbs(l, cut, 3, "\xE3\x81\x82", 3); }},
        {VEL_EINVAL, [&] { return !tuk_vel_mbschr(l, "ab", 2, cut + 1, 2); }},
        {VEL_EILSEQ, [&] { return tuk_vel_mbsspn(l, "ab", 2, cut, 3) == -1; }},
        {VEL_EINVAL, [&] { return tuk_vel_mbscspn(l, cut, 3, "x", 1) == -1; }},
        {VEL_EINVAL, [&] { return tuk_vel_mbsntsbytes(l, cut, 3) == -1; }},
        {VEL_EINVAL, [&] { return tuk_vel_mbsncpy(l, d, cut, 3, 2) == -1; }},
        {VEL_EILSEQ, [&] { return !vel_full_mbscpy(l, d, bad); }},
        // The bytes have been copied; the two parts of a character make one.
        {VEL_EINVAL,
         [&] { return tuk_vel_mbscat(l, d, 0, cut, 3) == -1 && memcmp(d, cut, 3) == 0; }},
        {0, [&] { return tuk_vel_mbscat(l, d, 3, "\x82", 1) == 4; }},
        {0, [&] { return tuk_vel_wcscat(nullptr, wd, -1, wa, 1) == -1; }},
        {0, [&] { return !vel_wcscpy(wd, nullptr) && !vel_wcsncpy(wd, wa, -1); }},
    };
    for (const row &r : rows) {
        SCOPED_TRACE(&r - rows);
        EXPECT_RESULT(true, r.error, l, r.fails());
    }
}

// More characters than the stack holds, in a host that counts its blocks.
TEST(strings, take_memory_for_large_sets_only) {
    locale_ptr made = make_utf8();
    std::string small, large;
    for (uint32_t i = 0; i < 128; ++i) small += pack(utf8(0x4E00 + i));
    for (uint32_t i = 0; i < 1000; ++i) large += pack(utf8(0x4E00 + i));
    test_host host;
    host.fail_allocation(1);
    EXPECT_RESULT(128, 0, made->get(), vel_full_mbsspn(made->get(), large.c_str(), small.c_str()));
    EXPECT_FALSE(host.failed);
    for (int number = 1; host.fail_allocation(number), number < 20; ++number) {
        made->get()->error = 0;
        int32_t count = vel_full_mbsspn(made->get(), large.c_str(), large.c_str());
        EXPECT_TRUE(host.blocks.empty());
        EXPECT_EQ(host.failed ? -1 : 1000, count);
        EXPECT_EQ(host.failed ? VEL_ENOMEM : 0, made->get()->error);
        if (!host.failed) return;
    }
    FAIL() << "memory was taken without end";
}

} // namespace
