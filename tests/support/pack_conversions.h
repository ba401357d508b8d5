// Conversions of the data pack.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "support/utf8_text.h"
#include "vels/convert.h"

namespace vel_test {

struct converted {
    int32_t error; // 0 when all of the text was converted
    size_t used;   // bytes of the text
    std::string output;
    bool substituted;

    bool is_exact() const { return error == 0 && !substituted; }
    bool operator==(const converted &) const = default;
};

class converter {
public:
    // Not open when the pack does not hold it.
    explicit converter(const std::string &file_name) {
        vel_cv *opened = nullptr;
        const bool failed = vel_iconv_open1(&opened, file_name.c_str()) != 0;
        cv_.reset(opened);
        if (failed) cv_.reset();
    }
    explicit operator bool() const { return cv_ != nullptr; }

    // Without a state the text is complete.
    converted convert(std::string_view text, size_t room, vel_cv_state *state = nullptr) const {
        converted result{0, 0, std::string(room, '\0'), false};
        const auto *in = reinterpret_cast<const unsigned char *>(text.data()), *start = in;
        auto *out = reinterpret_cast<unsigned char *>(result.output.data());
        int32_t left = static_cast<int32_t>(text.size()), space = static_cast<int32_t>(room);
        int32_t substituted;
        if (vel_cv_mconv(cv_.get(), state, &in, &left, &out, &space, &substituted) != 0)
            result.error = *reinterpret_cast<const int32_t *>(cv_.get());
        result.used = static_cast<size_t>(in - start);
        result.output.resize(room - static_cast<size_t>(space));
        result.substituted = substituted != 0;
        return result;
    }
    converted convert(std::string_view text) const { return convert(text, 6 * text.size() + 8); }

private:
    struct unload {
        void operator()(vel_cv *cv) const { vel_cv_unload(cv); }
    };
    std::unique_ptr<vel_cv, unload> cv_;
};

// One object, by the names of its code sets.
struct pack_conversion {
    std::string from, to, file;

    bool is(std::string_view source, std::string_view target) const {
        return from == source && to == target;
    }
};

// Every object once, whatever names and numbers it has, rising by its code sets.
inline std::vector<pack_conversion> pack_conversions() {
    namespace fs = std::filesystem;
    unsetenv("VEL_PATH");
    setenv("CORVANEDIR", VELS_TEST_DATA_ROOT, 1);
    std::vector<pack_conversion> found;
    const fs::path folder = fs::path(VELS_TEST_DATA_ROOT) / "vels" / "cv9";
    if (!fs::exists(folder)) return found;
    for (const fs::directory_entry &file : fs::directory_iterator(folder)) {
        if (file.is_symlink()) continue;
        pack_conversion one{"", "", file.path().filename().string()};
        std::ifstream stream(file.path());
        for (std::string line; one.to.empty() && std::getline(stream, line);) {
            if (line.starts_with("FROM=")) one.from = line.substr(5);
            if (line.starts_with("TO=")) one.to = line.substr(3);
        }
        found.push_back(one);
    }
    std::ranges::sort(found, {}, [](const auto &one) { return std::tie(one.from, one.to); });
    return found;
}

// Not open when the pack does not hold it.
inline converter open_from(const std::vector<pack_conversion> &pack, std::string_view from,
                           std::string_view to) {
    const auto found =
        std::ranges::find_if(pack, [&](const auto &one) { return one.is(from, to); });
    return converter(found == pack.end() ? "none" : found->file);
}

// The forms of Unicode, of which too many sequences of bytes are characters to try them all.
inline bool is_unicode_form(std::string_view code_set) {
    return code_set.starts_with("UCS-") || code_set.starts_with("UTF-");
}

// What begins and what ends the shifted state of a code set, by its conversion to UTF-8; empty when
// it has none.
struct shift_marks {
    std::string_view begin, end;
};
inline shift_marks marks_of(const converter &to_utf8) {
    for (const shift_marks &marks : {shift_marks{"\x0E", "\x0F"}, shift_marks{"~{", "~}"}})
        if (to_utf8.convert(marks.begin) == converted{0, marks.begin.size(), "", false})
            return marks;
    return {};
}

} // namespace vel_test
