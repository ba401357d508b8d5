#include "record/portable.h"

namespace vel {
namespace {

constexpr portable_codes make_ascii() {
    portable_codes made = {};
    for (int c = 0; c < 128; ++c) {
        made.code_of[c] = static_cast<unsigned char>(c);
        made.ascii_of[c] = static_cast<unsigned char>(c);
    }
    return made;
}

struct run {
    unsigned char first;
    const char *characters;
};
constexpr run ebcdic_runs[] = {
    {0x05, "\t"},         {0x25, "\n"},        {0x40, " "},         {0x4B, ".<(+"},
    {0x50, "&"},          {0x5A, "!$*);"},     {0x60, "-/"},        {0x6B, ",%_>?"},
    {0x7A, ":#@'=\""},    {0x81, "abcdefghi"}, {0x91, "jklmnopqr"}, {0xA2, "stuvwxyz"},
    {0xB0, "^"},          {0xC1, "ABCDEFGHI"}, {0xD1, "JKLMNOPQR"}, {0xE2, "STUVWXYZ"},
    {0xF0, "0123456789"},
};

constexpr portable_codes make_ebcdic() {
    portable_codes made = {};
    for (const run &one : ebcdic_runs) {
        unsigned char code = one.first;
        for (const char *c = one.characters; *c; ++c, ++code) {
            made.code_of[static_cast<unsigned char>(*c)] = code;
            made.ascii_of[code] = static_cast<unsigned char>(*c);
        }
    }
    // Many code pages have these two here, where the others have signs that no format uses.
    made.ascii_of[0x4F] = '!';
    made.ascii_of[0x5F] = '^';
    return made;
}

} // namespace

constinit const portable_codes ascii_codes = make_ascii();
constinit const portable_codes ebcdic_codes = make_ebcdic();

} // namespace vel
