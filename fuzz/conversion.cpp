// The bytes of a conversion object and, in front of them, of a text to convert: in one call,
// measured, and through room that is too small. An allocator fails at a place the input chooses.
#include <cstdint>
#include <cstring>
#include <initializer_list>

#include "conv/record.h"
#include "pack.h"
#include "support/host.h"

namespace {

constexpr int32_t longest_text = 64;
constexpr int32_t most_output = longest_text * 12; // a character and two switches of the state

struct converted {
    int32_t status, left, written;
    unsigned char output[most_output];
};

// With room for this much at a time, as a caller does who gives what is missing.
void convert(vel_cv *cv, const uint8_t *text, int32_t length, int32_t room, converted *to) {
    const unsigned char *in = text;
    unsigned char *out = to->output;
    vel_cv_state state{0, 0, 0, 0};
    int32_t substituted;
    to->left = length;
    do {
        int32_t left = most_output - static_cast<int32_t>(out - to->output);
        int32_t space = room < left ? room : left;
        to->status = vel_cv_mconv(cv, &state, &in, &to->left, &out, &space, &substituted);
    } while (to->status != 0 && *reinterpret_cast<int32_t *>(cv) == VEL_E2BIG && room >= 16);
    to->written = static_cast<int32_t>(out - to->output);
}

void use(vel_cv *cv, const uint8_t *text, int32_t length) {
    static converted whole, pieces;
    convert(cv, text, length, most_output, &whole);
    vel_cv_state state{0, 0, 0, 0};
    const unsigned char *in = text;
    int32_t left = length, space = most_output, substituted;
    check(vel_mconvlen(cv, &state, &in, &left, &space, &substituted) == whole.status,
          "measured status");
    check(left == whole.left && most_output - space == whole.written, "measured lengths");
    // A change of state is on record before its character fits, which is then taken otherwise.
    if (!cv->is_shifted()) {
        convert(cv, text, length, 16, &pieces);
        check(pieces.left == whole.left && pieces.written == whole.written, "lengths of pieces");
        check(memcmp(pieces.output, whole.output, static_cast<size_t>(whole.written)) == 0,
              "pieces make the whole");
    }
    for (int32_t room = 0; room < 8; ++room) convert(cv, text, length, room, &pieces);
    check(vel_cv_outbuflen(cv, length) >= 0, "a size of output");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) return 0;
    size_t length = data[1] % longest_text;
    if (size < 2 + length) return 0;
    vel_test::test_host host;
    host.environment["CORVANEDIR"] = "/r";
    host.files["/r/vels/cv9/object.cvo"].assign(data + 2 + length, data + size);
    for (int failing : {0, data[0] + 1}) {
        host.fail_allocation(failing);
        vel_cv *cv = nullptr;
        if (vel_iconv_open1(&cv, "object.cvo") == 0) {
            host.fail_allocation(0);
            use(cv, data + 2, static_cast<int32_t>(length));
        }
        vel_cv_unload(cv);
    }
    check(host.blocks.empty() && host.open_streams == 0, "nothing is left behind");
    return 0;
}
