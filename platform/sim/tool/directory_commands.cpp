// bmcsim directory: the external account providers LDAP, Active Directory
// and RADIUS: their switches and the accounts they accept.
#include <ostream>

#include "platform/libdirectory.h"
#include "platform/sim/directory_providers.h"
#include "platform/sim/radius_client.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace directory_commands {

int failed(std::ostream& err, const std::string& why) {
    err << "bmcsim: " << why << '\n';
    return exit_failed;
}

// Never the secret itself.
void show_radius_client(std::ostream& out) {
    St_RadiusConfig config;
    if (PltRADIUS_GetConfig(&config) != PLT_OK) return;
    out << "server=" << config.server << '\n'
        << "port=" << config.port << '\n'
        << "timeout=" << static_cast<int>(config.timeout_seconds) << '\n'
        << "secret=" << (config.secret_set ? "set" : "unset") << '\n';
}

int show(platform::directory_provider provider, std::ostream& out) {
    out << (platform::directory_provider_enabled(provider) ? "enabled" : "disabled") << '\n';
    if (provider == platform::directory_provider::radius) show_radius_client(out);
    for (const auto& account : platform::directory_accounts(provider))
        out << account.name << ' ' << account.privilege << ' ' << role_name(account.privilege)
            << '\n';
    return exit_ok;
}

int run_directory(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    platform::directory_provider provider;
    if (words.size() < 2 || !platform::parse_directory_provider(words[0], provider))
        return usage(self, err);
    const std::string& command = words[1];
    if ((command == "enable" || command == "disable") && words.size() == 2) {
        if (platform::set_directory_provider_enabled(provider, command == "enable")) return exit_ok;
        return failed(err, "cannot write " + platform::directory_switch_file(provider));
    }
    if (command == "show" && words.size() == 2) return show(provider, out);
    if (command == "server" && words.size() == 3 &&
        provider == platform::directory_provider::radius) {
        if (platform::set_radius_server(words[2])) return exit_ok;
        return failed(err, "cannot set the RADIUS server in " + platform::radius_settings_file());
    }
    if (command == "user" && words.size() == 5) {
        int level = 0;
        if (words[2].empty() || words[3].empty() || !parse_privilege(words[4], level))
            return usage(self, err);
        if (platform::set_directory_account(provider, words[2], words[3], level)) return exit_ok;
        return failed(err, "cannot write " + platform::directory_users_file());
    }
    if (command == "remove" && words.size() == 3) {
        if (platform::remove_directory_account(provider, words[2])) return exit_ok;
        return failed(err, "no " + words[0] + " account " + words[2] + " removed");
    }
    return usage(self, err);
}

}  // namespace directory_commands

const area directory_area = {
    "directory",
    "ldap|ad|radius enable | disable | show | user NAME PASSWORD LEVEL | remove NAME"
    " | radius server HOST",
    directory_commands::run_directory};

}  // namespace bmcsim
