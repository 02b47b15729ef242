#include "platform/sim/host_nics.h"

#include <cstring>
#include <iterator>

#include "base/bmc_root.h"
#include "platform/libnic.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

struct port_row {
    uint8_t adapter;
    uint8_t port;
    const char* mac_address;
    bool link_up_by_default;
};

constexpr uint32_t port_speed_mbps = 25000;

constexpr port_row ports[] = {
    {1, 1, "3c:fd:fe:a0:00:01", true},
    {1, 2, "3c:fd:fe:a0:00:02", false},
};

constexpr int port_count = static_cast<int>(std::size(ports));

constexpr St_HostNicAdapter adapters[] = {
    {1, 1, 2, 0x8086, 0x1593, 0x8086, 0x0002, "Example Networks", "EN-OCP3-25G-2P", "EN-25G2P-01",
     "ENS2403000117", "4.40"},
};

constexpr int adapter_count = static_cast<int>(std::size(adapters));

std::string link_key(int port_number) { return "Port" + std::to_string(port_number) + ".Link"; }

bool link_up(int index) {
    const std::string stored = platform::sim::stored_state_ini(platform::host_nics_file())
                                   ->get(link_key(index + 1), std::string());
    if (stored == "up") return true;
    if (stored == "down") return false;
    return ports[index].link_up_by_default;
}

}  // namespace

namespace platform {

const std::string& host_nics_file() {
    static fixed_bmc_path path("/var/bmc/host_nics.ini");
    return path.get();
}

bool set_host_port_link(int port_number, bool up) {
    if (port_number < 1 || port_number > port_count) return false;
    return sim::update_state_ini(host_nics_file(), [&](pt::ptree& state) {
        state.put(link_key(port_number), up ? "up" : "down");
        return true;
    });
}

}  // namespace platform

extern "C" int NicGetPortCount(void) { return port_count; }

extern "C" int NicGetPort(int index, St_HostNicPort* port) {
    if (!port) return PLT_ERR_ARGUMENT;
    if (index < 0 || index >= port_count) return PLT_ERR_NOT_FOUND;
    const port_row& row = ports[index];
    *port = St_HostNicPort{};
    port->adapter = row.adapter;
    port->port = row.port;
    std::strncpy(port->mac_address, row.mac_address, sizeof port->mac_address - 1);
    port->link_up = link_up(index) ? 1 : 0;
    port->speed_mbps = port->link_up ? port_speed_mbps : 0;
    port->max_speed_mbps = port_speed_mbps;
    return PLT_OK;
}

extern "C" int NicGetAdapterCount(void) { return adapter_count; }

extern "C" int NicGetAdapter(int index, St_HostNicAdapter* adapter) {
    if (!adapter) return PLT_ERR_ARGUMENT;
    if (index < 0 || index >= adapter_count) return PLT_ERR_NOT_FOUND;
    *adapter = adapters[index];
    return PLT_OK;
}
