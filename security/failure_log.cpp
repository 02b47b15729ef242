#include "security/failure_log.h"

#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr int event_failed_login = 137;

}  // namespace

// The failures of each address are counted in the platform's bad-password
// records, which keep them bounded, under a subject of their own.
void log_failed_authentication(const std::string& text) {
    char address[sizeof InterfaceInfo->client_ip] = {};
    GetClientIP(address, sizeof address);
    address[sizeof address - 1] = '\0';
    const std::string source = address;
    const std::string subject = ("log:" + source).substr(0, MAX_BAD_PWD_SUBJECT_LEN);
    const long long now = lx_time_get();
    const int counted = AddBadPwdRecords(subject.c_str(), now, now - failure_log_period + 1);
    if (counted < 0 || counted <= max_logged_failures) {
        LibSaveSysEvtLog(event_failed_login, 0, text.c_str());
    } else if (counted == max_logged_failures + 1) {
        console_log(
            "[ERROR] more than %d failed authentications from %s within %ld s; "
            "not logged further\n",
            max_logged_failures, source.c_str(), failure_log_period);
    }
}

}  // namespace odata::redfish
