// bmcsim bios: BIOS version, update mode, HII configuration, password and
// Secure Boot keys.
#include <ostream>
#include <string>

#include "platform/libbios.h"
#include "platform/libipmi.h"
#include "platform/sim/bios_attributes.h"
#include "platform/sim/bios_config.h"
#include "platform/sim/bios_security.h"
#include "platform/sim/smbios_store.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace bios_commands {

constexpr uint32_t bios_update_mode = 2;

int show(std::ostream& out, std::ostream& err) {
    if (!attach_shared_state(err)) return exit_failed;
    char version[64] = "";
    int result = UtilGetLatestBiosRev(version, sizeof version);
    out << "version=" << (result == PLT_OK ? version : "unknown") << '\n'
        << "update_mode="
        << ((at_p_St_GlobalVar->fw_update_flags & bios_update_mode) ? "on" : "off") << '\n'
        << "hii=" << (isNewHIISupport() ? "on" : "off") << '\n'
        << "boot_order=";
    const char* separator = "";
    for (const std::string& option : platform::pending_boot_order()) {
        out << separator << option;
        separator = ",";
    }
    out << '\n' << "admin_password=" << platform::bios_password_state() << '\n';
    St_SecureBootKeys keys{};
    if (UtilGetSecureBootKeys(&keys) != PLT_OK) return exit_failed;
    out << "secure_boot_keys=PK:" << keys.pk << ",KEK:" << keys.kek << ",db:" << keys.db
        << ",dbx:" << keys.dbx << '\n'
        << "secure_boot_mode=" << (keys.pk > 0 ? "UserMode" : "SetupMode") << '\n';
    return exit_ok;
}

int update_mode(bool on, std::ostream& err) {
    if (!attach_shared_state(err)) return exit_failed;
    if (on)
        at_p_St_GlobalVar->fw_update_flags |= bios_update_mode;
    else
        at_p_St_GlobalVar->fw_update_flags &= ~bios_update_mode;
    return exit_ok;
}

int hii(bool on, std::ostream& err) {
    if (platform::set_hii_supported(on)) return exit_ok;
    err << "bmcsim: cannot write " << platform::bios_config_file() << '\n';
    return exit_failed;
}

int post(std::ostream& err) {
    if (platform::post_bios_settings() && platform::post_bios_version() &&
        platform::post_bios_password())
        return exit_ok;
    err << "bmcsim: cannot write the BIOS attributes, password or SMBIOS table\n";
    return exit_failed;
}

int run_bios(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out, err);
    if (command == "post" && words.size() == 1) return post(err);
    bool on = words.size() == 2 && words[1] == "on";
    bool off = words.size() == 2 && words[1] == "off";
    if (command == "update-mode" && (on || off)) return update_mode(on, err);
    if (command == "hii" && (on || off)) return hii(on, err);
    return usage(self, err);
}

}  // namespace bios_commands

const area bios_area = {"bios", "show | update-mode on|off | hii on|off | post",
                        bios_commands::run_bios};

}  // namespace bmcsim
