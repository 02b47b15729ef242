// bmc-event-alert CODE ARGUMENT TEXT: sends the alert of one event-log
// record (logged_event_alerts.h). The platform starts it, detached, for each
// record that its event filter passes; it exits once every delivery has
// been started. Its output goes nowhere.
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "platform/libipmi.h"
#include "tasks/logged_event_alerts.h"

namespace {

bool parse_number(const char* text, long& value) {
    char* end = nullptr;
    value = std::strtol(text, &end, 10);
    return *text != '\0' && *end == '\0';
}

}  // namespace

int main(int argc, char** argv) {
    long code = 0;
    long argument = 0;
    if (argc != 4 || !parse_number(argv[1], code) || !parse_number(argv[2], argument)) {
        std::fprintf(stderr, "usage: bmc-event-alert CODE ARGUMENT TEXT\n");
        return 1;
    }
    // The starter is gone at once: its output pipe with it, and its session
    // may end before the deliveries start.
    ::signal(SIGPIPE, SIG_IGN);
    ::setsid();
    if (GlobalParaInit() == 0) {
        std::fprintf(stderr, "bmc-event-alert: the shared state cannot be attached\n");
        return 1;
    }
    const bool sent = odata::redfish::send_logged_event_alert(static_cast<int>(code),
                                                              static_cast<int>(argument), argv[3]);
    GlobalParaFin();
    return sent ? 0 : 1;
}
