// Reading files and standard input.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vel_tool {

class input {
public:
    // "-" is standard input.
    explicit input(const std::string &path);
    // Takes over a descriptor that is open for reading.
    input(int descriptor, std::string name) : name_(std::move(name)), descriptor_(descriptor) {}
    input(const input &) = delete;
    input &operator=(const input &) = delete;
    ~input();

    // What is there, at most `size` bytes; 0 at the end.
    size_t read(char *buffer, size_t size);
    const std::string &name() const { return name_; }

private:
    std::string name_;
    int descriptor_;
};

// The files named on a command line: standard input when there are none.
std::vector<std::string> files_or_input(const std::vector<std::string> &files);

} // namespace vel_tool
