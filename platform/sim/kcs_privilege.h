// The simulated BMC's KCS channel privilege limit, <root>/nv/bmc/kcs.ini:
//
//   [KCS] Privilege=1..4 (Callback, User, Operator, Administrator; default 4)
#pragma once

#include <string>

namespace platform {

const std::string& kcs_settings_file();

}  // namespace platform
