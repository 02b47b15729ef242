// bmcsim vlans: the VLANs of the host's network ports.
#include <ostream>
#include <string>

#include "platform/libnic.h"
#include "platform/sim/host_vlans.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace vlans_commands {

int show(std::ostream& out) {
    for (int port = 0; port < NicGetPortCount(); ++port) {
        St_HostNicVlan vlans[NIC_MAX_VLANS];
        const int count = NicGetVlans(port, vlans);
        for (int i = 0; i < count; ++i)
            out << "port" << port + 1 << " vlan" << int(vlans[i].number) << ": id "
                << vlans[i].vlan_id << " | " << (vlans[i].enabled ? "on" : "off") << '\n';
    }
    return exit_ok;
}

int changed(int code, std::ostream& err) {
    if (code >= PLT_OK) return exit_ok;
    if (code == PLT_ERR_STATE) err << "bmcsim: the port has " << NIC_MAX_VLANS << " VLANs\n";
    if (code == NIC_ERR_VLAN_ID_IN_USE) err << "bmcsim: another VLAN of the port has that id\n";
    if (code == PLT_ERR_NOT_FOUND) err << "bmcsim: no such VLAN\n";
    if (code == PLT_ERR_IO) err << "bmcsim: cannot write " << platform::host_vlans_file() << '\n';
    return exit_failed;
}

int run_vlans(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    long long port = 0, number = 0;
    if (words.size() < 3 || !parse_number(words[1], 1, NicGetPortCount(), port))
        return usage(self, err);
    const bool on = words.size() == 4 && words[3] == "on";
    if (command == "add" && words.size() == 4 && (on || words[3] == "off") &&
        parse_number(words[2], 0, NIC_MAX_VLAN_ID, number))
        return changed(NicAddVlan(int(port - 1), uint16_t(number), on ? 1 : 0), err);
    if (command == "delete" && words.size() == 3 &&
        parse_number(words[2], 1, NIC_MAX_VLANS, number))
        return changed(NicDeleteVlan(int(port - 1), int(number)), err);
    return usage(self, err);
}

}  // namespace vlans_commands

const area vlans_area = {"vlans", "show | add PORT VLANID on|off | delete PORT VLAN",
                         vlans_commands::run_vlans};

}  // namespace bmcsim
