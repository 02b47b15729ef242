// The simulated alert-destination table: <root>/nv/bmc/alert_dest, a JSON
// document (mode 0600, it holds SNMP keys) written through a temporary file
// and rename under an flock on <root>/var/bmc/alert_dest.lock:
//   {"format":1,"entries":[{"enabled":true,"type":2,"event_types":0,
//     "destination":"...","context":"...","community":"...","snmp_user":"...",
//     "authentication_protocol":0,"authentication_key":"...",
//     "encryption_protocol":0,"encryption_key":"...","smtp_subject":"...",
//     "smtp_user":"..."}, ... 16 entries]}
// Changes are made to this process's copy, taken when lx_mutex_get locks
// the table, and reach the file with PSCommit.
#pragma once

#include <array>
#include <boost/json.hpp>
#include <memory>
#include <string>

#include "platform/libalert.h"

namespace platform {

using alert_table = std::array<St_AlertDest, ALERT_DEST_COUNT>;

const std::string& alert_table_file();

// An entry in the JSON form of the file, and back; a field that is missing,
// out of range or too long for its field reads as empty or 0.
St_AlertDest parse_alert_entry(const boost::json::object& object);
boost::json::object alert_entry_json(const St_AlertDest& entry);

// The text of the file for a table.
std::string alert_table_text(const alert_table& table);

// The stored table; every entry empty when there is none or it is malformed.
alert_table read_alert_table();
// The same, parsed once per version of the file.
std::shared_ptr<const alert_table> stored_alert_table();

// lx_mutex_get and lx_mutex_put of ALERT_TABLE_MUTEX; nested calls count.
bool lock_alert_table();
void unlock_alert_table();

// Whether this process has changes that PSCommit has not written.
bool alert_table_changed();
// Writes the changed table; false when it cannot be written or the lock is
// not held.
bool commit_alert_table();

}  // namespace platform
