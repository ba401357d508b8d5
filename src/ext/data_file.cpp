#include "ext/data_file.h"

#include <cstring>

#include "ext/diag.h"
#include "ext/environment.h"
#include "ext/error.h"
#include "ext/memory.h"
#include "ext/platform.h"

namespace vel {
namespace {

constexpr size_t max_root = 256;
constexpr char opened[] = "Opened: ";
constexpr char not_opened[] = "Could not open: ";

using opener = void *(*)(const char *path, const char *mode);

void *open_directly(const char *path, const char *mode) {
    return platform::open_file(path, mode);
}

void report(void *context, int32_t number) {
    if (context) set_error(context, number);
}

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool is_separator(char c) {
    return c == '\\' || c == '/';
}

bool is_absolute(const char *file) {
    return is_separator(file[0]) || (is_letter(file[0]) && file[1] == ':' && is_separator(file[2]));
}

// A path under construction, in one buffer that leaves room before it for the longer of the two
// messages: the message about a path is then the same bytes with a prefix.
class logged_path {
public:
    explicit logged_path(size_t length) : buffer_(prefix_room + length + 1) {
        if (buffer_) end_ = buffer_.data() + prefix_room;
    }
    explicit operator bool() { return static_cast<bool>(buffer_); }

    // Adds text. Data-file names are written with "\" and a directory prefix ends in 0xFF; here,
    // where the name becomes a path, both become the separator.
    logged_path &add(const char *text, size_t length) {
        for (size_t i = 0; i < length; ++i) {
            char c = text[i];
            *end_++ = c == '\\' || c == '\xFF' ? platform::separator : c;
        }
        *end_ = '\0';
        return *this;
    }
    logged_path &add(const char *text) { return add(text, strlen(text)); }
    // Adds text that is only recorded, as it stands.
    logged_path &add_verbatim(const char *text) {
        size_t size = strlen(text) + 1;
        memcpy(end_, text, size);
        end_ += size - 1;
        return *this;
    }

    void *open(opener open_path) {
        void *stream = open_path(path(), "r");
        stream ? log(opened, sizeof opened - 1) : log(not_opened, sizeof not_opened - 1);
        return stream;
    }
    void log_not_opened() { log(not_opened, sizeof not_opened - 1); }

private:
    static constexpr size_t prefix_room = sizeof not_opened - 1;

    char *path() { return buffer_.data() + prefix_room; }
    void log(const char *prefix, size_t length) {
        char *message = path() - length;
        memcpy(message, prefix, length);
        vel_diag(message);
    }

    stack_or_heap<char, 1024 + prefix_room> buffer_;
    char *end_ = nullptr;
};

void *out_of_memory(void *context) {
    report(context, VEL_ENOMEM);
    return nullptr;
}

void *open_reported(void *context, logged_path &path) {
    void *stream = path.open(_vel_ext_fopen);
    if (!stream) report(context, VEL_ENOFILE);
    return stream;
}

struct search {
    void *context;
    const char *file;
    opener open_path;

    void *not_found() const {
        logged_path path(strlen(file));
        if (!path) return out_of_memory(context);
        path.add_verbatim(file).log_not_opened();
        report(context, VEL_ENOFILE);
        return nullptr;
    }

    void *as_it_stands() const {
        logged_path path(strlen(file));
        if (!path) return out_of_memory(context);
        void *stream = path.add(file).open(open_path);
        return stream ? stream : not_found();
    }

    void *in_directories(const char *list) const {
        while (*list) {
            size_t length = strcspn(list, ";");
            if (length > 0) {
                logged_path path(length + 1 + strlen(file));
                if (!path) return out_of_memory(context);
                if (void *stream = path.add(list, length).add("\\").add(file).open(open_path)) {
                    return stream;
                }
            }
            list += length;
            if (*list == ';') ++list;
        }
        return not_found();
    }

    void *beneath_root(const char *root, const char *kind, const char *version) const {
        size_t longest = max_root + strlen(platform::default_root) + strlen(kind) +
                         strlen(version) + strlen(file) + sizeof "\\vels\\\\";
        for (const char *directory_version : {version, ""}) {
            logged_path path(longest);
            if (!path) return out_of_memory(context);
            root ? path.add(root).add("\\") : path.add(platform::default_root);
            path.add("vels\\").add(kind).add(directory_version).add("\\").add(file);
            if (void *stream = path.open(open_path)) return stream;
        }
        return not_found();
    }
};

void *find(const search &search, const char *kind, const char *version) {
    const char *root = vel_getenv_nonempty("CORVANEDIR");
    if (root && strlen(root) > max_root) {
        vel_diag("Environment variable CORVANEDIR cannot be greater than 256 characters");
        report(search.context, VEL_ENOFILE);
        return nullptr;
    }
    if (strchr(search.file, '\xFF')) return vel_open_logged(search.context, search.file);
    if (is_absolute(search.file)) return search.as_it_stands();
    if (const char *list = vel_getenv_nonempty("VEL_PATH")) return search.in_directories(list);
    return search.beneath_root(root, kind, version);
}

} // namespace

void *vel_find_data_file(void *context, const char *file, const char *kind, const char *version) {
    return find({context, file, _vel_ext_fopen}, kind, version);
}

void *vel_find_data_file_direct(void *context, const char *file, const char *kind,
                                const char *version) {
    return find({context, file, open_directly}, kind, version);
}

void *vel_open_logged(void *context, const char *path) {
    logged_path copy(strlen(path));
    return copy ? open_reported(context, copy.add(path)) : out_of_memory(context);
}

void *vel_open_in(void *context, const char *directory, const char *file) {
    logged_path path(strlen(directory) + 1 + strlen(file));
    return path ? open_reported(context, path.add(directory).add("\\").add(file))
                : out_of_memory(context);
}

} // namespace vel
