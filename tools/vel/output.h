// Writing to a descriptor so that no failure goes unnoticed.
#pragma once

#include <string>
#include <string_view>

namespace vel_tool {

class output {
public:
    output(int descriptor, std::string name);

    void write(std::string_view text);
    // Ends what is buffered. Call it before the end: the destructor writes nothing.
    void flush();

    int descriptor() const { return descriptor_; }

private:
    void write_now(std::string_view text);

    int descriptor_;
    std::string name_;
    std::string buffer_;
};

// A file that takes the place of `path` only when it is complete. It is written beside `path` and
// renamed; what is no regular file (a device, a pipe) is written as it stands.
class replacement_file {
public:
    explicit replacement_file(const std::string &path);
    replacement_file(const replacement_file &) = delete;
    replacement_file &operator=(const replacement_file &) = delete;
    ~replacement_file();

    output &stream() { return output_; }
    void commit();

private:
    struct opened {
        std::string target;    // `path` with its links followed
        std::string temporary; // empty when written as it stands
        int descriptor;
    };
    explicit replacement_file(opened files);
    static opened open_beside(const std::string &path);

    opened files_;
    output output_;
};

// Writes to standard error, whatever happens.
void complain(std::string_view text);

} // namespace vel_tool
