#include "security/account_lockout.h"

#include <climits>

#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "security/account_policy.h"
#include "security/account_slots.h"

namespace odata::redfish {
namespace {

bool lockout_active(const account_policy& policy) {
    return policy.lockout_enabled && policy.lockout_threshold > 0;
}

// A bad password made at t counts while now - t < CounterResetAfter; 0
// keeps it until a good password or an unlock.
long long counted_since(const account_policy& policy, long long now) {
    return policy.counter_reset_after > 0 ? now - policy.counter_reset_after + 1 : LLONG_MIN;
}

// A lock lasts while now - locked_at < Duration; 0 keeps it until an unlock.
bool lock_holds(const St_BadPwdRecord& record, const account_policy& policy, long long now) {
    return record.locked_at != 0 && lockout_active(policy) &&
           (policy.lockout_duration <= 0 || now - record.locked_at < policy.lockout_duration);
}

uint32_t slot_key(int slot) {
    St_UserInfo info{};
    LibSetUserIndex(slot);
    return LibInitUserInfo(&info) == 0 ? info.key : 0;
}

// Names reach the records and their log lines printable.
std::string printable(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    return text;
}

}  // namespace

std::string lockout_subject(int slot, const std::string& user_name, const std::string& source) {
    if (slot < 0 || slot >= MAX_USER_SLOTS)
        return "name:" + printable(user_name.substr(0, MAX_USER_NAME_LEN));
    std::string subject = "slot:" + std::to_string(slot) + ":" + std::to_string(slot_key(slot));
    if (slot == reserved_administrator_slot) subject += " from " + printable(source);
    return subject.substr(0, MAX_BAD_PWD_SUBJECT_LEN);
}

bool subject_locked(const std::string& subject) {
    const account_policy policy = read_account_policy();
    const long long now = lx_time_get();
    St_BadPwdRecord record{};
    if (GetBadPwdRecords(subject.c_str(), counted_since(policy, now), &record) != 0) {
        console_log("[ERROR] cannot read the bad-password records of %s\n", subject.c_str());
        return true;
    }
    return lock_holds(record, policy, now);
}

std::optional<int> record_failure(const std::string& subject) {
    const account_policy policy = read_account_policy();
    const long long now = lx_time_get();
    const int counted = AddBadPwdRecords(subject.c_str(), now, counted_since(policy, now));
    if (counted < 0) return std::nullopt;
    if (lockout_active(policy) && counted >= policy.lockout_threshold &&
        LockBadPwdSubject(subject.c_str(), now) != 0)
        return std::nullopt;
    return counted;
}

void clear_failures(const std::string& subject) { ClearBadPwdRecords(subject.c_str()); }

bool account_locked(int slot, const std::string& source) {
    return subject_locked(lockout_subject(slot, "", source));
}

}  // namespace odata::redfish
