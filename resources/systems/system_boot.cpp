#include "resources/systems/system_boot.h"

#include <optional>
#include <string>

#include "framework/redfish.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi.h"
#include "resources/systems/bios_boot_settings.h"
#include "resources/systems/boot_override.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

boost::json::array allowable_targets() {
    boost::json::array targets(answer_storage());
    for (std::string_view name : boot_source_names()) targets.emplace_back(name);
    if (uefi_boot_next_allowed()) targets.emplace_back(uefi_boot_next_target);
    targets.emplace_back(uefi_http_target);
    return targets;
}

}  // namespace

boost::json::object boot_object() {
    const uint8_t(&bytes)[2] = at_p_St_GlobalVar->boot_flags;
    const std::optional<std::string> http_uri = http_boot_uri();
    const bool has_http_uri = http_uri && !http_uri->empty();
    boost::json::object boot(answer_storage());
    boot["BootSourceOverrideEnabled"] = setting_name(override_enabled_settings(), bytes[0]);
    boot["BootSourceOverrideMode"] = setting_name(override_mode_settings(), bytes[0]);
    const std::string target = shown_override_target(bytes, boot_next_pending(), has_http_uri);
    if (!target.empty()) boot["BootSourceOverrideTarget"] = target;
    // The boot flags name devices, never a UEFI device path.
    boot["UefiTargetBootSourceOverride"] = nullptr;
    boot["BootSourceOverrideTarget@Redfish.AllowableValues"] = allowable_targets();
    if (http_uri) boot["HttpBootUri"] = *http_uri;
    const bios_boot_options options = read_bios_boot_options();
    if (!options.order.empty()) {
        boot["BootOptions"] = link(std::string(system_uri) + "/BootOptions");
        boot["BootNext"] = options.next;
        boot["BootOrder"] =
            boost::json::array(options.order.begin(), options.order.end(), answer_storage());
    }
    return boot;
}

}  // namespace odata::redfish
