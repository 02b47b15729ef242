// Programs run as children: what reaches them, and that none is left
// behind.
#include "base/child_program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <string>

namespace {

std::string all_output(platform::child_program& child) {
    std::string said;
    for (int i = 0; i < 1000 && !child.read_output(said, 1000); ++i) {
    }
    return said;
}

TEST(child_program, input_reaches_the_child_and_its_output_comes_back) {
    platform::child_program cat({"/bin/cat"});
    ASSERT_TRUE(cat.started());
    EXPECT_TRUE(cat.send("secret\nsecond line\n"));
    cat.close_input();
    EXPECT_EQ(all_output(cat), "secret\nsecond line\n");
    EXPECT_EQ(cat.wait(), 0);
    EXPECT_EQ(platform::last_line("first\nlast\r\n"), "last");
}

TEST(child_program, only_the_standard_descriptors_and_environment_reach_the_child) {
    const int open_here = ::dup(2);
    platform::child_program list({"/bin/ls", "/proc/self/fd"});
    const std::string fds = all_output(list);
    ::close(open_here);
    EXPECT_EQ(list.wait(), 0);
    // ls's own directory descriptor is the fourth.
    EXPECT_EQ(fds, "0\n1\n2\n3\n");
    platform::child_program env({"/usr/bin/env"});
    const std::string environment = all_output(env);
    EXPECT_EQ(env.wait(), 0);
    EXPECT_EQ(environment.find("BMC_ROOT="), 0u);
    EXPECT_EQ(environment.find("HOME="), std::string::npos);
}

TEST(child_program, a_missing_program_or_a_gone_child_fails_without_a_signal) {
    platform::child_program missing({"/nonexistent/program"});
    EXPECT_FALSE(missing.started());
    EXPECT_FALSE(missing.send("x"));
    platform::child_program early({"/bin/true"});
    EXPECT_EQ(all_output(early), "");
    // Its input has no reader any more: an error, not SIGPIPE.
    EXPECT_FALSE(early.send(std::string(1 << 20, 'x')));
    EXPECT_EQ(early.wait(), 0);
}

TEST(child_program, a_child_not_waited_for_is_killed_and_reaped) {
    pid_t pid = -1;
    {
        platform::child_program sleeper({"/bin/sleep", "30"});
        ASSERT_TRUE(sleeper.started());
        pid = sleeper.pid();
    }
    errno = 0;
    EXPECT_EQ(::waitpid(pid, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

// Ended or waiting to be reaped by whoever adopted it.
bool ended(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    if (!std::getline(stat, line)) return true;
    const size_t state = line.rfind(')') + 2;
    return state < line.size() && line[state] == 'Z';
}

TEST(child_program, a_child_tied_to_its_caller_dies_with_it_even_by_sigkill) {
    int report[2];
    ASSERT_EQ(::pipe(report), 0);
    const pid_t caller = ::fork();
    if (caller == 0) {
        platform::child_program sleeper({"/bin/sleep", "30"},
                                        platform::child_program::lifetime::caller);
        const pid_t pid = sleeper.pid();
        if (::write(report[1], &pid, sizeof pid) != sizeof pid) ::_exit(1);
        ::raise(SIGKILL);
    }
    ::close(report[1]);
    pid_t sleeper = -1;
    ASSERT_EQ(::read(report[0], &sleeper, sizeof sleeper), static_cast<ssize_t>(sizeof sleeper));
    ::close(report[0]);
    ASSERT_GT(sleeper, 0);
    ::waitpid(caller, nullptr, 0);
    bool gone = false;
    for (int i = 0; i < 500 && !(gone = ended(sleeper)); ++i) ::usleep(10000);
    EXPECT_TRUE(gone);
}

}  // namespace
