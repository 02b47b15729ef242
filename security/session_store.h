// The session store shared by every service process and the BMC's other
// programs: /tmp/redfish_<token> records, one served directory per session
// id, and /tmp/redfish.lock around every change.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/session_record.h"

namespace odata::redfish {

constexpr int max_sessions = 16;

struct opened_session {
    int id;
    std::string token;
    std::string uri;
};

// Opens a session for an authenticated user; none when all ids are taken.
std::optional<opened_session> open_session(const std::string& user_name, int privilege,
                                           uint8_t source);

// The record of a valid token; refreshes its last use. An expired session
// is removed and gives none.
std::optional<St_RedfishSession> validate_token(const std::string& token);

// Removes every session idle for longer than the timeout.
void remove_expired_sessions();

// Removes the session with this id; false when there is none.
bool remove_session(int id);

// The record of a session id, if it exists.
std::optional<St_RedfishSession> find_session(int id);

// The ids of the served session directories, ascending.
std::vector<int> session_ids();

// "/redfish/v1/SessionService/Sessions/<id>"
std::string session_uri(int id);

}  // namespace odata::redfish
