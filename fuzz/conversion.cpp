// The bytes of a conversion object and, in front of them, of a text to convert: in one call,
// measured, and through room that is too small. An allocator fails at a place the input chooses.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "conv/record.h"
#include "vels.h"

namespace {

constexpr int32_t longest_text = 64;
constexpr int32_t most_output = longest_text * 12; // a character and two switches of the state

const uint8_t *object;
size_t object_size;
uint32_t allocations_left;

void *open_memory(const char *, const char *) {
    return object_size ? fmemopen(const_cast<uint8_t *>(object), object_size, "r") : nullptr;
}
void *allocate(size_t size) {
    return allocations_left && --allocations_left == 0 ? nullptr : malloc(size);
}

template <typename Function> void install(int32_t slot, Function *function) {
    int32_t error = 0;
    vel_setextfunc(&error, slot, reinterpret_cast<vel_hook>(function));
}

void require(bool holds) {
    if (!holds) abort();
}

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
    require(vel_mconvlen(cv, &state, &in, &left, &space, &substituted) == whole.status);
    require(left == whole.left && most_output - space == whole.written);
    // A change of state is on record before its character fits, which is then taken otherwise.
    if (!cv->is_shifted()) {
        convert(cv, text, length, 16, &pieces);
        require(pieces.left == whole.left && pieces.written == whole.written);
        require(memcmp(pieces.output, whole.output, static_cast<size_t>(whole.written)) == 0);
    }
    for (int32_t room = 0; room < 8; ++room) convert(cv, text, length, room, &pieces);
    require(vel_cv_outbuflen(cv, length) >= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) return 0;
    size_t length = data[1] % longest_text;
    if (size < 2 + length) return 0;
    install(VEL_HOOK_FOPEN, open_memory);
    install(VEL_HOOK_MALLOC, allocate);
    object = data + 2 + length;
    object_size = size - 2 - length;
    for (uint32_t budget : {0u, data[0] + 1u}) {
        allocations_left = budget;
        vel_cv *cv = nullptr;
        if (vel_iconv_open1(&cv, "object.cvo") == 0) {
            allocations_left = 0;
            use(cv, data + 2, static_cast<int32_t>(length));
        }
        vel_cv_unload(cv);
    }
    return 0;
}
