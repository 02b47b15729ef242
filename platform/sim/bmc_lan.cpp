#include "platform/sim/bmc_lan.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstring>

#include "base/bmc_root.h"
#include "platform/liblan.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

struct service_default {
    const char* name;
    bool enabled;
    uint16_t port;
};

constexpr service_default service_defaults[NET_SERVICE_COUNT] = {
    {"HTTP", true, 80}, {"HTTPS", true, 443}, {"IPMI", true, 623},
    {"SSH", true, 22},  {"NTP", false, 123},  {"SNMP", true, 161},
};

bool is_dotted_quad(const char* text, uint32_t& address) {
    in_addr parsed{};
    if (inet_pton(AF_INET, text, &parsed) != 1) return false;
    address = ntohl(parsed.s_addr);
    return true;
}

// Ones followed by zeros, and not all zeros.
bool is_contiguous_mask(uint32_t mask) { return mask != 0 && ((~mask + 1) & ~mask) == 0; }

// Stays on one line of the settings file.
bool is_storable_name(const char* name) {
    const std::size_t length = std::strlen(name);
    return length > 0 && name[0] != ' ' && name[length - 1] != ' ' &&
           std::none_of(name, name + length,
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

std::string service_key(int service, const char* field) {
    return std::string("Services.") + service_defaults[service].name + field;
}

}  // namespace

namespace platform {

const std::string& lan_settings_file() {
    static fixed_bmc_path path("/nv/bmc/lan.ini");
    return path.get();
}

const char* net_service_name(int service) {
    return service >= 0 && service < NET_SERVICE_COUNT ? service_defaults[service].name : nullptr;
}

int find_net_service(const std::string& name) {
    for (int service = 0; service < NET_SERVICE_COUNT; ++service)
        if (name == service_defaults[service].name) return service;
    return -1;
}

bool valid_ipv4_subnet(const char* address, const char* subnet_mask) {
    uint32_t parsed = 0, mask = 0;
    return is_dotted_quad(address, parsed) && is_dotted_quad(subnet_mask, mask) &&
           is_contiguous_mask(mask);
}

bool valid_lan_config(const St_LanConfig& config) {
    uint32_t gateway = 0;
    return valid_ipv4_subnet(config.ipv4_address, config.subnet_mask) &&
           is_dotted_quad(config.gateway, gateway) && is_storable_name(config.host_name);
}

void put_lan_config(pt::ptree& state, const St_LanConfig& config) {
    state.put("LAN.DHCPEnabled", config.dhcp_enabled ? 1 : 0);
    state.put("LAN.Address", std::string(config.ipv4_address));
    state.put("LAN.SubnetMask", std::string(config.subnet_mask));
    state.put("LAN.Gateway", std::string(config.gateway));
    state.put("LAN.HostName", std::string(config.host_name));
}

void put_net_service(pt::ptree& state, int service, const St_NetService& setting) {
    state.put(service_key(service, "Enabled"), setting.enabled ? 1 : 0);
    state.put(service_key(service, "Port"), setting.port);
}

bool set_lan_link(bool up, int speed_mbps) {
    if (speed_mbps < 0 || speed_mbps > 100000) return false;
    return sim::update_state_ini(lan_settings_file(), [&](pt::ptree& state) {
        state.put("LAN.LinkUp", up ? 1 : 0);
        state.put("LAN.SpeedMbps", speed_mbps);
        return true;
    });
}

bool set_lan_dns(const std::string& domain, const std::vector<std::string>& servers) {
    if (servers.size() > LAN_NAME_SERVERS || domain.size() >= LAN_HOST_NAME_SIZE ||
        (!domain.empty() && !is_storable_name(domain.c_str())))
        return false;
    for (const std::string& server : servers) {
        uint32_t address = 0;
        if (!is_dotted_quad(server.c_str(), address)) return false;
    }
    return sim::update_state_ini(lan_settings_file(), [&](pt::ptree& state) {
        state.put("LAN.DomainName", domain);
        for (std::size_t index = 0; index < LAN_NAME_SERVERS; ++index)
            state.put("LAN.NameServer" + std::to_string(index + 1),
                      index < servers.size() ? servers[index] : std::string());
        return true;
    });
}

}  // namespace platform

extern "C" int PltLAN_GetConfig(St_LanConfig* config) {
    if (!config) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::lan_settings_file());
    *config = {};
    platform::sim::copy_text(config->mac_address,
                             state->get("LAN.MACAddress", std::string("02:00:5e:10:00:01")));
    config->link_up = state->get("LAN.LinkUp", 1) != 0;
    config->speed_mbps = static_cast<uint16_t>(state->get("LAN.SpeedMbps", 1000));
    config->dhcp_enabled = state->get("LAN.DHCPEnabled", 0) != 0;
    platform::sim::copy_text(config->ipv4_address,
                             state->get("LAN.Address", std::string("192.168.0.120")));
    platform::sim::copy_text(config->subnet_mask,
                             state->get("LAN.SubnetMask", std::string("255.255.255.0")));
    platform::sim::copy_text(config->gateway,
                             state->get("LAN.Gateway", std::string("192.168.0.1")));
    platform::sim::copy_text(config->host_name, state->get("LAN.HostName", std::string("bmc")));
    platform::sim::copy_text(config->domain_name,
                             state->get("LAN.DomainName", std::string("localdomain")));
    platform::sim::copy_text(config->name_servers[0],
                             state->get("LAN.NameServer1", std::string("192.168.0.1")));
    platform::sim::copy_text(config->name_servers[1], state->get("LAN.NameServer2", std::string()));
    return PLT_OK;
}

extern "C" int PltLAN_SetConfig(const St_LanConfig* config) {
    if (!config || !platform::valid_lan_config(*config)) return PLT_ERR_ARGUMENT;
    const bool written =
        platform::sim::update_state_ini(platform::lan_settings_file(), [&](pt::ptree& state) {
            platform::put_lan_config(state, *config);
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}

extern "C" int PltNET_GetService(int service, St_NetService* state) {
    if (!state || !platform::net_service_name(service)) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> stored =
        platform::sim::stored_state_ini(platform::lan_settings_file());
    state->enabled = stored->get(service_key(service, "Enabled"),
                                 service_defaults[service].enabled ? 1 : 0) != 0;
    state->port = stored->get(service_key(service, "Port"), service_defaults[service].port);
    return PLT_OK;
}

extern "C" int PltNET_SetService(int service, const St_NetService* state) {
    if (!state || state->port == 0 || !platform::net_service_name(service)) return PLT_ERR_ARGUMENT;
    const bool written =
        platform::sim::update_state_ini(platform::lan_settings_file(), [&](pt::ptree& stored) {
            platform::put_net_service(stored, service, *state);
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}

extern "C" int PltIPMI_GetRakpRequired(void) {
    const std::shared_ptr<const pt::ptree> stored =
        platform::sim::stored_state_ini(platform::lan_settings_file());
    return stored->get("IPMI.RAKPRequired", 1) != 0 ? 1 : 0;
}

extern "C" int PltIPMI_SetRakpRequired(int required) {
    if (required != 0 && required != 1) return PLT_ERR_ARGUMENT;
    const bool written =
        platform::sim::update_state_ini(platform::lan_settings_file(), [&](pt::ptree& stored) {
            stored.put("IPMI.RAKPRequired", required);
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}
