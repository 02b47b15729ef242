#include "base/kill_point.h"

#include <csignal>
#include <cstdlib>
#include <string>

namespace platform {
namespace {

const std::string& chosen_step() {
    static const std::string step = [] {
        const char* named = std::getenv("BMC_KILL_AT");
        return std::string(named ? named : "");
    }();
    return step;
}

// Read at start: the hook then holds in processes forked later.
const bool read_at_start = !chosen_step().empty();

}  // namespace

void kill_point(std::string_view step) {
    if (read_at_start && step == chosen_step()) std::raise(SIGKILL);
}

}  // namespace platform
