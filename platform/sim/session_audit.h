// Login audit of the simulated BMC: UtilSessionAduit appends one line per
// login or logout to <root>/var/log/session_audit.log, a bounded log
// (bounded_log.h) of max_session_audit_bytes:
//   <seconds> login|logout user=<name> address=<client address>
// Control characters in the name or address are written as '?'. Passwords
// and tokens are never passed to it.
#pragma once

#include <cstddef>
#include <string>

namespace platform {

// Every request with Basic credentials logs in, so the log turns over.
constexpr std::size_t max_session_audit_bytes = 64 * 1024;

const std::string& session_audit_file();

}  // namespace platform
