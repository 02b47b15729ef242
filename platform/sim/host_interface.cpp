#include "platform/sim/host_interface.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <cstdlib>

#include "platform/libipmi_users.h"
#include "platform/sim/password_hash.h"
#include "platform/sim/sim_settings.h"

namespace pt = boost::property_tree;

namespace platform {

bool set_host_interface(bool enabled) {
    return set_sim_setting("HostInterface.Enabled", enabled ? "1" : "0");
}

bool set_host_firmware_credential(const std::string& name, const std::string& password) {
    if (name.empty())
        return update_sim_settings([](pt::ptree& tree) {
            if (auto section = tree.get_child_optional("HostInterface")) {
                section->erase("FirmwareUser");
                section->erase("FirmwarePassword");
            }
            return true;
        });
    if (password.empty()) return false;
    for (char c : name)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return false;
    std::string hash = sim::hash_secret(password);
    return !hash.empty() && update_sim_settings([&](pt::ptree& tree) {
        tree.put("HostInterface.FirmwareUser", name);
        tree.put("HostInterface.FirmwarePassword", hash);
        return true;
    });
}

bool set_host_interface_addresses(const std::vector<std::string>& addresses) {
    constexpr size_t max_addresses = 8;
    constexpr size_t max_address_length = 45;
    if (addresses.size() > max_addresses) return false;
    std::string joined;
    for (const std::string& address : addresses) {
        if (address.empty() || address.size() > max_address_length ||
            address.find_first_not_of("0123456789abcdefABCDEF.:") != std::string::npos)
            return false;
        joined += (joined.empty() ? "" : " ") + address;
    }
    return set_sim_setting("HostInterface.Addresses", joined);
}

std::vector<std::string> host_interface_addresses() {
    std::vector<std::string> addresses;
    const std::string text = sim_setting_text("HostInterface.Addresses");
    boost::algorithm::split(addresses, text, boost::algorithm::is_space(),
                            boost::algorithm::token_compress_on);
    addresses.erase(std::remove(addresses.begin(), addresses.end(), std::string()),
                    addresses.end());
    return addresses;
}

std::string host_firmware_user() { return sim_setting_text("HostInterface.FirmwareUser"); }

}  // namespace platform

extern "C" int UtilGetHostInterfaceEnable(void) {
    return platform::sim_setting_number("HostInterface.Enabled", 0) != 0 ? 1 : 0;
}

// The web server names the address the request arrived on.
extern "C" int UtilIsHostInterface(void) {
    const char* arrived_on = std::getenv("SERVER_ADDR");
    if (!arrived_on || !UtilGetHostInterfaceEnable()) return 0;
    const std::vector<std::string> own = platform::host_interface_addresses();
    return std::find(own.begin(), own.end(), arrived_on) != own.end() ? 1 : 0;
}

// 1 when name and password are the host firmware's credential (with a null
// password: when the credential is the name's), else 0.
extern "C" int UtilIsExistHostFWUserInfo(const char* name, const char* password) {
    if (!name || !*name) return 0;
    pt::ptree tree;
    if (!platform::sim::read_ini(platform::sim_settings_file(), tree)) return 0;
    std::string user = tree.get("HostInterface.FirmwareUser", std::string());
    std::string hash = tree.get("HostInterface.FirmwarePassword", std::string());
    return !user.empty() && user == name &&
                   (!password || platform::sim::verify_secret(hash, password))
               ? 1
               : 0;
}
