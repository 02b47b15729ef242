// bmc-alert-send: delivers the queued alerts (alert_queue.h) while it holds
// one of the sender slots, each to its entry of the alert-destination
// table, and exits when the queue is empty. Destinations, texts, keys and
// passwords come from the owner-only queue, never from the command line.
// The program leaves its caller's session and descriptors, tries as the
// event service's settings say, and logs each outcome
// (delivery_attempts.h).
#include <unistd.h>

#include <boost/json.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "platform/sim/alert_delivery.h"
#include "platform/sim/alert_queue.h"
#include "platform/sim/alert_requests.h"
#include "platform/sim/alert_send/alert_transports.h"
#include "platform/sim/alert_send/delivery_attempts.h"
#include "platform/sim/queue_worker.h"

namespace {

using namespace platform::sim;
using attempt_function = std::function<bool(std::string& error)>;

attempt_function attempt_for(const std::string& kind, const boost::json::value& request) {
    if (kind == "Redfish") {
        const auto event = boost::json::try_value_to<redfish_delivery>(request);
        if (event)
            return [event = *event](std::string& error) {
                return post_redfish_event(event.url, event.body, error);
            };
    } else if (kind == "SMTP") {
        const auto mail = boost::json::try_value_to<mail_delivery>(request);
        if (mail)
            return [mail = *mail](std::string& error) {
                return send_mail(mail.smtp, mail.recipient, mail.message, error);
            };
    } else if (kind == "SNMPv2c" || kind == "SNMPv3") {
        const auto trap = boost::json::try_value_to<trap_delivery>(request);
        if (trap) return [trap = *trap](std::string& error) { return send_snmp_trap(trap, error); };
    }
    return {};
}

const char* program_path = nullptr;

// A delivery that overran its time starts a fresh copy, its slot free.
void on_overrun(int) { start_afresh(program_path); }

void deliver(const queued_alert& alert) {
    boost::system::error_code error;
    const attempt_function attempt =
        attempt_for(alert.kind, boost::json::parse(alert.request, error));
    if (error || !attempt) {
        append_delivery_log("entry " + std::to_string(alert.index) + " " + alert.kind +
                            ": dropped, not a request of its kind\n");
        return;
    }
    const platform::event_service_settings settings = platform::read_event_service_settings();
    // A hard stop even if a transport ignores its own timeouts.
    ::alarm(delivery_seconds(settings));
    deliver_with_retries(alert.index, alert.kind.c_str(), settings, attempt);
    ::alarm(0);
}

bool deliver_next() {
    queued_alert alert;
    if (!take_queued_alert(alert)) return false;
    deliver(alert);
    return true;
}

int fail(const char* reason) {
    std::fprintf(stderr, "bmc-alert-send: %s\n", reason);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 1 || !argv[0] || argv[0][0] != '/')
        return fail("usage: /path/to/bmc-alert-send (delivers the queued alerts)");
    program_path = argv[0];
    ::setsid();
    ::signal(SIGPIPE, SIG_IGN);
    // Not blocked while it runs: the fresh copy inherits the signal mask.
    struct sigaction overrun {};
    overrun.sa_handler = on_overrun;
    overrun.sa_flags = SA_NODEFER;
    ::sigaction(SIGALRM, &overrun, nullptr);
    detach_descriptors();
    sender_slot slot;
    work_queue(slot, deliver_next, alerts_queued, program_path);
    return 0;
}
