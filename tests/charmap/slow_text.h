// The whole-string functions as loops over one character at a time: what every kernel is compared
// with.
#pragma once

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "support/make_locale.h"
#include "vels/errors.h"
#include "vels/multibyte.h"

namespace vel_test {

constexpr vel_wchar untouched = 0xDEADBEEF;
const std::string terminator(4, '\0'); // for every code set, and to read beyond

// What an operation leaves: its result, the error number, and all of its output.
struct outcome {
    int32_t result = 0, error = 0;
    std::vector<vel_wchar> out;

    bool operator==(const outcome &) const = default;
};

inline std::ostream &operator<<(std::ostream &stream, const outcome &o) {
    stream << o.result << " (error " << o.error << ")" << std::hex;
    for (vel_wchar value : o.out) stream << ' ' << value;
    return stream << std::dec;
}

inline outcome failed(outcome o) {
    o.result = -1;
    o.error = VEL_EILSEQ;
    return o;
}

inline outcome slow_decode(vel_locale *locale, const std::string &text, int32_t nbytes,
                           int32_t room) {
    outcome o{0, 0, std::vector<vel_wchar>(text.size() + 8, untouched)};
    const std::string block = text + terminator;
    size_t at = 0, end = nbytes == -1 ? block.size() : static_cast<size_t>(nbytes);
    int32_t count = 0;
    while (count < room) {
        vel_wchar value;
        int32_t budget = nbytes == -1 ? 4 : std::max(1, static_cast<int32_t>(end - at));
        int32_t used = vel_full_mbtowc(locale, &value, block.data() + at, std::min(budget, 4));
        if (used < 0) return failed(o);
        o.out[static_cast<size_t>(count)] = value;
        at += static_cast<size_t>(used ? used : vel_mb_loc_min(locale));
        if (nbytes == -1 ? value == 0 : at >= end) break;
        ++count;
    }
    o.result = nbytes == -1 ? count : count + 1;
    return o;
}

inline outcome slow_encode(vel_locale *locale, const std::vector<vel_wchar> &wide, int32_t nvalues,
                           int32_t room) {
    outcome o{0, 0, std::vector<vel_wchar>(wide.size() * 4 + 8, 0xEE)};
    int32_t least = vel_mb_loc_min(locale);
    for (size_t i = 0; nvalues == -1 || i < static_cast<size_t>(nvalues); ++i) {
        int32_t length = std::max(least, static_cast<int32_t>(pack(wide[i]).size()));
        if (o.result + length > room) return o;
        char bytes[4] = {'\xEE', '\xEE', '\xEE', '\xEE'}; // as the output is before
        int32_t used = vel_full_wctomb(locale, bytes, wide[i]);
        for (int32_t b = 0; b < (used < 0 ? 4 : used); ++b) {
            o.out[static_cast<size_t>(o.result + b)] = static_cast<unsigned char>(bytes[b]);
        }
        if (used < 0) return failed(o);
        if (nvalues == -1 && wide[i] == 0) return o;
        o.result += used;
    }
    return o;
}

inline outcome slow_count(vel_locale *locale, const std::string &text, int32_t nbytes) {
    outcome o;
    const std::string block = text + terminator;
    int32_t at = 0;
    for (; nbytes == -1 || at < nbytes; ++o.result) {
        int32_t used = vel_full_mblen(locale, block.data() + at, 4);
        if (used < 0) return failed(o);
        if (used == 0 && nbytes == -1) return o;
        at += used ? used : vel_mb_loc_min(locale);
    }
    return at == nbytes ? o : failed(o);
}

} // namespace vel_test
