// ICU. Its wide form is UTF-16.
#include "converting.h"
#include "library.h"
#include "ordering.h"
#include "scratch.h"
#include "walk.h"

#include <stdexcept>

#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ucol.h>
#include <unicode/udat.h>
#include <unicode/unum.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace bench {
namespace {

constexpr int32_t bytes_of_room = scratch_bytes;
constexpr int32_t units_of_room = scratch_bytes / sizeof(UChar);

using utf16_ptr = std::shared_ptr<const std::u16string>;

utf16_ptr utf16_form(const sample &in) {
    auto units = std::make_shared<std::u16string>();
    for (char32_t c : in.code_points) {
        if (c > 0xFFFF)
            *units += {U16_LEAD(c), U16_TRAIL(c)};
        else
            *units += static_cast<char16_t>(c);
    }
    return units;
}

std::u16string utf16_form_of(const std::string &text) {
    std::u16string units(text.size(), u'\0');
    UErrorCode error = U_ZERO_ERROR;
    int32_t count = 0;
    u_strFromUTF8(units.data(), static_cast<int32_t>(units.size()), &count, text.data(),
                  static_cast<int32_t>(text.size()), &error);
    units.resize(static_cast<size_t>(count));
    return units;
}

std::string separated(const UChar *units, int64_t count) {
    std::string out;
    for (int64_t i = 0; i < count;) {
        UChar32 c;
        U16_NEXT(units, i, count, c);
        append_utf8(out, static_cast<char32_t>(c));
        out += separator;
    }
    return out;
}

std::shared_ptr<UConverter> converter_for(const sample &in) {
    UErrorCode error = U_ZERO_ERROR;
    std::shared_ptr<UConverter> made(ucnv_open(name_of(in.set), &error), ucnv_close);
    if (U_FAILURE(error)) throw std::runtime_error("ICU lacks a converter");
    return made;
}

int32_t checked(int32_t count, UErrorCode error) {
    return U_FAILURE(error) ? -1 : count;
}

call decode_legacy(const sample_ptr &in) {
    auto *out = scratch_for<UChar>();
    auto converter = converter_for(*in);
    auto size = static_cast<int32_t>(in->text.size());
    return {[=] {
                UErrorCode error = U_ZERO_ERROR;
                int32_t n = ucnv_toUChars(converter.get(), out, units_of_room, in->text.data(),
                                          size, &error);
                return checked(n, error);
            },
            [=](int64_t count) { return separated(out, count); }};
}

call decode(const sample_ptr &in) {
    if (in->set != code_set::utf8) return decode_legacy(in);
    auto *out = scratch_for<UChar>();
    auto size = static_cast<int32_t>(in->text.size());
    return {[=] {
                UErrorCode error = U_ZERO_ERROR;
                int32_t n = 0;
                u_strFromUTF8(out, units_of_room, &n, in->text.data(), size, &error);
                return checked(n, error);
            },
            [=](int64_t count) { return separated(out, count); }};
}

call encode_legacy(const sample_ptr &in) {
    auto *out = scratch_for<char>();
    auto converter = converter_for(*in);
    utf16_ptr units = utf16_form(*in);
    auto size = static_cast<int32_t>(units->size());
    return {[=] {
                UErrorCode error = U_ZERO_ERROR;
                int32_t n = ucnv_fromUChars(converter.get(), out, bytes_of_room, units->data(),
                                            size, &error);
                return checked(n, error);
            },
            [=](int64_t count) { return bytes_written(out, count); }};
}

call encode(const sample_ptr &in) {
    if (in->set != code_set::utf8) return encode_legacy(in);
    auto *out = scratch_for<char>();
    utf16_ptr units = utf16_form(*in);
    auto size = static_cast<int32_t>(units->size());
    return {[=] {
                UErrorCode error = U_ZERO_ERROR;
                int32_t n = 0;
                u_strToUTF8(out, bytes_of_room, &n, units->data(), size, &error);
                return checked(n, error);
            },
            [=](int64_t count) { return bytes_written(out, count); }};
}

// Counts UTF-16 units, so it takes part where the text has no others.
call count(const sample_ptr &in) {
    if (utf16_form(*in)->size() != in->characters.size()) return {};
    auto size = static_cast<int32_t>(in->text.size());
    return {[=] {
                UErrorCode error = U_ZERO_ERROR;
                int32_t n = 0;
                u_strFromUTF8(nullptr, 0, &n, in->text.data(), size, &error);
                return error == U_BUFFER_OVERFLOW_ERROR ? n : -1;
            },
            [](int64_t counted) { return std::to_string(counted); }};
}

// A macro, not a call.
call value(const sample_ptr &in) {
    if (in->set != code_set::utf8) return {};
    auto step = [](const char *at, size_t left, UChar32 &value) {
        size_t used = 0;
        U8_NEXT(at, used, left, value);
        return used;
    };
    return walking_values<UChar32>(in, code_set::utf8, step, append_utf8);
}

call alpha(const sample_ptr &in) {
    return testing(code_points_of(in), [](char32_t value, size_t) {
        return u_isalpha(static_cast<UChar32>(value)) != 0;
    });
}

call five_classes(const sample_ptr &in) {
    static constexpr uint32_t masks[class_count] = {U_GC_L_MASK, U_GC_LU_MASK, U_GC_ND_MASK,
                                                    U_GC_Z_MASK, U_GC_P_MASK | U_GC_S_MASK};
    return testing(code_points_of(in), [](char32_t value, size_t i) {
        uint32_t bit = U_MASK(u_charType(static_cast<UChar32>(value)));
        return (bit & masks[i % class_count]) != 0;
    });
}

call upper_text(const sample_ptr &in) {
    UErrorCode error = U_ZERO_ERROR;
    std::shared_ptr<UCaseMap> map(ucasemap_open("", 0, &error), ucasemap_close);
    if (U_FAILURE(error)) throw std::runtime_error("ICU opens no case map");
    auto *out = scratch_for<char>();
    auto size = static_cast<int32_t>(in->text.size());
    return {[=] {
                UErrorCode failure = U_ZERO_ERROR;
                int32_t n = ucasemap_utf8ToUpper(map.get(), out, bytes_of_room, in->text.data(),
                                                 size, &failure);
                return checked(n, failure);
            },
            [=](int64_t count) { return bytes_written(out, count); }};
}

call upper_wide(const sample_ptr &in) {
    auto *out = scratch_for<UChar>();
    utf16_ptr units = utf16_form(*in);
    auto size = static_cast<int32_t>(units->size());
    return {[=] {
                UErrorCode error = U_ZERO_ERROR;
                int32_t n = u_strToUpper(out, units_of_room, units->data(), size, "", &error);
                return checked(n, error);
            },
            [=](int64_t count) { return separated(out, count); }};
}

// Compares UTF-8 but writes keys of UTF-16 alone, which it is given. In the strength that it has
// unless told otherwise: three levels, and no punctuation ignored.
ordering order(const word_list_ptr &list) {
    constexpr const char *names[] = {"en", "de", "ru", "ja", "en"};
    UErrorCode error = U_ZERO_ERROR;
    std::shared_ptr<UCollator> rules(ucol_open(names[static_cast<int>(list->spoken)], &error),
                                     ucol_close);
    if (U_FAILURE(error)) throw std::runtime_error("ICU opens no collator");
    std::vector<std::string_view> texts(list->words.begin(), list->words.end());
    ordering made = comparing(list, texts, [=](std::string_view a, std::string_view b) {
        UErrorCode failure = U_ZERO_ERROR;
        return static_cast<int>(ucol_strcollUTF8(rules.get(), a.data(),
                                                 static_cast<int32_t>(a.size()), b.data(),
                                                 static_cast<int32_t>(b.size()), &failure));
    });
    std::vector<std::u16string> units;
    for (const std::string &word : list->words) units.push_back(utf16_form_of(word));
    add_keys(made, list, units, [=](const std::u16string &text, char *out, int room) {
        return ucol_getSortKey(rules.get(), text.data(), static_cast<int32_t>(text.size()),
                               reinterpret_cast<uint8_t *>(out), room);
    });
    return made;
}

// Together they know what a locale of the others knows.
struct services {
    UCollator *order;
    UNumberFormat *numbers;
    UDateFormat *dates;
};

void *open(const std::string &name) {
    UErrorCode error = U_ZERO_ERROR;
    auto *made = new services;
    made->order = ucol_open(name.c_str(), &error);
    made->numbers = unum_open(UNUM_DECIMAL, nullptr, 0, name.c_str(), nullptr, &error);
    made->dates = udat_open(UDAT_FULL, UDAT_FULL, name.c_str(), nullptr, 0, nullptr, 0, &error);
    if (U_FAILURE(error)) throw std::runtime_error("ICU does not open " + name);
    return made;
}

void close(void *locale) {
    auto *made = static_cast<services *>(locale);
    ucol_close(made->order);
    unum_close(made->numbers);
    udat_close(made->dates);
    delete made;
}

// Two converters with a UTF-16 text between them; from and to UTF-8 there are short cuts.
struct converter_pair {
    UConverter *from, *to;
};

void close_converter(void *converter) {
    auto *pair = static_cast<converter_pair *>(converter);
    ucnv_close(pair->from);
    ucnv_close(pair->to);
    delete pair;
}

void *open_converter(const conversion &of) {
    UErrorCode error = U_ZERO_ERROR;
    auto *pair = new converter_pair;
    pair->from = ucnv_open(of.from.peers, &error);
    pair->to = ucnv_open(of.to.peers, &error);
    if (U_SUCCESS(error)) return pair;
    close_converter(pair);
    return nullptr;
}

call convert(const conversion_ptr &in) {
    std::shared_ptr<void> converter(open_converter(*in), close_converter);
    auto *pair = static_cast<converter_pair *>(converter.get());
    return converting(in, [=, owner = converter](const std::string &text, char *out, size_t room) {
        UErrorCode error = U_ZERO_ERROR;
        const char *read = text.data();
        char *write = out;
        ucnv_convertEx(pair->to, pair->from, &write, out + room, &read, read + text.size(), nullptr,
                       nullptr, nullptr, nullptr, true, true, &error);
        return U_FAILURE(error) ? -1 : write - out;
    });
}

} // namespace

library icu() {
    return {.name = "ICU",
            .decode = decode,
            .encode = encode,
            .count = count,
            .value = value,
            .alpha = alpha,
            .five_classes = five_classes,
            .upper_text = upper_text,
            .upper_wide = upper_wide,
            .upper_sharp_s = U"SS",
            .order = order,
            .convert = convert,
            .open_converter = open_converter,
            .close_converter = close_converter,
            .open = open,
            .close = close};
}

} // namespace bench
