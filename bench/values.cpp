#include "values.h"

#include <cmath>
#include <random>

namespace bench {
namespace {

constexpr int value_count = 4096;

// Without the library's distributions, which differ from one implementation to the next.
class source {
public:
    std::uint64_t below(std::uint64_t limit) { return engine_() % limit; }
    bool one_in(std::uint64_t n) { return below(n) == 0; }

private:
    std::mt19937_64 engine_{20240229};
};

} // namespace

std::vector<std::int32_t> make_integers() {
    source random;
    std::vector<std::int32_t> values;
    for (int i = 0; i < value_count; ++i) {
        auto magnitude = static_cast<std::int32_t>(random.below(1ull << (1 + random.below(31))));
        values.push_back(random.one_in(4) ? -magnitude : magnitude);
    }
    return values;
}

std::vector<double> make_doubles() {
    source random;
    std::vector<double> values;
    for (int i = 0; i < value_count; ++i) {
        double limit = std::pow(10.0, static_cast<double>(3 + random.below(10)));
        auto hundredths = static_cast<double>(1 + random.below(static_cast<std::uint64_t>(limit)));
        values.push_back((random.one_in(4) ? -hundredths : hundredths) / 100);
    }
    return values;
}

std::vector<std::time_t> make_times() {
    constexpr std::uint64_t seconds_a_year = 31556952;
    source random;
    std::vector<std::time_t> values;
    for (int i = 0; i < value_count; ++i)
        values.push_back(
            static_cast<std::time_t>(seconds_a_year + random.below(128 * seconds_a_year)));
    return values;
}

std::u16string utf16_of(const std::string &utf8) {
    std::u16string units;
    for (std::size_t at = 0; at < utf8.size();) {
        auto lead = static_cast<unsigned char>(utf8[at]);
        int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        std::uint32_t value = more == 0 ? lead : lead & (0x3Fu >> more);
        for (++at; more > 0; --more, ++at)
            value = value << 6 | (static_cast<unsigned char>(utf8[at]) & 0x3F);
        if (value <= 0xFFFF) {
            units += static_cast<char16_t>(value);
        } else {
            units += static_cast<char16_t>(0xD7C0 + (value >> 10));
            units += static_cast<char16_t>(0xDC00 + (value & 0x3FF));
        }
    }
    return units;
}

} // namespace bench
