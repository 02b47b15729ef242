#include "base/child_program.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "base/bmc_root.h"

namespace platform {
namespace {

constexpr size_t max_output = 1024;

void close_fd(int& fd) {
    if (fd >= 0) ::close(fd);
    fd = -1;
}

// Signals that this process ignores or blocks stay so across exec; the
// child starts with the defaults.
void reset_signals(posix_spawnattr_t& attributes) {
    sigset_t none;
    sigemptyset(&none);
    sigset_t defaults;
    sigemptyset(&defaults);
    for (int signal : {SIGPIPE, SIGCHLD, SIGHUP, SIGINT, SIGTERM, SIGALRM})
        sigaddset(&defaults, signal);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

pid_t spawn(const std::vector<std::string>& argv, int input, int output) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, 0);
    posix_spawn_file_actions_adddup2(&actions, output, 1);
    posix_spawn_file_actions_adddup2(&actions, output, 2);
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    reset_signals(attributes);
    std::vector<char*> arguments;
    for (const std::string& argument : argv)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const std::string root = "BMC_ROOT=" + bmc_root();
    const char* environment[] = {root.c_str(), "PATH=/usr/sbin:/usr/bin:/sbin:/bin", nullptr};
    pid_t pid = -1;
    const int spawned = posix_spawn(&pid, argv.at(0).c_str(), &actions, &attributes,
                                    arguments.data(), const_cast<char* const*>(environment));
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return spawned == 0 ? pid : -1;
}

}  // namespace

child_program::child_program(const std::vector<std::string>& argv) {
    int input[2];
    int output[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input) != 0) return;
    if (::pipe2(output, O_CLOEXEC) != 0) {
        close_fd(input[0]);
        close_fd(input[1]);
        return;
    }
    pid_ = spawn(argv, input[1], output[1]);
    close_fd(input[1]);
    close_fd(output[1]);
    input_ = input[0];
    output_ = output[0];
    if (pid_ < 0) {
        close_fd(input_);
        close_fd(output_);
    }
}

child_program::~child_program() {
    close_fd(input_);
    close_fd(output_);
    if (pid_ > 0) {
        kill();
        wait();
    }
}

bool child_program::send(std::string_view text) {
    while (!text.empty() && input_ >= 0) {
        const ssize_t sent = ::send(input_, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        text.remove_prefix(static_cast<size_t>(sent));
    }
    return text.empty();
}

void child_program::close_input() { close_fd(input_); }

bool child_program::read_output(std::string& said, int timeout_ms) {
    if (output_ < 0) return true;
    pollfd ready{output_, POLLIN, 0};
    const int polled = ::poll(&ready, 1, timeout_ms);
    if (polled == 0 || (polled < 0 && errno == EINTR)) return false;
    char buffer[256];
    ssize_t got = polled < 0 ? -1 : ::read(output_, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) return false;
    if (got <= 0) {
        close_fd(output_);
        return true;
    }
    if (said.size() < max_output) said.append(buffer, static_cast<size_t>(got));
    return false;
}

void child_program::kill() {
    if (pid_ > 0) ::kill(pid_, SIGKILL);
}

int child_program::wait() {
    if (pid_ <= 0) return -1;
    int status = 0;
    pid_t waited;
    while ((waited = ::waitpid(pid_, &status, 0)) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    return waited > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string last_line(std::string said) {
    while (!said.empty() && (said.back() == '\n' || said.back() == '\r')) said.pop_back();
    return said.substr(said.rfind('\n') + 1);
}

}  // namespace platform
