#include "platform/sim/host_interface.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <cctype>
#include <cstdlib>

#include "platform/libipmi_users.h"
#include "platform/plt_result.h"
#include "platform/sim/bmc_lan.h"
#include "platform/sim/password_hash.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/sim_settings.h"

namespace pt = boost::property_tree;

namespace {

constexpr const char* default_host_mac = "02:1a:2b:3c:4d:02";
constexpr const char* default_host_address = "169.254.0.18";
constexpr const char* default_host_mask = "255.255.0.0";

// Six hexadecimal pairs joined by colons.
bool valid_mac_address(const std::string& text) {
    if (text.size() != 17) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool colon = i % 3 == 2;
        if (colon ? text[i] != ':' : !std::isxdigit(static_cast<unsigned char>(text[i])))
            return false;
    }
    return true;
}

}  // namespace

namespace platform {

bool set_host_interface_host_nic(const std::string& mac_address, const std::string& ipv4_address,
                                 const std::string& subnet_mask) {
    if (!valid_mac_address(mac_address) ||
        !valid_ipv4_subnet(ipv4_address.c_str(), subnet_mask.c_str()))
        return false;
    return update_sim_settings([&](pt::ptree& tree) {
        tree.put("HostInterface.HostMAC", mac_address);
        tree.put("HostInterface.HostAddress", ipv4_address);
        tree.put("HostInterface.HostSubnetMask", subnet_mask);
        return true;
    });
}

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

extern "C" int UtilSetHostInterface(int enabled) {
    return platform::set_host_interface(enabled != 0) ? PLT_OK : PLT_ERR_IO;
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

extern "C" int UtilGetHostInterfaceHostNic(St_HostIfHostNic* nic) {
    if (!nic) return PLT_ERR_ARGUMENT;
    using platform::sim_setting_text;
    platform::sim::copy_text(nic->mac_address,
                             sim_setting_text("HostInterface.HostMAC", default_host_mac));
    platform::sim::copy_text(nic->ipv4_address,
                             sim_setting_text("HostInterface.HostAddress", default_host_address));
    platform::sim::copy_text(nic->subnet_mask,
                             sim_setting_text("HostInterface.HostSubnetMask", default_host_mask));
    return PLT_OK;
}
