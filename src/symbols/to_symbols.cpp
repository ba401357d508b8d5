// Text to symbolic names.
#include "charmap/character.h"
#include "ext/error.h"
#include "ext/memory.h"
#include "symbols/item.h"
#include "vels/symbols.h"

namespace vel {
namespace {

// Items written one after the other until one does not fit.
class item_writer {
public:
    item_writer(const charmap_names &names, char *output, int32_t size)
        : names_(names), output_(output), space_(size > 0 ? size : 0), empty_(size < 1) {
        if (!empty_) *output_ = '\0';
    }

    // False when the character has no name.
    bool add(coded_character character) {
        int32_t size = write_item(output_ + used_, space_, names_, character);
        if (size == 0) return false;
        bool fits = size <= space_;
        if (fits) used_ += size - 1;
        space_ = fits ? space_ - (size - 1) : 0;
        return true;
    }

    void clear() {
        if (!empty_) *output_ = '\0';
    }

    // With the terminator, which every item brings along.
    int32_t written() const { return empty_ ? 0 : used_ + 1; }

private:
    const charmap_names &names_;
    char *output_;
    int32_t used_ = 0;
    int32_t space_;
    bool empty_;
};

// The end of counted text is known, that of terminated text is a character of zeros.
int32_t convert(vel_charmap *charmap, char *output, int32_t size, const char *&cursor,
                const char *end) {
    item_writer out(charmap->names, output, size);
    while (!end || cursor < end) {
        int32_t n = end ? static_cast<int32_t>(end - cursor) : max_character_bytes;
        coded_character character;
        int32_t error = read_coded(*charmap, cursor, n, character);
        if (error != 0) return fail(charmap, end ? error : VEL_ESYMNAME);
        if (!end && character.value == 0) break;
        if (!out.add(character)) {
            out.clear();
            return fail(charmap, VEL_ESYMNAME);
        }
        cursor += character.length;
    }
    return out.written();
}

int32_t count_values(const vel_wchar *text, int32_t length) {
    if (length >= 1) return length;
    int32_t count = 0;
    while (text[count] != 0) ++count;
    return count;
}

// The bytes of wide text; what is no character shows when they are read.
int32_t pack(const sealed_table &table, const vel_wchar *text, int32_t count, char *bytes) {
    unsigned char *out = as_bytes(bytes);
    for (int32_t i = 0; i < count; ++i) {
        int32_t length = table.code_bytes(text[i]);
        put_packed(out, text[i], static_cast<uint32_t>(length));
        out += length;
    }
    return static_cast<int32_t>(out - as_bytes(bytes));
}

} // namespace
} // namespace vel

int32_t vel_mbstosyms(vel_charmap *charmap, char *output, int32_t size, const char **input,
                      int32_t length) {
    return vel::convert(charmap, output, size, *input, length < 1 ? nullptr : *input + length);
}

int32_t vel_wcstosyms(vel_charmap *charmap, char *output, int32_t size, const vel_wchar **input,
                      int32_t length) {
    constexpr int32_t most_values = INT32_MAX / vel::max_character_bytes;
    if (size > 0) *output = '\0';
    int32_t count = vel::count_values(*input, length);
    if (count == 0) return 0;
    if (count > most_values) return vel::fail(charmap, VEL_ENOMEM);
    vel::stack_or_heap<char, 1024> bytes(static_cast<size_t>(count) * vel::max_character_bytes);
    if (!bytes) return vel::fail(charmap, VEL_ENOMEM);
    const vel::sealed_table &table = *charmap->characters;
    const char *end = bytes.data() + vel::pack(table, *input, count, bytes.data());
    const char *cursor = bytes.data();
    int32_t result = vel::convert(charmap, output, size, cursor, end);
    int64_t converted = cursor - bytes.data();
    while (count-- > 0 && (converted -= table.code_bytes(**input)) >= 0) ++*input;
    return result;
}
