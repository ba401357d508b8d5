// The faces of conversion.
#include "vels/convert.h"
#include "conv/translate.h"
#include "ext/error.h"

namespace vel {
namespace {

constexpr int32_t unlimited = INT32_MAX; // the length of terminated text

int32_t clamped(double value) {
    if (value >= INT32_MAX) return INT32_MAX;
    if (value <= INT32_MIN) return INT32_MIN;
    return static_cast<int32_t>(value);
}

} // namespace
} // namespace vel

using namespace vel;

int32_t vel_cv_mconv(vel_cv *cv, vel_cv_state *state, const unsigned char **input,
                     int32_t *input_length, unsigned char **output, int32_t *output_space,
                     int32_t *substituted) {
    *substituted = 0;
    if (!cv->translation) return fail(cv, VEL_EINVAL);
    vel_cv_state complete{1, 1, 0, 0};
    if (!state) state = &complete;
    if (cv->is_shifted() && state->reset) state->in_shifted = state->out_shifted = 0;
    conversion text{*input,
                    input_length ? *input_length : unlimited,
                    output ? *output : nullptr,
                    *output_space,
                    !input_length,
                    false};
    auto *routine = output ? cv->translation->write : cv->translation->measure;
    int32_t result = routine(cv, state, text);
    *input = text.in;
    if (input_length) *input_length = text.left;
    if (output) *output = text.out;
    *output_space = text.room;
    *substituted = text.substituted;
    return result;
}

int32_t vel_miconv(vel_cv *cv, const unsigned char **input, int32_t *input_length,
                   unsigned char **output, int32_t *output_space, int32_t *substituted) {
    return vel_cv_mconv(cv, nullptr, input, input_length, output, output_space, substituted);
}

int32_t vel_mconvlen(vel_cv *cv, vel_cv_state *state, const unsigned char **input,
                     int32_t *input_length, int32_t *output_space, int32_t *substituted) {
    return vel_cv_mconv(cv, state, input, input_length, nullptr, output_space, substituted);
}

float vel_iconv_expansion(const vel_cv *cv) {
    return cv->expansion;
}

int32_t vel_cv_outbuflen(const vel_cv *cv, int32_t n) {
    int32_t whole = clamped(static_cast<double>(cv->expansion));
    bool exact = static_cast<float>(whole) >= cv->expansion;
    double factor = exact ? whole : whole + 1.0;
    return clamped(factor * n);
}
