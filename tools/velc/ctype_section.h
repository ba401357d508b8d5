#pragma once

// The CTYPE section: class table, names of the locale's own classes, case table, case pairs,
// growth.

#include <string>
#include <vector>

#include "velc/source/charmap.h"
#include "velc/source/model.h"

namespace velc {

struct ctype_section {
    std::string text;                         // without the marker line
    std::vector<std::string> dropped_classes; // for which no bit was left
};

ctype_section write_ctype(const ctype &written, const charmap &codeset);

// The locale's own classes and their numbers, which is their place: 16 bits less the eleven of the
// standard classes leave five. First the double-width characters, then what the locale itself
// defines, then the classes of combining characters that nearly every locale copies. Of too many
// classes that a locale defines, the smallest go.
struct own_classes {
    std::vector<std::string> kept, dropped;
};
own_classes number_classes(const ctype &from);

inline constexpr const char *double_width_class = "full_width";

} // namespace velc
