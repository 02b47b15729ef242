// bmcsim hostif: the host interface's switch and addresses, and the host
// firmware's credential.
#include <ostream>

#include "platform/libipmi_users.h"
#include "platform/plt_result.h"
#include "platform/sim/host_interface.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace hostif_commands {

int run_hostif(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if ((command == "on" || command == "off") && words.size() == 1)
        return written(platform::set_host_interface(command == "on"), platform::sim_settings_file(),
                       err);
    if (command == "show" && words.size() == 1) {
        std::string user = platform::host_firmware_user();
        out << (UtilGetHostInterfaceEnable() ? "on" : "off") << '\n' << "addresses:";
        for (const std::string& address : platform::host_interface_addresses())
            out << ' ' << address;
        out << '\n' << "firmware user: " << (user.empty() ? "(none)" : user) << '\n';
        St_HostIfHostNic nic{};
        if (UtilGetHostInterfaceHostNic(&nic) == PLT_OK)
            out << "host nic: " << nic.mac_address << " | " << nic.ipv4_address << '/'
                << nic.subnet_mask << '\n';
        return exit_ok;
    }
    if (command == "hostnic" && words.size() == 4) {
        if (!platform::set_host_interface_host_nic(words[1], words[2], words[3]))
            return usage(self, err);
        return exit_ok;
    }
    if (command == "address" && words.size() == 2 && words[1] == "clear")
        return written(platform::set_host_interface_addresses({}), platform::sim_settings_file(),
                       err);
    if (command == "address" && words.size() >= 2) {
        if (!platform::set_host_interface_addresses({words.begin() + 1, words.end()}))
            return usage(self, err);
        return exit_ok;
    }
    if (command == "credential" && words.size() == 2 && words[1] == "clear")
        return written(platform::set_host_firmware_credential("", ""),
                       platform::sim_settings_file(), err);
    if (command == "credential" && words.size() == 3) {
        if (words[1].empty() || words[2].empty()) return usage(self, err);
        return written(platform::set_host_firmware_credential(words[1], words[2]),
                       platform::sim_settings_file(), err);
    }
    return usage(self, err);
}

}  // namespace hostif_commands

const area hostif_area = {"hostif",
                          "on | off | show | address ADDRESS... | address clear | "
                          "credential NAME PASSWORD | credential clear | hostnic MAC ADDRESS MASK",
                          hostif_commands::run_hostif};

}  // namespace bmcsim
