// Line logs of the simulated BMC that keep a bound: a line that would take
// a log past its bound first moves it to "<path>.1", replacing the older
// part there, so a log and its older part hold at most twice the bound, the
// newest lines. Lines are appended whole under an flock of the log itself,
// so lines of concurrent processes never mix.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

namespace platform::sim {

struct bounded_log {
    std::string path;
    std::size_t max_bytes;
    mode_t mode;

    std::string older_path() const { return path + ".1"; }
};

// Appends line (with its newline); false when the log cannot be written,
// and then nothing of the line stays in it.
bool append_line(const bounded_log& log, const std::string& line);

}  // namespace platform::sim
