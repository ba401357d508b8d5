#include "locale/select.h"

#include <cstring>

#include "ext/data_file.h"
#include "ext/environment.h"
#include "ext/error.h"
#include "ext/host_stream.h"
#include "ext/memory.h"
#include "ext/version.h"
#include "locale/category.h"
#include "locale/complete.h"
#include "locale/object.h"

namespace vel {
namespace {

constexpr char default_file[] = "default.lco";
constexpr char native_name[] = "native";
constexpr size_t max_named_file = 32; // of a name given for one category

// The file that a specification names for a category.
class chosen_name {
public:
    chosen_name(const char *specification, const char *variable) {
        if (!*specification) {
            text_ = from_environment(variable);
        } else if (const char *value = value_of(specification, variable)) {
            size_t length = strcspn(value, blanks);
            if (length > max_named_file) length = max_named_file;
            memcpy(buffer_, value, length);
            buffer_[length] = '\0';
            text_ = buffer_;
        } else {
            text_ = specification;
        }
    }
    chosen_name(const chosen_name &) = delete;
    chosen_name &operator=(const chosen_name &) = delete;

    const char *text() const { return text_; }
    bool is_native() const { return strcmp(text_, native_name) == 0; }

private:
    static constexpr char blanks[] = " \t";

    static const char *value_of(const char *specification, const char *variable) {
        const char *found = strstr(specification, variable);
        const char *equals = found ? strchr(found, '=') : nullptr;
        return equals ? equals + 1 + strspn(equals + 1, blanks) : nullptr;
    }

    static const char *from_environment(const char *variable) {
        for (const char *name : {"VEL_ALL", variable, "VEL_LANG"}) {
            if (const char *value = vel_getenv_nonempty(name)) return value;
        }
        return default_file;
    }

    const char *text_;
    char buffer_[max_named_file + 1];
};

// "native" is a file of its own in a directory, and the default one elsewhere.
void *open_chosen(vel_locale *locale, const chosen_name &name, const char *directory) {
    if (directory) return vel_open_in(locale, directory, name.text());
    const char *file = name.is_native() ? default_file : name.text();
    return vel_find_data_file(locale, file, "lc", VEL_LC_VERSION);
}

void set_file_name(vel_locale *locale, int32_t index, const char *name) {
    size_t length = strlen(name);
    if (length >= file_name_size) length = file_name_size - 1;
    memcpy(locale->file_names[index], name, length);
    locale->file_names[index][length] = '\0';
}

bool set_category(vel_locale *locale, int32_t index, const char *specification,
                  const char *directory) {
    chosen_name name(specification, categories[index].variable);
    host_stream stream(open_chosen(locale, name, directory));
    if (!stream) return false;
    free_category(locale, index);
    if (!read_category(stream.get(), locale, index)) return false;
    set_file_name(locale, index, name.text());
    return true;
}

bool set_each(vel_locale *locale, int32_t category, const char *specification,
              const char *directory) {
    int32_t first = category == VEL_ALL ? 0 : find_category(category);
    int32_t last = category == VEL_ALL ? category_count - 1 : first;
    for (int32_t i = first; i <= last; ++i) {
        if (!set_category(locale, i, specification, directory)) return false;
    }
    return complete_locale(locale) == 0;
}

bool is_allowed(int32_t category, const char *specification) {
    return strlen(specification) <= max_specification &&
           (category == VEL_ALL || find_category(category) >= 0);
}

} // namespace

// The cell is cleared for the time of the call: a number of some earlier operation must not hide
// that a failure has none of its own. Success leaves it as it was.
bool set_categories(vel_locale *locale, int32_t category, const char *specification,
                    const char *directory) {
    if (!is_allowed(category, specification)) {
        set_error(locale, VEL_EBADLEN);
        return false;
    }
    int32_t earlier = get_error(locale);
    set_error(locale, 0);
    if (set_each(locale, category, specification, directory)) {
        set_error(locale, earlier);
        return true;
    }
    if (get_error(locale) == 0) set_error(locale, VEL_ELOCALE);
    return false;
}

} // namespace vel
