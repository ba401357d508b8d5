#include "fresh_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

std::string read_all(int descriptor) {
    std::string text;
    char block[4096];
    for (ssize_t n; (n = read(descriptor, block, sizeof block)) > 0;)
        text.append(block, static_cast<std::size_t>(n));
    return text;
}

} // namespace

std::string run_program(const std::vector<std::string> &command) {
    std::vector<char *> arguments;
    for (const std::string &word : command) arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int failure = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    std::string text = failure ? "" : read_all(ends[0]);
    close(ends[0]);
    if (failure) throw std::runtime_error(command[0] + " cannot be started");
    int status = 0;
    waitpid(child, &status, 0);
    return text;
}

double ask_fresh_process(const std::vector<std::string> &arguments) {
    std::vector<std::string> command = {"/proc/self/exe", "--fresh"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::string answer = run_program(command);
    if (answer.empty()) throw std::runtime_error("a fresh process gave no answer");
    return std::stod(answer);
}

} // namespace bench
