#include "converting.h"
#include "library.h"
#include "ordering.h"
#include "our_locale.h"
#include "scratch.h"
#include "walk.h"

#include "vels/collate.h"
#include "vels/convert.h"
#include "vels/ctype.h"
#include "vels/locale.h"
#include "vels/multibyte.h"

namespace bench {
namespace {

vel_locale *locale_for(language spoken, code_set set) {
    constexpr const char *names[] = {"en_us", "de_de", "ru_ru", "ja_jp", "en_us"};
    return our_locale(names[static_cast<int>(spoken)], set);
}

vel_locale *locale_for(const sample &in) {
    return locale_for(in.spoken, in.set);
}

std::shared_ptr<std::vector<vel_wchar>> wide_form(const sample &in) {
    auto values = std::make_shared<std::vector<vel_wchar>>();
    for (const std::string &character : in.characters) values->push_back(packed(character));
    return values;
}

std::shared_ptr<std::vector<vel_wchar>> terminated_wide_form(const sample &in) {
    auto values = wide_form(in);
    values->push_back(0);
    return values;
}

std::string separated(const vel_wchar *values, int64_t count, code_set set) {
    std::string out;
    for (int64_t i = 0; i < count; ++i) {
        append_packed(out, values[i]);
        out += separator;
    }
    return to_utf8(out, set);
}

call decode(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    auto *out = scratch_for<vel_wchar>();
    auto room = static_cast<int32_t>(in->characters.size() + 1);
    return {[=] { return vel_im_mbstowcs(locale, out, in->text.c_str(), room); },
            [=](int64_t count) { return separated(out, count, in->set); }};
}

call encode(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    auto *out = scratch_for<char>();
    auto values = terminated_wide_form(*in);
    auto room = static_cast<int32_t>(in->text.size() + 1);
    return {[=] { return vel_full_wcstombs(locale, out, values->data(), room); },
            [=](int64_t count) { return bytes_written(out, count); }};
}

call count(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    return {[=] { return vel_im_mbslen(locale, in->text.c_str()); },
            [](int64_t counted) { return std::to_string(counted); }};
}

call length(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    return walking_lengths(in, [=](const char *at, size_t left) {
        return vel_full_mblen(locale, at, static_cast<int32_t>(left));
    });
}

call value(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    auto step = [=](const char *at, size_t left, vel_wchar &value) {
        return vel_full_mbtowc(locale, &value, at, static_cast<int32_t>(left));
    };
    return walking_values<vel_wchar>(in, in->set, step, append_packed);
}

call next(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    return walking_lengths(
        in, [=](const char *at, size_t) { return vel_full_mbsnext(locale, at) - at; });
}

call alpha(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    return testing(wide_form(*in), [=](vel_wchar value, size_t) {
        return vel_im_iswctype(locale, value, VEL_CLASS_ALPHA) != 0;
    });
}

call five_classes(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    static constexpr int32_t masks[class_count] = {
        VEL_CLASS_ALPHA, VEL_CLASS_UPPER, VEL_CLASS_DIGIT, VEL_CLASS_SPACE, VEL_CLASS_PUNCT};
    return testing(wide_form(*in), [=](vel_wchar value, size_t i) {
        return vel_im_iswctype(locale, value, masks[i % class_count]) != 0;
    });
}

call upper_text(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    auto *out = scratch_for<char>();
    return {[=] { return vel_tombsupper(locale, out, in->text.c_str()); },
            [=](int64_t count) { return bytes_written(out, count); }};
}

call upper_wide(const sample_ptr &in) {
    vel_locale *locale = locale_for(*in);
    auto *out = scratch_for<vel_wchar>();
    auto values = terminated_wide_form(*in);
    auto size = static_cast<int64_t>(in->characters.size());
    return {[=] { return vel_towcsupper(locale, out, values->data()) == 0 ? size : -1; },
            [=](int64_t count) { return separated(out, count, in->set); }};
}

ordering order(const word_list_ptr &list) {
    vel_locale *locale = locale_for(list->spoken, code_set::utf8);
    auto texts = terminated(*list);
    ordering made = comparing(
        list, texts, [=](const char *a, const char *b) { return vel_im_mbscoll(locale, a, b); });
    add_keys(made, list, texts, [=](const char *text, char *out, int room) {
        return vel_full_mbsxfrm(locale, out, text, room);
    });
    return made;
}

void *open(const std::string &name) {
    return load_locale(name, code_set::utf8);
}

void close(void *locale) {
    vel_lc_unload(static_cast<vel_locale *>(locale));
}

std::string specification(const char *set) {
    return std::string("en_us.") + set;
}

void close_converter(void *converter) {
    vel_cv_unload(static_cast<vel_cv *>(converter));
}

void *open_converter(const conversion &of) {
    vel_cv *opened = nullptr;
    int32_t result = vel_cv_load(&opened, specification(of.to.ours).c_str(),
                                 specification(of.from.ours).c_str(), nullptr, nullptr);
    if (result == 1) return opened;
    close_converter(opened);
    return nullptr;
}

call convert(const conversion_ptr &in) {
    std::shared_ptr<void> converter(open_converter(*in), close_converter);
    auto *opened = static_cast<vel_cv *>(converter.get());
    return converting(in, [=, owner = converter](const std::string &text, char *out, size_t room) {
        auto *read = reinterpret_cast<const unsigned char *>(text.data());
        auto *write = reinterpret_cast<unsigned char *>(out);
        auto left = static_cast<int32_t>(text.size());
        auto space = static_cast<int32_t>(room);
        int32_t substituted = 0;
        int32_t failed = vel_miconv(opened, &read, &left, &write, &space, &substituted);
        return failed || substituted ? -1 : static_cast<int32_t>(room) - space;
    });
}

} // namespace

library ours() {
    return {.name = "vels",
            .decode = decode,
            .encode = encode,
            .count = count,
            .length = length,
            .value = value,
            .next = next,
            .alpha = alpha,
            .five_classes = five_classes,
            .upper_text = upper_text,
            .upper_wide = upper_wide,
            .order = order,
            .convert = convert,
            .open_converter = open_converter,
            .close_converter = close_converter,
            .prepare_to_open = cache_code_set_names,
            .open = open,
            .close = close};
}

} // namespace bench
