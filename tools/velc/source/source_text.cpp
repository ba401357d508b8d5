#include "velc/source/source_text.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>

#include <zlib.h>

#include "velc/source/diagnostics.h"

namespace velc {

namespace {

struct close_gzip {
    void operator()(gzFile_s *file) const { gzclose(file); }
};

} // namespace

std::string read_source_text(const std::string &path) {
    if (std::filesystem::is_directory(path))
        throw source_error({path, 0}, "found a directory, expected a source file");
    errno = 0;
    std::unique_ptr<gzFile_s, close_gzip> file(gzopen(path.c_str(), "rb"));
    if (!file) throw source_error({path, 0}, "cannot be opened: " + std::string(strerror(errno)));
    gzbuffer(file.get(), 1 << 17);
    std::string text;
    std::string block(1 << 17, '\0');
    for (;;) {
        const int got = gzread(file.get(), block.data(), static_cast<unsigned>(block.size()));
        if (got < 0) throw source_error({path, 0}, "cannot be read: damaged gzip data");
        if (got == 0) break;
        text.append(block, 0, static_cast<std::size_t>(got));
    }
    int state = Z_OK;
    const char *message = gzerror(file.get(), &state);
    if (state != Z_OK) throw source_error({path, 0}, std::string("cannot be read: ") + message);
    return text;
}

} // namespace velc
