// Validators of the external account providers' settings (the LDAP and
// ActiveDirectory objects of an AccountService PATCH). Each adds its
// messages to the result and gives the accepted value, or nothing.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/message.h"
#include "security/directory_settings.h"

namespace odata::redfish {

// Why an address is refused, if it is.
enum class address_fault { none, bad_address, bad_port };

// "ldap://" or "ldaps://", a host (an IPv6 literal in brackets), and
// optionally ":" and a port from 1 to 65535.
address_fault check_service_address(std::string_view address);

// The ServiceAddresses array at path.
std::optional<std::vector<std::string>> validate_service_addresses(const boost::json::value& value,
                                                                   const std::string& path,
                                                                   result_record& result);

// A non-empty text that the settings file can hold.
std::optional<std::string> validate_directory_text(const boost::json::value& value,
                                                   const std::string& path, result_record& result,
                                                   bool secret = false);

// An array of such texts (BaseDistinguishedNames).
std::optional<std::vector<std::string>> validate_directory_texts(const boost::json::value& value,
                                                                 const std::string& path,
                                                                 result_record& result);

// The RemoteRoleMapping array at path over the stored entries: an entry
// {} keeps the stored one, null removes it, an object changes or adds one;
// stored entries after the array's end are dropped.
std::optional<std::vector<role_mapping>> validate_role_mappings(
    const boost::json::value& value, const std::vector<role_mapping>& stored,
    const std::string& path, result_record& result);

}  // namespace odata::redfish
