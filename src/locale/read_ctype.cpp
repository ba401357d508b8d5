// The CTYPE section: classes and case.
//
// Contract. A category that this reader accepts keeps these promises to later code:
//   - class and case tables are sealed tables, at most four bytes deep;
//   - the number of a class is not negative, its name is not empty and ends within 127 bytes;
//   - every case index is 0 or addresses a pair;
//   - the growth factor is finite, and no character grows by more when its case is converted, so a
//     buffer of that size is large enough even for a file that lies about it.
// Anything else is refused with VEL_EBADFILE. Classes and pairs grow as they arrive; the work is
// linear in the length of the file.
#include "ext/memory.h"
#include "locale/readers.h"
#include "vels/errors.h"

namespace vel {
namespace {

constexpr int32_t class_name_size = 128;
constexpr double default_growth = 4.0; // one byte becomes four
constexpr double largest_growth = 255.0;

bool read_class(section &in, host_array<locale_class> &classes) {
    int32_t number;
    if (!in.count(&number)) return false;
    vel_skip_space(in.stream);
    char name[class_name_size];
    vel_read_token(name, sizeof name, in.stream);
    size_t length = strlen(name);
    int32_t next = in.stream.get();
    in.stream.unget(next);
    if (!in.require(length > 0 && is_space(next))) return false;
    vel_skip_space(in.stream);
    char *copy = vel_alloc_array<char>(length + 1);
    if (!copy) return in.refuse(VEL_ENOMEM);
    memcpy(copy, name, length + 1);
    if (classes.push({number, copy})) return true;
    vel_free(copy);
    return in.refuse(VEL_ENOMEM);
}

bool read_classes(section &in, ctype_category &ctype) {
    int32_t count;
    if (!in.count(&count)) return false;
    host_array<locale_class> classes;
    bool read = true;
    for (int32_t i = 0; read && i < count; ++i) read = read_class(in, classes);
    ctype.class_count = static_cast<int32_t>(classes.size());
    ctype.classes = classes.release();
    return read;
}

vel_wchar read_wide(text_reader &stream) {
    vel_skip_space(stream);
    return vel_read_hex(stream, 8);
}

// The white space after the number of pairs is left: when there are none, the line of the growth
// factor follows at once, and it may be empty.
bool read_pairs(section &in, ctype_category &ctype) {
    int32_t count;
    if (!in.count(&count)) return false;
    host_array<case_pair> pairs;
    pairs.push({0, 0});
    for (int32_t i = 0; i < count; ++i) {
        vel_wchar upper = read_wide(in.stream);
        vel_wchar lower = read_wide(in.stream);
        if (!in.require(true)) return false;
        if (!pairs.push({upper, lower})) break;
    }
    if (pairs.failed()) return in.refuse(VEL_ENOMEM);
    ctype.pair_count = count;
    ctype.pairs = pairs.release();
    return true;
}

int32_t skip_blanks(text_reader &stream) {
    int32_t c = stream.get();
    while (c == ' ' || c == '\t' || c == '\r') c = stream.get();
    return c;
}

// The line after the last pair. It is empty when the next section begins in its place, too.
bool read_growth(section &in, double *growth) {
    int32_t c = skip_blanks(in.stream);
    if (c == '\n') c = skip_blanks(in.stream);
    in.stream.unget(c);
    *growth = default_growth;
    if (c == '\n' || c == '#' || c == end_of_file) return true;
    *growth = vel_read_float(in.stream);
    return in.require(*growth > 0 && *growth <= largest_growth);
}

// Walks the distinct rows of the case table once.
class case_check {
public:
    case_check(const ctype_category &ctype, unsigned char *seen)
        : ctype_(ctype), table_(*ctype.cases), seen_(seen) {}

    // False when an index addresses no pair or a pair no character. Otherwise `growth` is the
    // largest ratio of bytes.
    bool walk(double *growth) {
        growth_ = 1.0;
        bool good = walk_row(0, 0);
        *growth = growth_;
        return good;
    }

private:
    bool walk_row(uint32_t row, int32_t depth) {
        for (uint32_t i = 0; i < table_.width[depth]; ++i) {
            uint32_t cell = table_.cells()[row + i];
            if (is_end(cell) && !check(cell_value(cell), depth + 1)) return false;
            bool deeper = is_more(cell) && depth + 1 < max_character_bytes;
            if (!deeper || seen_[next_row(cell)]) continue;
            seen_[next_row(cell)] = 1;
            if (!walk_row(next_row(cell), depth + 1)) return false;
        }
        return true;
    }

    bool check(int32_t index, int32_t bytes) {
        if (index == 0) return true;
        if (index > ctype_.pair_count) return false;
        const case_pair &pair = ctype_.pairs[index];
        return measure(pair.upper, bytes) && measure(pair.lower, bytes);
    }
    // False for a value without a character: string mapping adds what its encoding gives to the
    // output position, and -1 would lead out of the buffer.
    bool measure(vel_wchar mapped, int32_t bytes) {
        if (mapped == 0) return true;
        if (!is_end(ctype_.characters->find_code(mapped))) return false;
        double ratio = ctype_.characters->code_bytes(mapped) / static_cast<double>(bytes);
        if (ratio > growth_) growth_ = ratio;
        return true;
    }

    const ctype_category &ctype_;
    const sealed_table &table_;
    unsigned char *seen_; // by row offset
    double growth_ = 1.0;
};

bool check_cases(section &in, vel_locale *locale) {
    const ctype_category &ctype = locale->ctype;
    // Without characters nothing is mapped; that there are none is told when the next category is
    // initialised.
    if (ctype.characters->empty()) {
        memset(ctype.pairs, 0, (static_cast<size_t>(ctype.pair_count) + 1) * sizeof *ctype.pairs);
    }
    size_t offsets = ctype.cases->cell_count + 1u; // a row without cells may begin at the very end
    auto seen = make_host_array<unsigned char>(offsets);
    if (!seen) return in.refuse(VEL_ENOMEM);
    memset(seen.get(), 0, offsets);
    double growth;
    if (!in.require(case_check(ctype, seen.get()).walk(&growth))) return false;
    if (growth > locale->case_growth) locale->case_growth = growth;
    return true;
}

} // namespace

bool read_ctype(section &in, vel_locale *locale) {
    ctype_category &ctype = locale->ctype;
    return in.table(ctype.characters) && read_classes(in, ctype) && in.table(ctype.cases) &&
           read_pairs(in, ctype) && read_growth(in, &locale->case_growth) &&
           check_cases(in, locale);
}

} // namespace vel
