// bmc-event-filter: runs the service's program bmc-event-alert for each
// queued logged event (event_queue.h), one at a time and as its own child,
// while it holds the filter's slot, and exits when the queue is empty. A
// bmc-event-alert that has not ended within event_alert_seconds is killed.
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <string>

#include "base/bmc_root.h"
#include "base/child_program.h"
#include "platform/libweb.h"
#include "platform/sim/alert_delivery.h"
#include "platform/sim/event_queue.h"
#include "platform/sim/queue_worker.h"

namespace {

using namespace platform::sim;
using std::chrono::steady_clock;

constexpr int event_alert_seconds = 5;

int milliseconds_until(steady_clock::time_point deadline) {
    return static_cast<int>(
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - steady_clock::now())
            .count());
}

// Waits for the program's output to end, killing it at the deadline; true
// when it ended in time.
bool ended_in_time(platform::child_program& program, std::string& said) {
    const steady_clock::time_point deadline =
        steady_clock::now() + std::chrono::seconds(event_alert_seconds);
    for (int left = event_alert_seconds * 1000; left > 0; left = milliseconds_until(deadline))
        if (program.read_output(said, left)) return true;
    program.kill();
    return false;
}

void run_event_alert(const queued_event& event) {
    const std::string code = std::to_string(event.code);
    platform::child_program program({platform::bmc_path("/usr/sbin/bmc-event-alert"), code,
                                     std::to_string(event.argument), event.text},
                                    platform::child_program::lifetime::caller);
    if (!program.started()) {
        append_delivery_log("event " + code + ": bmc-event-alert cannot be started\n");
        return;
    }
    program.close_input();
    std::string said;
    const bool in_time = ended_in_time(program, said);
    if (program.wait() == 0) return;
    append_delivery_log("event " + code + ": " +
                        (in_time ? "bmc-event-alert failed: " + platform::last_line(said)
                                 : "bmc-event-alert overran " +
                                       std::to_string(event_alert_seconds) + " seconds, killed") +
                        "\n");
}

bool run_next() {
    queued_event event;
    if (!event_queue().take(event)) return false;
    run_event_alert(event);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 1 || !argv[0] || argv[0][0] != '/') {
        std::fprintf(stderr, "usage: /path/to/bmc-event-filter (alerts of the queued events)\n");
        return 1;
    }
    ::setsid();
    ::signal(SIGPIPE, SIG_IGN);
    detach_descriptors();
    filter_slot slot;
    work_queue(
        slot, run_next, [] { return event_queue().any(); }, argv[0]);
    return 0;
}
