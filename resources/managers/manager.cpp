#include "resources/managers/manager.h"

#include "base/utc_time.h"
#include "framework/device_uuid.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "platform/libbmc.h"
#include "platform/libipmi.h"
#include "platform/libipmi_sensors.h"
#include "platform/libweb.h"
#include "resources/managers/manager_reset.h"
#include "resources/managers/manager_settings_uris.h"
#include "resources/managers/manager_uris.h"

namespace odata::redfish {
namespace {

constexpr int firmware_version_size = 64;

constexpr const char* service_links[][2] = {
    {"NetworkProtocol", manager_network_protocol_uri},
    {"EthernetInterfaces", manager_ethernet_interfaces_uri},
    {"SerialInterfaces", manager_serial_interfaces_uri},
    {"HostInterfaces", manager_host_interfaces_uri},
    {"LogServices", manager_log_services_uri},
    {"VirtualMedia", manager_virtual_media_uri},
};

// The manager's own settings, under "Oem"/"Tarnwright".
constexpr const char* oem_links[][2] = {
    {"NTP", manager_ntp_uri},
    {"Syslog", manager_syslog_uri},
    {"IPAccessControl", manager_ip_access_control_uri},
    {"KCSInterface", manager_kcs_interface_uri},
    {"SysLockdown", manager_sys_lockdown_uri},
    {"SmartPower", manager_smart_power_uri},
    {"RADIUS", manager_radius_uri},
    {"MouseMode", manager_mouse_mode_uri},
    {"TWRRAKP", manager_rakp_uri},
    {"Snooping", manager_snooping_uri},
    {"FanMode", manager_fan_mode_uri},
    {"IKVM", manager_ikvm_uri},
};

boost::json::object oem() {
    boost::json::object tarnwright(answer_storage());
    for (const auto& [name, uri] : oem_links) tarnwright[name] = link(uri);
    return boost::json::object({{"Tarnwright", std::move(tarnwright)}}, answer_storage());
}

boost::json::object links() {
    return boost::json::object({{"ManagerForServers", link_array("/redfish/v1/Systems/1")},
                                {"ManagerForChassis", link_array("/redfish/v1/Chassis/1")},
                                {"ManagerInChassis", link("/redfish/v1/Chassis/1")}},
                               answer_storage());
}

// The allowable values also stand in the action: clients such as sushy
// read them there.
boost::json::object actions() {
    boost::json::array reset_types(answer_storage());
    for (std::string_view name : manager_reset_type_names()) reset_types.emplace_back(name);
    return boost::json::object(
        {{"#Manager.Reset",
          {{"target", manager_reset_target_uri},
           {"ResetType@Redfish.AllowableValues", std::move(reset_types)},
           {"@Redfish.ActionInfo", manager_reset_actioninfo_uri}}},
         {"Oem", {{"#TwrManagerConfig.Reset", {{"target", manager_config_reset_uri}}}}}},
        answer_storage());
}

}  // namespace

manager::manager(request_context& context)
    : redfish(context, "Manager", std::string(schema_file_of("Manager").version), "Manager",
              manager_uri) {}

int manager::get(request_context&) {
    set_common_properties();
    set("Description", "Baseboard Management Controller");
    set("ManagerType", "BMC");
    if (const std::string uuid = device_uuid_text(); !uuid.empty()) {
        set("UUID", uuid);
        set("ServiceEntryPointUUID", uuid);
    }
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("PowerState", "On");
    char version[firmware_version_size] = "";
    if (UtilGetBmcFwVersion(version, sizeof version) == PLT_OK)
        set("FirmwareVersion", version);
    else
        console_log("[ERROR] Manager: no firmware version\n");
    set("DateTime", platform::utc_timestamp(lx_time_get()));
    set("DateTimeLocalOffset", "+00:00");
    for (const auto& [name, uri] : service_links) set(name, link(uri));
    set("Links", links());
    set("Actions", actions());
    set("Oem", oem());
    return 0;
}

}  // namespace odata::redfish
