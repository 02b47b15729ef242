// The body of a new IP access control rule (POST) or of a change to one
// (PATCH): StartAddress and EndAddress (dotted IPv4; the end defaults to
// the start) and Action (Allow or Deny).
#pragma once

#include <boost/json.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "frontend/message.h"
#include "platform/libipfilter.h"

namespace odata::redfish {

// "a.b.c.d" of an address in host order.
std::string ipv4_text(uint32_t address);

// The rule that body makes of stored (null for a new rule, which must name
// its start and action); none, with the messages in result, when it is
// refused.
std::optional<St_IpFilterRule> read_filter_rule(const boost::json::object& body,
                                                const St_IpFilterRule* stored,
                                                result_record& result);

}  // namespace odata::redfish
