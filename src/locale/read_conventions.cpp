// The NUMERIC, MONETARY and MESSAGES sections.
//
// Contract. A category that these readers accept keeps these promises to later code: no string is
// null, and decoding one always stops inside its block (a string that is not text of the code set
// is refused when the category is initialised); a grouping holds at most 15 sizes, all above 0 but
// for the last; the monetary numbers are 0 to 127. A monetary number outside that is taken as not
// given. The work is linear in the length of the file.
#include "locale/readers.h"
#include "record/texts.h"

namespace vel {
namespace {

// The strings of a category from `first` on, up to but not including `last`.
template <typename Category, size_t N>
bool read_texts(section &in, Category &category, locale_text Category::*const (&texts)[N],
                size_t first, size_t last) {
    for (size_t i = first; i < last; ++i) {
        if (!in.text(category.*texts[i])) return false;
    }
    return true;
}

bool read_number(section &in, int32_t *number) {
    if (!in.integer(number)) return false;
    if (*number < 0 || *number > not_given) *number = not_given;
    return true;
}

} // namespace

bool read_numeric(section &in, vel_locale *locale) {
    numeric_category &numeric = locale->conventions.numeric;
    return read_texts(in, numeric, numeric_texts, 0, 2) && in.grouping(numeric.grouping) &&
           read_texts(in, numeric, numeric_texts, 2, std::size(numeric_texts));
}

bool read_monetary(section &in, vel_locale *locale) {
    monetary_category &monetary = locale->conventions.monetary;
    if (!read_texts(in, monetary, monetary_texts, 0, 4) || !in.grouping(monetary.grouping) ||
        !read_texts(in, monetary, monetary_texts, 4, std::size(monetary_texts))) {
        return false;
    }
    for (auto number : monetary_numbers) {
        if (!read_number(in, &(monetary.*number))) return false;
    }
    return true;
}

bool read_messages(section &in, vel_locale *locale) {
    for (int32_t i = 0; i < message_count; ++i) {
        if (!in.text(locale->conventions.messages.texts[i])) return false;
    }
    return true;
}

} // namespace vel
