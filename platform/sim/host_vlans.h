// VLANs of the simulated host's network ports, in
// <root>/var/bmc/host_vlans.ini:
//
//   [Port<p>] VLAN<n>=<id>,<0|1 enabled>   (n from 1 to NIC_MAX_VLANS)
#pragma once

#include <string>

namespace platform {

const std::string& host_vlans_file();

}  // namespace platform
