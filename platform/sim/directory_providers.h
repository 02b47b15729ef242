// The simulated external account providers (LDAP, Active Directory,
// RADIUS).
//
// Enabled: LDAP by ServiceEnabled in <root>/nv/redfish/ldap.ini section
// [LDAP], Active Directory by ServiceEnabled in <root>/nv/redfish/ad.ini
// section [ActiveDirectory] (the service writes both files; a key outside
// any section is read when the section has none), RADIUS by [RADIUS]
// Enabled in the simulator settings (sim_settings.h).
//
// Accounts: <root>/nv/bmc/directory_users, a JSON document (mode 0600)
// written through a temporary file and rename under an flock on
// <root>/var/bmc/directory_users.lock:
//   {"format":1,"ldap":[{"name":"...","password":"<salted hash>",
//                        "privilege":4}],"ad":[...],"radius":[...]}
// A provider accepts exactly its accounts (name compared in full), and only
// while it is enabled.
#pragma once

#include <string>
#include <vector>

namespace platform {

enum class directory_provider { ldap, ad, radius };

// "ldap", "ad", "radius".
const char* directory_provider_name(directory_provider provider);
bool parse_directory_provider(const std::string& name, directory_provider& provider);

const std::string& directory_users_file();

// The file that holds the provider's switch.
std::string directory_switch_file(directory_provider provider);

bool directory_provider_enabled(directory_provider provider);

// Writes the switch; for LDAP and Active Directory the other keys of their
// INI file stay as they are. False when it cannot be written (or the INI
// file exists but cannot be parsed).
bool set_directory_provider_enabled(directory_provider provider, bool enabled);

struct directory_account {
    std::string name;
    int privilege;
};

// Adds the account, or replaces the one of that name. Privilege 1 to 4.
bool set_directory_account(directory_provider provider, const std::string& name,
                           const std::string& password, int privilege);
// False when there was no such account or the file cannot be written.
bool remove_directory_account(directory_provider provider, const std::string& name);
std::vector<directory_account> directory_accounts(directory_provider provider);

}  // namespace platform
