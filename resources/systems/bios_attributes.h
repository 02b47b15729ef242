// The BIOS setup attributes: their current values as the BIOS last
// reported them, the changes waiting for the next boot, and the checks a
// change must pass.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string_view>

#include "framework/property_checks.h"
#include "platform/libbios.h"

namespace odata::redfish {

// The attribute of that name in the platform's table, or null.
const St_BiosAttribute* find_bios_attribute(std::string_view name);

// The registered attributes that the BIOS last reported; empty before it
// has reported any.
boost::json::object current_bios_attributes();

// The changes handed to the BIOS for its next boot.
boost::json::object pending_bios_attributes();

// Checks the members of an "Attributes" object of a request against the
// table; the ones that pass go into changes.
void read_bios_attribute_changes(const request_member& attributes, boost::json::object& changes,
                                 result_record& result);

// Adds changes to the pending ones, under the hand-over file's lock.
bool add_pending_bios_attributes(const boost::json::object& changes);

// The table's default of every writable attribute, as pending changes
// would carry it.
boost::json::object default_bios_attributes();

// The attribute's value the BIOS last reported, else its default; null
// when the table has no such attribute.
std::optional<boost::json::value> reported_or_default(std::string_view name);

}  // namespace odata::redfish
