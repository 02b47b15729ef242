// The simulated BMC's clock source, <root>/nv/bmc/ntp.ini:
//
//   [NTP] Source=NTP|Manual (default Manual), Server1..Server3 (default none)
#pragma once

#include <string>
#include <string_view>

namespace platform {

const std::string& ntp_settings_file();

// A host name or address that an NTP server entry may hold ("" is none).
bool valid_ntp_server(std::string_view server);

}  // namespace platform
