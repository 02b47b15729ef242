#include "base/child_program.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
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
constexpr int defaulted_signals[] = {SIGPIPE, SIGCHLD, SIGHUP, SIGINT, SIGTERM, SIGALRM};

void reset_signals(posix_spawnattr_t& attributes) {
    sigset_t none;
    sigemptyset(&none);
    sigset_t defaults;
    sigemptyset(&defaults);
    for (int signal : defaulted_signals) sigaddset(&defaults, signal);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

// The argument vector and the environment, made before any fork.
class launch {
public:
    explicit launch(const std::vector<std::string>& argv)
        : program_(argv.at(0)), root_("BMC_ROOT=" + bmc_root()) {
        for (const std::string& argument : argv)
            arguments_.push_back(const_cast<char*>(argument.c_str()));
        arguments_.push_back(nullptr);
        environment_[0] = root_.c_str();
    }
    const char* program() const { return program_.c_str(); }
    char* const* arguments() { return arguments_.data(); }
    char* const* environment() { return const_cast<char* const*>(environment_); }

private:
    std::string program_;
    std::string root_;
    std::vector<char*> arguments_;
    const char* environment_[3] = {nullptr, "PATH=/usr/sbin:/usr/bin:/sbin:/bin", nullptr};
};

pid_t spawn(launch& program, int input, int output) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, 0);
    posix_spawn_file_actions_adddup2(&actions, output, 1);
    posix_spawn_file_actions_adddup2(&actions, output, 2);
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    reset_signals(attributes);
    pid_t pid = -1;
    const int spawned = posix_spawn(&pid, program.program(), &actions, &attributes,
                                    program.arguments(), program.environment());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return spawned == 0 ? pid : -1;
}

// As spawn, with a death signal that posix_spawn cannot set. Between fork
// and exec the child calls only async-signal-safe functions.
pid_t spawn_tied(launch& program, int input, int output) {
    const pid_t parent = ::getpid();
    const pid_t pid = ::fork();
    if (pid != 0) return pid;
    // A parent that ended before the death signal was set sends none.
    if (::prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || ::getppid() != parent) ::_exit(127);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int signal : defaulted_signals) ::signal(signal, SIG_DFL);
    ::dup2(input, 0);
    ::dup2(output, 1);
    ::dup2(output, 2);
    ::close_range(3, ~0U, 0);
    ::execve(program.program(), program.arguments(), program.environment());
    ::_exit(127);
}

}  // namespace

child_program::child_program(const std::vector<std::string>& argv, lifetime tie) {
    launch program(argv);
    // Known before any fork: a forked child (and posix_spawn under qemu-user,
    // which emulates its vfork as a fork) could tell only by its exit status.
    if (::access(program.program(), X_OK) != 0) return;
    int input[2];
    int output[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input) != 0) return;
    if (::pipe2(output, O_CLOEXEC) != 0) {
        close_fd(input[0]);
        close_fd(input[1]);
        return;
    }
    pid_ = tie == lifetime::caller ? spawn_tied(program, input[1], output[1])
                                   : spawn(program, input[1], output[1]);
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
