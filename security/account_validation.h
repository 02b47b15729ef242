// Validators of the ManagerAccount properties that POST and PATCH accept.
// Each adds its messages to the result and gives the accepted value, or
// nothing when the value is refused.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "framework/property_checks.h"
#include "frontend/message.h"

namespace odata::redfish {

constexpr std::size_t min_user_name_length = 4;
constexpr std::size_t max_user_name_length = 15;
constexpr std::size_t max_role_id_length = 15;
constexpr std::size_t min_snmp_key_length = 8;

// The SNMPv3 settings of a request: what it names, nothing for the rest.
struct snmp_settings {
    std::optional<int> authentication_protocol;
    std::optional<std::string> authentication_key;
    std::optional<int> encryption_protocol;
    std::optional<std::string> encryption_key;
};

// A name for the account in slot: 4 to 15 characters without blanks or
// control characters, used by no other slot (ActionParameterDuplicate of
// action otherwise).
std::optional<std::string> validate_user_name(const boost::json::value& value, int slot,
                                              const std::string& action, result_record& result);

// 8 to 20 characters, and the platform's complexity rule while it is on.
std::optional<std::string> validate_password(const boost::json::value& value,
                                             result_record& result);

// The privilege level of a RoleId. The reserved administrator (account 2)
// keeps its role.
std::optional<int> validate_role_id(const boost::json::value& value, int account_id,
                                    result_record& result);

// A non-empty array of "Redfish" and "SNMP".
bool validate_account_types(const boost::json::value& value, result_record& result);

// Only false is accepted: it unlocks the account.
bool validate_unlock(const boost::json::value& value, result_record& result);

// The "SNMP" object.
std::optional<snmp_settings> validate_snmp(const boost::json::value& value,
                                           const unknown_property& unknown, result_record& result);

// At least 8 characters with a lower-case letter, an upper-case letter and a digit.
bool is_legal_snmp_key(std::string_view key);

}  // namespace odata::redfish
