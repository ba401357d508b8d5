#include "vel/sort_program.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "vel/failure.h"
#include "vel/line_reader.h"

namespace vel_tool {
namespace {

constexpr char separator = '\t';
constexpr int not_found = 127;

// Keys and lines may hold any byte. For the program, those that mean something to it are written as
// two, with the order as it was: 00 and 01 behind an 01, 08 to 0A (tab and newline) behind an 08.
struct escaped_range {
    unsigned char first, last, mark;
};
constexpr escaped_range escaped_ranges[] = {{0x00, 0x01, 0x01}, {0x08, 0x0A, 0x08}};
constexpr unsigned char first_behind_mark = 0x01;

const escaped_range *range_of(unsigned char byte) {
    if (byte > std::end(escaped_ranges)[-1].last) return nullptr;
    for (const escaped_range &range : escaped_ranges) {
        if (byte >= range.first && byte <= range.last) return &range;
    }
    return nullptr;
}

void add_escaped(std::string &out, std::string_view text) {
    size_t used = out.size();
    out.resize(used + 2 * text.size());
    char *to = out.data() + used;
    for (char c : text) {
        auto byte = static_cast<unsigned char>(c);
        const escaped_range *range = range_of(byte);
        if (range) *to++ = static_cast<char>(range->mark);
        *to++ = range ? static_cast<char>(byte - range->first + first_behind_mark) : c;
    }
    out.resize(static_cast<size_t>(to - out.data()));
}

void set_plain(std::string &out, std::string_view text) {
    out.clear();
    for (size_t at = 0; at < text.size(); ++at) {
        const escaped_range *range = range_of(static_cast<unsigned char>(text[at]));
        bool is_mark = range && at + 1 < text.size();
        out +=
            is_mark ? static_cast<char>(text[++at] - first_behind_mark + range->first) : text[at];
    }
}

[[noreturn]] void cannot(const char *action, int error) {
    throw failure(fmt::format("cannot {} the program 'sort': {}", action, strerror(error)));
}

std::vector<std::string> environment_of_bytes() {
    std::vector<std::string> variables;
    for (char **one = environ; *one; ++one) {
        if (strncmp(*one, "LC_ALL=", 7) != 0) variables.emplace_back(*one);
    }
    variables.emplace_back("LC_ALL=C");
    return variables;
}

std::vector<char *> pointers_to(std::vector<std::string> &words) {
    std::vector<char *> pointers;
    for (std::string &word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

struct pipe_ends {
    int read, write;
};

pipe_ends make_pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) cannot("start", errno);
    return {ends[0], ends[1]};
}

void close_if_open(int &descriptor) {
    if (descriptor >= 0) close(std::exchange(descriptor, -1));
}

// The program is to end by a broken pipe, as it does when nobody ignores that.
int spawn(std::vector<std::string> words, pipe_ends in, pipe_ends out, pid_t *process) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, in.read, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, out.write, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::vector<std::string> variables = environment_of_bytes();
    int error = posix_spawnp(process, words[0].c_str(), &files, &attributes,
                             pointers_to(words).data(), pointers_to(variables).data());
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    return error;
}

} // namespace

sort_program::sort_program(bool reverse, uint64_t memory) {
    start(reverse, memory);
    stream_.emplace(to_, "the pipe to the program 'sort'");
}

void sort_program::start(bool reverse, uint64_t memory) {
    std::vector<std::string> words = {"sort",
                                      "-s",
                                      "-t",
                                      std::string(1, separator),
                                      "-k1,1",
                                      "-S",
                                      fmt::format("{}K", memory / 1024 + 1)};
    if (reverse) words.emplace_back("-r");
    pipe_ends in = make_pipe(), out = make_pipe();
    int error = spawn(words, in, out, &process_);
    close(in.read);
    close(out.write);
    to_ = in.write;
    from_ = out.read;
    if (error == 0) return;
    process_ = -1;
    close_if_open(to_);
    close_if_open(from_);
    cannot("start", error);
}

sort_program::~sort_program() {
    if (process_ > 0) kill(process_, SIGTERM); // nobody wants the result any more
    close_if_open(to_);
    close_if_open(from_);
    if (process_ > 0) wait_for_end();
}

void sort_program::add(std::string_view key, std::string_view line) {
    text_.clear();
    add_escaped(text_, key);
    text_ += separator;
    add_escaped(text_, line);
    text_ += '\n';
    feed([&] { stream_->write(text_); });
}

void sort_program::end_input() {
    feed([&] { stream_->flush(); });
    close_if_open(to_);
}

// When the program has gone, how it ended says more than the broken pipe.
void sort_program::feed(const std::function<void()> &write) {
    try {
        write();
    } catch (const reader_gone &) {
        check_end();
        throw failure("the program 'sort' took only a part of the lines");
    }
}

void sort_program::for_each(const line_consumer &take) {
    end_input();
    input source(std::exchange(from_, -1), "the pipe from the program 'sort'");
    line_reader lines(source, {"\n"});
    std::string plain;
    std::string_view line;
    while (lines.next(line)) {
        size_t key_end = line.find(separator);
        if (key_end == std::string_view::npos) throw failure("the program 'sort' changed a line");
        set_plain(plain, line.substr(key_end + 1));
        take(line.substr(0, key_end), plain);
    }
    check_end();
}

void sort_program::check_end() {
    int status = wait_for_end();
    if (WIFSIGNALED(status)) {
        throw failure(fmt::format("the program 'sort' was ended by signal {}", WTERMSIG(status)));
    }
    int code = WEXITSTATUS(status);
    if (code == not_found) cannot("start", ENOENT);
    if (code != 0) throw failure(fmt::format("the program 'sort' ended with status {}", code));
}

int sort_program::wait_for_end() {
    pid_t process = std::exchange(process_, -1);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

} // namespace vel_tool
