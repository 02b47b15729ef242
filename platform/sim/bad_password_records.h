// The simulated BMC's bad-password records (libipmi_users.h).
//
// State: <root>/var/bmc/lockout, a JSON document written through a
// temporary file and rename under an flock on <root>/var/bmc/lockout.lock:
//   {"format":2,"subjects":[{"subject":"slot:1:<key>","failures":[<time>...],
//                            "locked_at":<time, 0 when not locked>,
//                            "changed":<time of the last change>}]}
// A document that does not parse is logged and read as empty.
#pragma once

#include <string>

namespace platform {

const std::string& lockout_file();

}  // namespace platform
