// The simulated BMC's LAN channel and network services, <root>/nv/bmc/lan.ini:
//
//   [LAN]      MACAddress, LinkUp=0|1, SpeedMbps, DHCPEnabled=0|1,
//              Address, SubnetMask, Gateway, HostName, DomainName,
//              NameServer1, NameServer2
//   [Services] <NAME>Enabled=0|1 and <NAME>Port for HTTP, HTTPS, IPMI,
//              SSH, NTP and SNMP
//   [IPMI]     RAKPRequired=0|1 (default 1)
//
// Every key has a default, so a missing file is a BMC as shipped.
#pragma once

#include <boost/property_tree/ptree.hpp>
#include <string>
#include <vector>

#include "platform/liblan.h"

namespace platform {

const std::string& lan_settings_file();

// "HTTP", "HTTPS", ... for a NET_SERVICE_* code; null for others.
const char* net_service_name(int service);

// The NET_SERVICE_* code of a name (as above), or -1.
int find_net_service(const std::string& name);

// A dotted quad and a contiguous mask.
bool valid_ipv4_subnet(const char* address, const char* subnet_mask);

// The rules PltLAN_SetConfig checks: dotted quads, a contiguous mask, a
// host name that stays on one line.
bool valid_lan_config(const St_LanConfig& config);

// Puts the settings PltLAN_SetConfig and PltNET_SetService store into the
// file's tree.
void put_lan_config(boost::property_tree::ptree& state, const St_LanConfig& config);
void put_net_service(boost::property_tree::ptree& state, int service, const St_NetService& setting);

// Sets the link state as the switch port would; false when not stored.
bool set_lan_link(bool up, int speed_mbps);

// Sets the DNS domain and name servers as a DHCP lease would; false when a
// server is not a dotted quad, there are too many, or they are not stored.
bool set_lan_dns(const std::string& domain, const std::vector<std::string>& servers);

}  // namespace platform
