// Loading and releasing shared locales.
#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "ext/diag.h"
#include "ext/error.h"
#include "locale/create.h"
#include "locale/select.h"
#include "locale/shared.h"
#include "record/error_record.h"
#include "vels/locale.h"
#include "vels/names.h"

namespace vel {
namespace {

// A specification as given, and the name under which the locale is shared.
class load_name {
public:
    load_name(const char *specification, int32_t length) {
        size_t given = !specification || length < -1 ? 0
                       : length == -1                ? strlen(specification)
                                                     : bounded_length(specification, length);
        allowed_ = length >= -1 && given <= max_specification;
        size_t kept = allowed_ ? given : 0;
        if (kept > 0) memcpy(specification_, specification, kept);
        specification_[kept] = '\0';
        bool named =
            vel_lc_spec2lc_fname(nullptr, specification_, file_name_, nullptr, nullptr) == 0;
        text_ = named ? file_name_ : specification_;
    }
    load_name(const load_name &) = delete;
    load_name &operator=(const load_name &) = delete;

    bool allowed() const { return allowed_; }
    const char *text() const { return text_; }

private:
    static size_t bounded_length(const char *text, int32_t limit) {
        const void *end = memchr(text, '\0', static_cast<size_t>(limit));
        return end ? static_cast<size_t>(static_cast<const char *>(end) - text)
                   : static_cast<size_t>(limit);
    }

    char specification_[max_specification + 1];
    // Each of up to six entries may grow by the digits and the suffix of a file name.
    char file_name_[2 * max_specification];
    const char *text_;
    bool allowed_;
};

void record_freeing(const vel_locale *locale) {
    char line[64];
    snprintf(line, sizeof line, "freeing locale 0x%" PRIxPTR "\n",
             reinterpret_cast<uintptr_t>(locale));
    vel_diag(line);
}

bool load_and_share(vel_locale *locale, const load_name &name, const char *directory) {
    if (!name.allowed()) {
        set_error(locale, VEL_EBADLEN);
        return false;
    }
    if (!set_categories(locale, VEL_ALL, name.text(), directory)) return false;
    if (share(locale, name.text())) return true;
    set_error(locale, VEL_ENOMEM);
    return false;
}

} // namespace
} // namespace vel

int32_t vel_lc_load(vel_locale **locale, const char *specification, int32_t length,
                    const char *directory) {
    if (!locale) return -1;
    vel::load_name name(specification, length);
    if (name.allowed()) {
        *locale = vel::take_shared(name.text());
        if (*locale) return 0;
    }
    if (vel_create_null_locale_4(locale) != 0) return -1;
    return vel::load_and_share(*locale, name, directory) ? 0 : -1;
}

void vel_lc_unload(vel_locale *locale) {
    if (!locale || vel::is_error_record(locale)) return;
    if (vel::give_back(locale) == vel::sharing::held) return;
    vel::record_freeing(locale);
    vel::destroy_record(locale);
}

void vel_free_nonshared_loc(vel_locale *locale) {
    if (!locale || vel::is_error_record(locale)) return;
    if (vel::give_back(locale) == vel::sharing::held) return;
    vel::destroy_record_alone(locale);
}
