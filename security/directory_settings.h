// The external account providers' settings: /nv/redfish/ldap.ini, section
// [LDAP], and /nv/redfish/ad.ini, section [ActiveDirectory]:
//
//   ServiceEnabled=1
//   ServiceAddresses=["ldaps://[fd00::5]:636","ldap://dir.example"]
//   Username=cn=bmc,dc=example,dc=com
//   Password=...
//   BaseDistinguishedNames=["dc=example,dc=com"]     (LDAP only)
//   UsernameAttribute=uid                            (LDAP only)
//   GroupnameAttribute=cn                            (LDAP only)
//   GroupsAttribute=memberOf                         (LDAP only)
//
// Lists are JSON arrays. Role mappings follow as sections
// [RemoteRoleMapping1], [RemoteRoleMapping2], ... with RemoteUser or
// RemoteGroup, and LocalRole. Both files are readable by their owner only.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "framework/ini_settings.h"

namespace odata::redfish {

enum class directory_service { ldap, active_directory };

constexpr std::size_t max_role_mappings = 5;

struct role_mapping {
    std::string remote_user;  // one of these two is set
    std::string remote_group;
    std::string local_role;  // a RoleId
};

struct directory_settings {
    bool enabled = false;
    std::vector<std::string> service_addresses;
    std::string username;
    std::string password;
    std::vector<std::string> base_distinguished_names;
    std::string username_attribute;
    std::string groupname_attribute;
    std::string groups_attribute;
    std::vector<role_mapping> role_mappings;
};

// "LDAP" or "ActiveDirectory": the property, the section and the name that
// messages use.
std::string_view directory_name(directory_service service);

directory_settings read_directory_settings(directory_service service);

// The file that holds the service's settings, for its lock.
const ini_settings& directory_settings_file(directory_service service);

// Puts the service's settings into batch, keeping other sections and keys
// of the file; the caller holds the file's lock. False when the settings
// cannot be written.
bool stage_directory_settings(directory_service service, const directory_settings& settings,
                              settings_batch& batch);

}  // namespace odata::redfish
