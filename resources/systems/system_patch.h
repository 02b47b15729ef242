// A PATCH of the computer system: every property is read in one pass that
// collects what is wrong, and nothing changes unless all of it is right.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "frontend/message.h"
#include "resources/systems/boot_override.h"

namespace odata::redfish {

struct system_changes {
    std::optional<std::string> indicator_led;
    const St_BootFlagEntry* boot_source = nullptr;
    bool uefi_boot_next = false;  // the "UefiBootNext" target: BootNext does the work
    const byte1_setting* override_mode = nullptr;
    const byte1_setting* override_enabled = nullptr;
    std::optional<std::string> http_boot_uri;
    std::optional<std::string> boot_next;
    std::optional<std::vector<std::string>> boot_order;
};

// Under system lockdown only IndicatorLED may be patched.
system_changes read_system_changes(const boost::json::object& body, bool lockdown,
                                   result_record& result);

// Applies the changes in this order: IndicatorLED, BootSourceOverrideTarget,
// BootSourceOverrideMode, BootSourceOverrideEnabled, HttpBootUri, BootNext,
// BootOrder. False (logged) when the platform refused one of them; what was
// applied before it is then put back.
bool apply_system_changes(const system_changes& changes);

}  // namespace odata::redfish
