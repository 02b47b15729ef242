#include "platform/sim/host_interface.h"

#include "platform/libipmi_users.h"
#include "platform/plt_result.h"
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

std::string host_firmware_user() { return sim_setting_text("HostInterface.FirmwareUser"); }

}  // namespace platform

extern "C" int UtilIsHostInterface(void) {
    return platform::sim_setting_number("HostInterface.Enabled", 0) != 0 ? 1 : 0;
}

extern "C" int UtilSetHostInterface(int enabled) {
    return platform::set_host_interface(enabled != 0) ? PLT_OK : PLT_ERR_IO;
}

// 1 when name and password are the host firmware's credential, else 0.
extern "C" int UtilIsExistHostFWUserInfo(const char* name, const char* password) {
    if (!name || !password || !*name) return 0;
    pt::ptree tree;
    if (!platform::sim::read_ini(platform::sim_settings_file(), tree)) return 0;
    std::string user = tree.get("HostInterface.FirmwareUser", std::string());
    std::string hash = tree.get("HostInterface.FirmwarePassword", std::string());
    return !user.empty() && user == name && platform::sim::verify_secret(hash, password) ? 1 : 0;
}
