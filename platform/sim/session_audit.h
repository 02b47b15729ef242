// Login audit of the simulated BMC: UtilSessionAduit appends one line per
// login or logout to <root>/var/log/session_audit.log (one append-mode write):
//   <seconds> login|logout user=<name> address=<client address>
// Control characters in the name or address are written as '?'. Passwords
// and tokens are never passed to it.
#pragma once

#include <string>

namespace platform {

std::string session_audit_file();

}  // namespace platform
