// bmc-alert-send KIND INDEX: delivers one alert to entry INDEX of the
// alert-destination table as KIND ("Redfish", "SMTP", "SNMPv2c",
// "SNMPv3"). Standard input brings what to send as JSON (alert_requests.h):
// destinations, texts, keys and passwords never go on the command line.
// Once it has read them, the program leaves its caller's session and
// descriptors, tries as the event service's settings say, and logs the
// outcome (delivery_attempts.h).
#include <fcntl.h>
#include <unistd.h>

#include <boost/json.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "platform/sim/alert_requests.h"
#include "platform/sim/alert_send/alert_transports.h"
#include "platform/sim/alert_send/delivery_attempts.h"
#include "platform/sim/sim_file.h"

namespace {

using namespace platform::sim;
using attempt_function = std::function<bool(std::string& error)>;

constexpr size_t max_request_bytes = 1 << 20;

bool read_request(std::string& text) {
    char buffer[4096];
    while (text.size() <= max_request_bytes) {
        const ssize_t got = ::read(0, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return got == 0;
        text.append(buffer, static_cast<size_t>(got));
    }
    return false;
}

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

// The caller's descriptors (its client connection above all) must not stay
// open while a slow receiver is retried.
void detach_descriptors() {
    const int null = ::open("/dev/null", O_RDWR);
    for (int fd = 0; fd <= 2; ++fd)
        if (null >= 0) ::dup2(null, fd);
    ::close_range(3, ~0U, 0);
}

[[noreturn]] void deliver(int index, const char* kind, const attempt_function& attempt) {
    detach_descriptors();
    const platform::event_service_settings settings = platform::read_event_service_settings();
    // A hard stop even if a transport ignores its own timeouts.
    ::alarm(delivery_seconds(settings));
    ::_exit(deliver_with_retries(index, kind, settings, attempt) ? 0 : 1);
}

int fail(const char* reason) {
    std::fprintf(stderr, "bmc-alert-send: %s\n", reason);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    char* end = nullptr;
    const long index = argc == 3 ? std::strtol(argv[2], &end, 10) : -1;
    if (argc != 3 || *end != '\0' || index < 0 || index >= ALERT_DEST_COUNT)
        return fail("usage: bmc-alert-send KIND INDEX < request");
    std::string text;
    if (!read_request(text)) return fail("the request cannot be read");
    boost::system::error_code error;
    const attempt_function attempt = attempt_for(argv[1], boost::json::parse(text, error));
    if (error || !attempt) return fail("the request is not one of its kind");
    ::setsid();
    ::signal(SIGPIPE, SIG_IGN);
    deliver(static_cast<int>(index), argv[1], attempt);
}
