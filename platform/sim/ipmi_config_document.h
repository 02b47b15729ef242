// The document of PltIPMI_BackupConfig and PltIPMI_RestoreConfig, JSON:
//
//   {"format":"ipmi-config","version":1,
//    "lan":{"dhcp_enabled":false,"address":"192.168.0.120",
//           "subnet_mask":"255.255.255.0","gateway":"192.168.0.1","host_name":"bmc"},
//    "services":{"HTTP":{"enabled":true,"port":80}, ... each network service},
//    "serial":{"enabled":true,"bit_rate":115200,"data_bits":8,"parity":"N",
//              "stop_bits":1,"flow_control":false},
//    "users":[16 slots in order, each as the user table file keeps it],
//    "alert_destinations":[16 entries, each as the alert table file keeps it]}
//
// Reading is strict: every member present, nothing else, every value one
// the store would keep exactly as written.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/liblan.h"
#include "platform/libserial.h"
#include "platform/sim/alert_table.h"
#include "platform/sim/user_table.h"

namespace platform::sim {

inline constexpr int ipmi_config_version = 1;

struct ipmi_configuration {
    St_LanConfig lan{};  // DHCP, addresses and host name; the rest is not configuration
    std::array<St_NetService, NET_SERVICE_COUNT> services{};
    St_SerialConfig serial{};
    user_slots users;
    alert_table alerts{};
};

std::string ipmi_config_text(const ipmi_configuration& config);

// False, with the first fault found in reason, for a document that is not
// one of this version or holds a value the BMC would refuse.
bool parse_ipmi_config(std::string_view text, ipmi_configuration& config, std::string& reason);

}  // namespace platform::sim
