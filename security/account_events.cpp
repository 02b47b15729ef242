#include "security/account_events.h"

#include "platform/libipmi.h"

namespace odata::redfish {
namespace {

constexpr int event_account_change = 148;

void save(const std::string& subject, std::string_view what) {
    const std::string text = subject + ", " + std::string(what);
    LibSaveSysEvtLog(event_account_change, 0, text.c_str());
}

}  // namespace

void log_account_change(const std::string& user_name, std::string_view what) {
    save(user_name, what);
}

void log_account_change(int account_id, std::string_view what) {
    save(std::to_string(account_id), what);
}

}  // namespace odata::redfish
