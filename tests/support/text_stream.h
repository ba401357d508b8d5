// A reader over text in memory.
#pragma once

#include <cstdio>
#include <string>

#include "objfile/text_reader.h"

namespace vel_test {

class text_stream {
public:
    explicit text_stream(std::string text)
        : text_(std::move(text)), file_(open()), reader_(file_) {}
    ~text_stream() { fclose(file_); }
    text_stream(const text_stream &) = delete;
    text_stream &operator=(const text_stream &) = delete;

    vel::text_reader &reader() { return reader_; }
    // What has not been read yet.
    std::string rest() {
        std::string rest;
        for (int32_t c; (c = reader_.get()) != vel::end_of_file;) rest += static_cast<char>(c);
        return rest;
    }

private:
    FILE *open() {
        FILE *file = tmpfile();
        fwrite(text_.data(), 1, text_.size(), file);
        rewind(file);
        return file;
    }

    std::string text_;
    FILE *file_;
    vel::text_reader reader_;
};

} // namespace vel_test
