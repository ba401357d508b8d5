// Rows about display columns. The libraries know different widths for marks and emoji, so the texts
// are those where all of them agree.
#include "host_locales.h"
#include "library.h"
#include "our_locale.h"
#include "row.h"

#include <cstdlib>
#include <cwchar>
#include <stdexcept>

#ifdef BENCH_WITH_UNISTRING
#include <uniwidth.h>
#endif
#ifdef BENCH_WITH_UTF8PROC
#include <utf8proc.h>
#endif

#include "vels/width.h"

namespace bench {
namespace {

constexpr std::size_t mib = 1 << 20;
constexpr std::size_t cached = 16 << 10;

enum class form { wide, text };

struct width_row {
    const char *name;
    form given;
    language spoken;
    const char *locale;
    std::size_t bytes;
    aim wanted;
};

using enum language;

const width_row width_rows_table[] = {
    {"columns of wide text, ASCII", form::wide, english, "en_US", cached, aim::times_host(1.5)},
    {"columns of wide text, Russian", form::wide, russian, "ru_RU", cached, aim::times_host(1.5)},
    {"columns of wide text, Japanese", form::wide, japanese, "ja_JP", cached, aim::times_host(1.5)},
    {"columns of UTF-8, ASCII", form::text, english, "en_US", mib, aim::times_host(1.5)},
    {"columns of UTF-8, Russian", form::text, russian, "ru_RU", mib, aim::times_host(1.5)},
    {"columns of UTF-8, Japanese", form::text, japanese, "ja_JP", mib, aim::times_host(1.5)},
};

// Text without line ends, which have no width.
sample_ptr printable_sample(const width_row &of) {
    auto in = std::make_shared<sample>(*make_sample(of.spoken, code_set::utf8, of.bytes));
    for (char &byte : in->text) {
        if (byte == '\n') byte = ' ';
    }
    for (std::string &character : in->characters) {
        if (character == "\n") character = " ";
    }
    for (char32_t &value : in->code_points) {
        if (value == '\n') value = ' ';
    }
    return in;
}

using work = std::function<std::int64_t()>;

work our_columns(const width_row &of, const sample_ptr &in) {
    vel_locale *locale = our_locale(of.locale, code_set::utf8);
    auto n = static_cast<std::int32_t>(in->characters.size());
    if (of.given == form::text) return [=] { return vel_mbswidth(locale, in->text.c_str(), n); };
    auto values = std::make_shared<std::vector<vel_wchar>>();
    for (const std::string &character : in->characters) values->push_back(packed(character));
    values->push_back(0);
    return [=] { return vel_wcswidth(locale, values->data(), n); };
}

// The host has no function for multibyte text: two passes.
work host_columns(const width_row &of, const sample_ptr &in) {
    locale_t locale = host_locale_for(*in);
    auto between = std::make_shared<std::wstring>(in->code_points.begin(), in->code_points.end());
    std::size_t n = in->code_points.size();
    bool is_wide = of.given == form::wide;
    return [=] {
        locale_t before = uselocale(locale);
        if (!is_wide) std::mbstowcs(between->data(), in->text.c_str(), n + 1);
        int columns = wcswidth(between->data(), n);
        uselocale(before);
        return columns;
    };
}

#ifdef BENCH_WITH_UNISTRING
work unistring_columns(const width_row &of, const sample_ptr &in) {
    if (of.given == form::wide) {
        return [=] {
            auto *values = reinterpret_cast<const std::uint32_t *>(in->code_points.data());
            return u32_width(values, in->code_points.size(), "UTF-8");
        };
    }
    return [=] {
        auto *bytes = reinterpret_cast<const std::uint8_t *>(in->text.data());
        return u8_width(bytes, in->text.size(), "UTF-8");
    };
}
#endif

#ifdef BENCH_WITH_UTF8PROC
work utf8proc_columns(const width_row &of, const sample_ptr &in) {
    if (of.given == form::wide) {
        return [=] {
            std::int64_t columns = 0;
            for (char32_t c : in->code_points)
                columns += utf8proc_charwidth(static_cast<utf8proc_int32_t>(c));
            return columns;
        };
    }
    return [=] {
        std::int64_t columns = 0;
        auto *at = reinterpret_cast<const utf8proc_uint8_t *>(in->text.data());
        auto left = static_cast<utf8proc_ssize_t>(in->text.size());
        for (utf8proc_ssize_t used; left > 0; at += used, left -= used) {
            utf8proc_int32_t value;
            used = utf8proc_iterate(at, left, &value);
            columns += utf8proc_charwidth(value);
        }
        return columns;
    };
}
#endif

struct measurer {
    const char *library;
    work (*make)(const width_row &of, const sample_ptr &in);
};
constexpr measurer measurers[] = {
    {"vels", our_columns},
    {"host", host_columns},
#ifdef BENCH_WITH_UNISTRING
    {"unistring", unistring_columns},
#endif
#ifdef BENCH_WITH_UTF8PROC
    {"utf8proc", utf8proc_columns},
#endif
};

prepared_row prepare(const width_row &of) {
    sample_ptr in = printable_sample(of);
    std::int64_t hosts = host_columns(of, in)();
    if (hosts <= 0) throw std::runtime_error(std::string(of.name) + ": the host fails");
    prepared_row ready{static_cast<double>(in->characters.size()), {}};
    for (const measurer &who : measurers) {
        work pass = who.make(of, in);
        if (std::int64_t columns = pass(); columns != hosts) {
            throw std::runtime_error(std::string(of.name) + ": " + who.library + " gives " +
                                     std::to_string(columns) + ", not " + std::to_string(hosts));
        }
        ready.contenders.push_back({who.library, pass, nullptr});
    }
    return ready;
}

} // namespace

std::vector<row> width_rows() {
    std::vector<row> rows;
    for (const width_row &of : width_rows_table)
        rows.push_back({of.name, unit::nanoseconds, of.wanted, [&of] { return prepare(of); }});
    return rows;
}

} // namespace bench
