// SNMPv3 protocol names of the ManagerAccount resource and the platform's
// codes for them.
#pragma once

#include <optional>
#include <string_view>

namespace odata::redfish {

enum class snmp_protocol_kind { authentication, encryption };

// The code of a protocol name; none for a name the kind does not have.
std::optional<int> snmp_protocol_code(snmp_protocol_kind kind, std::string_view name);

// The name of a code; "None" for a code the kind does not have.
std::string_view snmp_protocol_name(snmp_protocol_kind kind, int code);

}  // namespace odata::redfish
