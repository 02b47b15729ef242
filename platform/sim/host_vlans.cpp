#include "platform/sim/host_vlans.h"

#include <cstdio>

#include "base/bmc_root.h"
#include "platform/libnic.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

bool valid_port(int port_index) { return port_index >= 0 && port_index < NicGetPortCount(); }

bool valid_number(int number) { return number >= 1 && number <= NIC_MAX_VLANS; }

std::string vlan_key(int port_index, int number) {
    return "Port" + std::to_string(port_index + 1) + ".VLAN" + std::to_string(number);
}

// A stored "<id>,<enabled>"; false for a missing or malformed one.
bool stored_vlan(const pt::ptree& state, int port_index, int number, St_HostNicVlan& vlan) {
    const std::string text = state.get(vlan_key(port_index, number), std::string());
    unsigned id = 0, enabled = 0;
    char end = 0;
    if (std::sscanf(text.c_str(), "%u,%u%c", &id, &enabled, &end) != 2 || id > NIC_MAX_VLAN_ID ||
        enabled > 1)
        return false;
    vlan = {static_cast<uint8_t>(number), static_cast<uint8_t>(enabled), static_cast<uint16_t>(id)};
    return true;
}

void store_vlan(pt::ptree& state, int port_index, const St_HostNicVlan& vlan) {
    state.put(vlan_key(port_index, vlan.number),
              std::to_string(vlan.vlan_id) + "," + (vlan.enabled ? "1" : "0"));
}

// Whether a VLAN of the port other than number has the id.
bool id_in_use(const pt::ptree& state, int port_index, uint16_t vlan_id, int number) {
    St_HostNicVlan other{};
    for (int each = 1; each <= NIC_MAX_VLANS; ++each)
        if (each != number && stored_vlan(state, port_index, each, other) &&
            other.vlan_id == vlan_id)
            return true;
    return false;
}

// Runs change on the port's state under the file's lock; its code, or
// PLT_ERR_IO when the file cannot be written.
template <class change_fn>
int change_vlans(int port_index, change_fn change) {
    if (!valid_port(port_index)) return PLT_ERR_ARGUMENT;
    int code = PLT_OK;
    const bool stored =
        platform::sim::update_state_ini(platform::host_vlans_file(), [&](pt::ptree& state) {
            code = change(state);
            return code >= PLT_OK;
        });
    return code >= PLT_OK && !stored ? PLT_ERR_IO : code;
}

}  // namespace

namespace platform {

const std::string& host_vlans_file() {
    static fixed_bmc_path path("/var/bmc/host_vlans.ini");
    return path.get();
}

}  // namespace platform

extern "C" int NicGetVlans(int port_index, St_HostNicVlan* vlans) {
    if (!vlans || !valid_port(port_index)) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::host_vlans_file());
    int count = 0;
    for (int number = 1; number <= NIC_MAX_VLANS; ++number)
        if (stored_vlan(*state, port_index, number, vlans[count])) ++count;
    return count;
}

extern "C" int NicAddVlan(int port_index, uint16_t vlan_id, uint8_t enabled) {
    if (vlan_id > NIC_MAX_VLAN_ID) return PLT_ERR_ARGUMENT;
    return change_vlans(port_index, [&](pt::ptree& state) {
        if (id_in_use(state, port_index, vlan_id, 0))
            return static_cast<int>(NIC_ERR_VLAN_ID_IN_USE);
        St_HostNicVlan vlan{};
        for (int number = 1; number <= NIC_MAX_VLANS; ++number) {
            if (stored_vlan(state, port_index, number, vlan)) continue;
            store_vlan(state, port_index,
                       {static_cast<uint8_t>(number), enabled ? uint8_t(1) : uint8_t(0), vlan_id});
            return number;
        }
        return static_cast<int>(PLT_ERR_STATE);
    });
}

extern "C" int NicSetVlan(int port_index, const St_HostNicVlan* vlan) {
    if (!vlan || !valid_number(vlan->number) || vlan->vlan_id > NIC_MAX_VLAN_ID)
        return PLT_ERR_ARGUMENT;
    return change_vlans(port_index, [&](pt::ptree& state) {
        St_HostNicVlan stored{};
        if (!stored_vlan(state, port_index, vlan->number, stored))
            return static_cast<int>(PLT_ERR_NOT_FOUND);
        if (id_in_use(state, port_index, vlan->vlan_id, vlan->number))
            return static_cast<int>(NIC_ERR_VLAN_ID_IN_USE);
        store_vlan(state, port_index, *vlan);
        return static_cast<int>(PLT_OK);
    });
}

extern "C" int NicDeleteVlan(int port_index, int number) {
    if (!valid_number(number)) return PLT_ERR_ARGUMENT;
    return change_vlans(port_index, [&](pt::ptree& state) {
        St_HostNicVlan stored{};
        if (!stored_vlan(state, port_index, number, stored))
            return static_cast<int>(PLT_ERR_NOT_FOUND);
        state.get_child("Port" + std::to_string(port_index + 1))
            .erase("VLAN" + std::to_string(number));
        return static_cast<int>(PLT_OK);
    });
}
