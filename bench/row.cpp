#include "row.h"

namespace bench {

double shown_value(unit shown, double work, double measured) {
    switch (shown) {
    case unit::gigabytes_per_second:
        return work / measured;
    case unit::nanoseconds:
        return measured / work;
    case unit::microseconds:
        return measured / work / 1e3;
    default:
        return measured / 1e6;
    }
}

} // namespace bench
