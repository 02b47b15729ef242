// The simulated BMC's LAN channel and network services, <root>/nv/bmc/lan.ini:
//
//   [LAN]      MACAddress, LinkUp=0|1, SpeedMbps, DHCPEnabled=0|1,
//              Address, SubnetMask, Gateway, HostName, DomainName,
//              NameServer1, NameServer2
//   [Services] <NAME>Enabled=0|1 and <NAME>Port for HTTP, HTTPS, IPMI,
//              SSH, NTP and SNMP
//
// Every key has a default, so a missing file is a BMC as shipped.
#pragma once

#include <string>
#include <vector>

namespace platform {

std::string lan_settings_file();

// "HTTP", "HTTPS", ... for a NET_SERVICE_* code; null for others.
const char* net_service_name(int service);

// The NET_SERVICE_* code of a name (as above), or -1.
int find_net_service(const std::string& name);

// Sets the link state as the switch port would; false when not stored.
bool set_lan_link(bool up, int speed_mbps);

// Sets the DNS domain and name servers as a DHCP lease would; false when a
// server is not a dotted quad, there are too many, or they are not stored.
bool set_lan_dns(const std::string& domain, const std::vector<std::string>& servers);

}  // namespace platform
