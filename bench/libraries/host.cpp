#include "converting.h"
#include "host_locales.h"
#include "library.h"
#include "ordering.h"
#include "scratch.h"
#include "walk.h"

#include <cwchar>
#include <cwctype>
#include <iconv.h>
#include <stdexcept>

namespace bench {
namespace {

call in_thread_locale(locale_t locale, const call &work) {
    auto pass = [=, run = work.pass] {
        thread_locale used(locale);
        return run();
    };
    auto result = [=, tell = work.result](std::int64_t count) {
        thread_locale used(locale);
        return tell(count);
    };
    return {pass, result};
}

std::shared_ptr<const std::u32string> terminated_wide_form(const sample_ptr &in) {
    static_assert(sizeof(wchar_t) == sizeof(char32_t));
    return code_points_of(in); // wide characters are code points here, and end with a zero
}

const wchar_t *as_wide(const std::u32string &text) {
    return reinterpret_cast<const wchar_t *>(text.c_str());
}

call decode(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    auto *out = scratch_for<wchar_t>();
    std::size_t room = in->characters.size() + 1;
    return {[=] {
                thread_locale used(locale);
                return static_cast<std::int64_t>(std::mbstowcs(out, in->text.c_str(), room));
            },
            [=](std::int64_t count) { return separated_code_points(out, count); }};
}

call encode(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    auto *out = scratch_for<char>();
    auto values = terminated_wide_form(in);
    std::size_t room = in->text.size() + 1;
    return {[=] {
                thread_locale used(locale);
                return static_cast<std::int64_t>(std::wcstombs(out, as_wide(*values), room));
            },
            [=](std::int64_t count) { return bytes_written(out, count); }};
}

call count(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    return {[=] {
                thread_locale used(locale);
                return static_cast<std::int64_t>(std::mbstowcs(nullptr, in->text.c_str(), 0));
            },
            [](std::int64_t counted) { return std::to_string(counted); }};
}

call length(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    call made = walking_lengths(in, [](const char *at, std::size_t left) {
        std::mbstate_t state{};
        return static_cast<std::int64_t>(std::mbrlen(at, left, &state));
    });
    return in_thread_locale(locale, made);
}

call value(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    auto step = [](const char *at, std::size_t left, wchar_t &value) {
        std::mbstate_t state{};
        return static_cast<std::int64_t>(std::mbrtowc(&value, at, left, &state));
    };
    call made = walking_values<wchar_t>(in, code_set::utf8, step, append_utf8);
    return in_thread_locale(locale, made);
}

call alpha(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    wctype_t alpha = wctype_l("alpha", locale);
    return testing(code_points_of(in), [=](char32_t value, std::size_t) {
        return iswctype_l(value, alpha, locale) != 0;
    });
}

call five_classes(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    auto classes = std::make_shared<std::vector<wctype_t>>();
    for (const char *name : {"alpha", "upper", "digit", "space", "punct"})
        classes->push_back(wctype_l(name, locale));
    return testing(code_points_of(in), [=](char32_t value, std::size_t i) {
        return iswctype_l(value, (*classes)[i % class_count], locale) != 0;
    });
}

// The host has no function for this: three passes.
call upper_text(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    auto *wide = scratch_for<wchar_t>(place::between);
    auto *out = scratch_for<char>();
    std::size_t room = in->text.size() + 1;
    return {[=] {
                thread_locale used(locale);
                std::size_t n = std::mbstowcs(wide, in->text.c_str(), room);
                for (std::size_t i = 0; i < n; ++i)
                    wide[i] =
                        static_cast<wchar_t>(towupper_l(static_cast<wint_t>(wide[i]), locale));
                return static_cast<std::int64_t>(std::wcstombs(out, wide, 2 * room));
            },
            [=](std::int64_t count) { return bytes_written(out, count); }};
}

call upper_wide(const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    auto *out = scratch_for<wint_t>();
    auto values = code_points_of(in);
    return {[=] {
                for (std::size_t i = 0; i < values->size(); ++i)
                    out[i] = towupper_l((*values)[i], locale);
                return static_cast<std::int64_t>(values->size());
            },
            [=](std::int64_t count) { return separated_code_points(out, count); }};
}

ordering order(const word_list_ptr &list) {
    locale_t locale = host_locale_for(list->spoken, code_set::utf8);
    auto texts = terminated(*list);
    ordering made = comparing(
        list, texts, [=](const char *a, const char *b) { return strcoll_l(a, b, locale); });
    add_keys(made, list, texts, [=](const char *text, char *out, int room) {
        return strxfrm_l(out, text, static_cast<std::size_t>(room), locale);
    });
    return made;
}

void *open(const std::string &name) {
    return newlocale(LC_ALL_MASK, host_locale_name(name, code_set::utf8).c_str(), nullptr);
}

void close(void *locale) {
    freelocale(static_cast<locale_t>(locale));
}

void *open_converter(const conversion &of) {
    iconv_t opened = iconv_open(of.to.peers, of.from.peers);
    return opened == reinterpret_cast<iconv_t>(-1) ? nullptr : opened;
}

void close_converter(void *converter) {
    iconv_close(static_cast<iconv_t>(converter));
}

call convert(const conversion_ptr &in) {
    std::shared_ptr<void> converter(open_converter(*in), close_converter);
    return converting(in, [=](const std::string &text, char *out, std::size_t room) {
        char *read = const_cast<char *>(text.data());
        std::size_t left = text.size();
        char *write = out;
        std::size_t failed = iconv(converter.get(), &read, &left, &write, &room);
        return failed ? -1 : write - out;
    });
}

} // namespace

library host() {
    return {.name = "host",
            .decode = decode,
            .encode = encode,
            .count = count,
            .length = length,
            .value = value,
            .next = length, // the nearest that there is
            .alpha = alpha,
            .five_classes = five_classes,
            .upper_text = upper_text,
            .upper_wide = upper_wide,
            .order = order,
            .convert = convert,
            .open_converter = open_converter,
            .close_converter = close_converter,
            .open = open,
            .close = close};
}

} // namespace bench
