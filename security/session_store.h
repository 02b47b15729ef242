// The session store shared by every service process and the BMC's other
// programs: /tmp/redfish_<token> records, one served directory per session
// id, and /tmp/redfish.lock around every change.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/session_record.h"
#include "security/session_account.h"

namespace odata::redfish {

constexpr int max_sessions = 16;
// Sessions of accounts that may not configure the manager hold at most so
// many together, so that administrators always find room.
constexpr int max_sessions_without_configure_manager = 12;

struct opened_session {
    int id;
    std::string token;
    std::string uri;
};

enum class session_refusal { table_full, share_used };

// Opens a session for an authenticated user; none when all ids are taken or
// the owner's share is used up (refusal says which). The session exists
// from the one rename that puts its directory in place.
std::optional<opened_session> open_session(const session_owner& owner,
                                           session_refusal* refusal = nullptr);

// The record of a valid token, with its account's current privilege;
// refreshes its last use. A session that has expired or whose account is
// gone, disabled or renamed is removed and gives none.
std::optional<St_RedfishSession> validate_token(std::string_view token);

// The sweep: removes every session idle for longer than the timeout or
// whose account has gone, and what killed processes left behind: records
// without a directory, directories without a record, temporary files.
void remove_expired_sessions();

// Removes the sessions of a local user's slot except the one with id kept.
void remove_account_sessions(int slot, int kept);

// Removes the session with this id; false when there is none.
bool remove_session(int id);

// The record of a session id, if it exists.
std::optional<St_RedfishSession> find_session(int id);

// The ids of the served session directories, ascending.
std::vector<int> session_ids();

// "/redfish/v1/SessionService/Sessions/<id>"
std::string session_uri(int id);

}  // namespace odata::redfish
