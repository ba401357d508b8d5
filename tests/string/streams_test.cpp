// Reading and writing through a host that ends or breaks at every byte.
#include <gtest/gtest.h>

#include "string/string_sets.h"
#include "support/host.h"
#include "vels/errors.h"
#include "vels/multibyte.h"
#include "vels/string.h"

namespace {

using namespace vel_test;

enum class ending { end_of_file, error, silence };

// A stream in memory that gives and takes its bytes up to `limit`.
struct memory_stream {
    std::string bytes;
    size_t limit = SIZE_MAX, at = 0;
    ending how = ending::end_of_file;

    bool ends(ending as) const { return how == as && (at >= limit || at >= bytes.size()); }
};

memory_stream &of(void *stream) {
    return *static_cast<memory_stream *>(stream);
}

int32_t get(void *s) {
    return of(s).ends(of(s).how) ? -1 : static_cast<unsigned char>(of(s).bytes[of(s).at++]);
}
template <ending how> int32_t ends(void *s) {
    return of(s).ends(how);
}
size_t put(const void *buffer, size_t size, size_t count, void *s) {
    size_t taken = std::min(size * count, of(s).limit - of(s).bytes.size());
    of(s).bytes.append(static_cast<const char *>(buffer), taken);
    return taken / size;
}
int32_t put_byte(int32_t byte, void *s) {
    char c = static_cast<char>(byte);
    return put(&c, 1, 1, s) == 1 ? 0 : -1;
}

class streams : public ::testing::TestWithParam<code_set> {
protected:
    streams() {
        int32_t cell;
        vel_setextfunc(&cell, VEL_HOOK_FGETC, as_hook(get));
        vel_setextfunc(&cell, VEL_HOOK_FEOF, as_hook(ends<ending::end_of_file>));
        vel_setextfunc(&cell, VEL_HOOK_FERROR, as_hook(ends<ending::error>));
        vel_setextfunc(&cell, VEL_HOOK_FWRITE, as_hook(put));
    }
    ~streams() override {
        int32_t cell;
        for (int32_t slot = 0; slot < VEL_HOOK_COUNT; ++slot) vel_setextfunc(&cell, slot, nullptr);
    }
    code_set set = GetParam();
    locale_ptr made = set.make();
    vel_locale *l = made->get();
    const std::string line = "aXY b\n", text = set.bytes(line);
};

TEST_P(streams, are_read_until_they_end_or_break) {
    for (ending how : {ending::end_of_file, ending::error, ending::silence}) {
        for (size_t limit = 0; limit < text.size(); ++limit) {
            SCOPED_TRACE(limit);
            size_t whole = 0;
            while (set.bytes(line.substr(0, whole + 1)).size() <= limit) ++whole;
            const std::string before = set.bytes(line.substr(0, whole));
            const int32_t ends[] = {before.size() < limit ? VEL_EINVAL : VEL_EEOF, VEL_EIO,
                                    VEL_EREAD};
            const int32_t number = ends[static_cast<int>(how)];
            const int32_t number_of_bytes = number == VEL_EINVAL ? VEL_EEOF : number;
            memory_stream a{text, limit, 0, how}, b = a, c = a, d = a, e = a;
            char out[4];
            int32_t length = -1;
            for (size_t i = 0; i < whole; ++i) {
                const std::string one = set.bytes(line.substr(i, 1));
                const int32_t expected = static_cast<int32_t>(one.size());
                EXPECT_EQ(expected, vel_full_fgetmb(l, out, &a));
                EXPECT_EQ(one, std::string(out, one.size()));
                EXPECT_EQ(set.wide(line)[i], vel_full_fgetwc(l, &b));
                EXPECT_EQ(0, vel_getmb(l, out, get, &c, &length));
                EXPECT_EQ(expected, length);
            }
            EXPECT_RESULT(-1, number_of_bytes, l, vel_full_fgetmb(l, out, &a));
            EXPECT_RESULT(VEL_WEOF, number, l, vel_full_fgetwc(l, &b));
            EXPECT_RESULT(-1, ends[0], l, vel_getmb(l, out, get, &c, &length));
            block<char> bytes(std::string(limit + 1, '?'));
            block<vel_wchar> wide(wide_text(whole + 1, 7));
            EXPECT_RESULT(nullptr, number_of_bytes, l,
                          vel_fgetmbs(l, bytes, static_cast<int32_t>(limit), &d));
            EXPECT_RESULT(nullptr, number, l,
                          vel_fgetwcs(l, wide, static_cast<int32_t>(whole), &e));
            EXPECT_EQ(before + '?', std::string(bytes, before.size() + 1)); // no terminator
            EXPECT_EQ(7u, wide[whole]);
        }
    }
}

TEST_P(streams, give_lines_that_fit) {
    const std::string ended = terminated(set, text);
    const wide_text wide_ended = terminated(set.wide(line));
    for (size_t room = 0; room <= ended.size(); ++room) {
        memory_stream a{text + text}, b = a;
        block<char> bytes(std::string(room, '?'));
        block<vel_wchar> wide(wide_text(room, 7));
        bool fits = room == ended.size(), wide_fits = room >= wide_ended.size();
        EXPECT_RESULT(fits ? bytes.get() : nullptr, fits ? 0 : VEL_E2BIG, l,
                      vel_fgetmbs(l, bytes, static_cast<int32_t>(room), &a));
        EXPECT_RESULT(wide_fits ? wide.get() : nullptr, wide_fits ? 0 : VEL_E2BIG, l,
                      vel_fgetwcs(l, wide, static_cast<int32_t>(room), &b));
        EXPECT_TRUE(!fits || std::equal(ended.begin(), ended.end(), bytes.get()));
        EXPECT_TRUE(!wide_fits || std::equal(wide_ended.begin(), wide_ended.end(), wide.get()));
    }
    memory_stream stream{text};
    EXPECT_RESULT(nullptr, VEL_EFAULT, l, vel_fgetmbs(l, nullptr, 9, &stream));
}

TEST_P(streams, are_written_until_they_break) {
    const block<char> string(terminated(set, text));
    const block<vel_wchar> wide(terminated(set.wide(line)));
    for (size_t limit = 0; limit <= text.size(); ++limit) {
        const bool fits = limit == text.size();
        memory_stream a{"", limit}, b = a, c = a;
        EXPECT_RESULT(fits ? 0 : -1, fits ? 0 : VEL_EIO, l, vel_fputmbs(l, string, &a));
        EXPECT_RESULT(fits ? 0 : -1, fits ? 0 : VEL_EIO, l, vel_fputwcs(l, wide, &b));
        EXPECT_EQ(text.substr(0, limit), a.bytes);
        EXPECT_EQ(text.substr(0, limit), b.bytes);
        const char *at = string;
        while (vel_fputmb(l, at, &c) == at) at = vel_full_mbsnext(l, at);
        EXPECT_EQ(text.substr(0, limit), c.bytes);
    }
    for (auto function : {vel_putmb, tuk_vel_putmb}) {
        for (size_t limit = 0; limit <= 4; ++limit) {
            for (const std::string &x : {set.bytes("X"), std::string(set.least, '\0')}) {
                memory_stream a{"", limit};
                const bool fits = x.size() <= limit;
                int32_t count = -1;
                EXPECT_RESULT(fits ? 0 : -1, fits ? 0 : VEL_EIO, l,
                              function(l, x.c_str(), -1, put_byte, &a, &count));
                EXPECT_EQ(x.substr(0, limit), a.bytes);
                EXPECT_EQ(static_cast<int32_t>(a.bytes.size()), count);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(sets, streams, ::testing::ValuesIn(code_sets));

TEST(stream_failures, of_characters_that_are_none) {
    locale_ptr made = make_utf8(), single = make_single_byte();
    vel_locale *l = made->get();
    FILE *file = tmpfile();
    char out[4];
    fputs("\xE3\x41", file);
    rewind(file);
    EXPECT_RESULT(-1, VEL_EILSEQ, l, vel_full_fgetmb(l, out, file));
    rewind(file);
    EXPECT_RESULT(VEL_WEOF, VEL_EILSEQ, l, vel_full_fgetwc(l, file));
    EXPECT_RESULT(VEL_WEOF, VEL_EILSEQ, l, vel_fputwc(l, 0xE38141, file));
    EXPECT_RESULT(-1, VEL_EILSEQ, l, vel_fputmbs(l, "a\xFF", file));
    EXPECT_RESULT(nullptr, VEL_EILSEQ, l, vel_fputmb(l, "\xFF", file));
    EXPECT_RESULT(nullptr, VEL_EFAULT, l, vel_fputmb(l, nullptr, file));
    int32_t length; // `out` holds E3 41
    EXPECT_RESULT(-1, VEL_EINVAL, l, vel_full_charoffset(l, out + 1, out, &length));
    EXPECT_RESULT(-1, VEL_EILSEQ, l, vel_full_charoffset(l, out, out + 2, &length));
    // The low byte is written, and a byte FF is a character; its value is not the end.
    rewind(file);
    const vel_wchar values[] = {0x1FF, 0xFFFFFFFF, 0};
    EXPECT_RESULT(0, 0, single->get(), vel_fputwcs(single->get(), values, file));
    rewind(file);
    EXPECT_EQ(0xFFu, vel_full_fgetwc(single->get(), file));
    EXPECT_EQ(1, vel_full_fgetmb(single->get(), out, file));
    EXPECT_RESULT(VEL_WEOF, VEL_EEOF, single->get(), vel_full_fgetwc(single->get(), file));
    fclose(file);
}

} // namespace
