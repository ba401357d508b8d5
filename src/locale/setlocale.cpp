#include <cstring>

#include "ext/error.h"
#include "ext/memory.h"
#include "locale/category.h"
#include "locale/select.h"
#include "record/error_record.h"
#include "vels/locale.h"

namespace vel {
namespace {

// Holds every report: six names of variables and files, and the signs between them.
constexpr size_t report_size = 311;

class report {
public:
    explicit report(char *text) : end_(text) { *end_ = '\0'; }

    report &add(const char *text) {
        size_t length = strlen(text);
        memcpy(end_, text, length + 1);
        end_ += length;
        return *this;
    }

private:
    char *end_;
};

void write_report(const vel_locale *locale, int32_t category, char *text) {
    report out(text);
    if (category != VEL_ALL) {
        out.add(locale->file_names[find_category(category)]);
        return;
    }
    for (int32_t i = 0; i < category_count; ++i) {
        out.add(categories[i].variable).add(" = ").add(locale->file_names[i]).add(" ; ");
    }
}

} // namespace
} // namespace vel

char *vel_setlocale_4(vel_locale *locale, int32_t category, const char *specification) {
    if (!locale || vel::is_error_record(locale)) return nullptr;
    vel::host_ptr<char> text = vel::make_host_array<char>(vel::report_size);
    if (!text) return vel::fail_null(locale, VEL_ENOMEM);
    if (category != VEL_ALL && vel::find_category(category) < 0) {
        return vel::fail_null(locale, VEL_EBADLEN);
    }
    if (specification && !vel::set_categories(locale, category, specification, nullptr)) {
        return nullptr;
    }
    vel::write_report(locale, category, text.get());
    return text.release();
}
