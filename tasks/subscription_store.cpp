#include "tasks/subscription_store.h"

#include "platform/libipmi_users.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

// Runs change inside the table's lock and commits what it changed; false
// when change refuses or the table cannot be locked or written.
bool change_table(const std::function<bool()>& change) {
    if (lx_mutex_get(ALERT_TABLE_MUTEX) != 0) return false;
    bool done = change();
    if (done && PSCommit() != 0) {
        console_log("[EventDestination] cannot commit the alert-destination table\n");
        done = false;
    }
    lx_mutex_put(ALERT_TABLE_MUTEX);
    return done;
}

bool write_entry(int index, const St_AlertDest& entry) {
    return set_config_alert_dest(index, entry.destination) == 0 &&
           set_config_alert_proto(index, entry.type) == 0 &&
           set_config_alert_type(index, entry.event_types) == 0 &&
           set_config_alert_context(index, entry.context) == 0 &&
           set_config_alert_community(index, entry.community) == 0 &&
           set_config_alert_snmpv3(index, entry.snmp_user, entry.authentication_protocol,
                                   entry.authentication_key, entry.encryption_protocol,
                                   entry.encryption_key) == 0 &&
           (entry.type != ALERT_DEST_SMTP ||
            set_smtp_paramters(index, entry.smtp_subject, entry.smtp_user) == 0) &&
           enable_pef_filter(index, entry.enabled) == 0;
}

}  // namespace

std::optional<int> entry_of_subscription(int id) {
    if (id < 1 || id > ALERT_DEST_COUNT) return std::nullopt;
    return id - 1;
}

bool is_subscription(const St_AlertDest& entry) {
    return entry.enabled || entry.destination[0] != '\0';
}

edited_subscription edit_subscription(int index, const std::function<bool(St_AlertDest&)>& edit) {
    edited_subscription outcome = edited_subscription::failed;
    const bool stored = change_table([&] {
        St_AlertDest entry{};
        if (get_config_alert_dest(index, &entry) != 0) return false;
        if (!is_subscription(entry)) {
            outcome = edited_subscription::not_found;
            return false;
        }
        if (!edit(entry)) {
            outcome = edited_subscription::refused;
            return false;
        }
        outcome = edited_subscription::changed;
        return write_entry(index, entry);
    });
    // A change that was not committed was dropped with the lock.
    if (outcome == edited_subscription::changed && !stored) outcome = edited_subscription::failed;
    return outcome;
}

created_subscription store_new_subscription(const St_AlertDest& entry) {
    created_subscription result{created_subscription::limit_exceeded, -1};
    const bool stored = change_table([&] {
        for (int index = 0; index < ALERT_DEST_COUNT; ++index) {
            St_AlertDest stored_entry{};
            if (get_config_alert_dest(index, &stored_entry) != 0 || is_subscription(stored_entry))
                continue;
            result = {created_subscription::created, index};
            return write_entry(index, entry);
        }
        return false;
    });
    if (result.outcome == created_subscription::created && !stored)
        result.outcome = created_subscription::failed;
    return result;
}

bool delete_subscription(int index) {
    return change_table([index] { return clean_alert_dest(index) == 0; });
}

}  // namespace odata::redfish
