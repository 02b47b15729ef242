// A program of the BMC run as a child of this process: started from an
// argument vector (never a shell) with only the BMC root and a search path
// in its environment. Its standard input is a socket that the caller
// writes to, so that secrets never appear on its command line; its
// standard output and error are one pipe that the caller reads. No other
// descriptor of the caller reaches it.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace platform {

class child_program {
public:
    // own: the child may outlive the caller. caller: the kernel kills the
    // child when the thread that started it ends, even by SIGKILL, so that
    // work belonging to the caller (a flash, a download) never outlives it.
    enum class lifetime { own, caller };

    // Starts argv[0], an absolute path; started() tells whether it did.
    explicit child_program(const std::vector<std::string>& argv, lifetime tie = lifetime::own);
    child_program(const child_program&) = delete;
    child_program& operator=(const child_program&) = delete;
    // Kills and reaps a child that was not waited for: none is left behind.
    ~child_program();

    bool started() const { return pid_ > 0; }
    pid_t pid() const { return pid_; }
    // Writes all of text to the child's standard input; false when the
    // child has gone.
    bool send(std::string_view text);
    // Ends the child's standard input.
    void close_input();
    // Waits up to timeout_ms (-1: no limit) for the child to write and adds
    // what it wrote to said (its first kilobyte or so is kept); true once
    // its output has ended. Callers repeat it until then.
    bool read_output(std::string& said, int timeout_ms);
    void kill();
    // Waits for the child to end; its exit status, -1 when it did not exit
    // normally.
    int wait();

private:
    pid_t pid_ = -1;
    int input_ = -1;
    int output_ = -1;
};

// The last line of what a program said, without its line end.
std::string last_line(std::string said);

}  // namespace platform
