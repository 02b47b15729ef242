// A drive in the enclosure of a RAID controller, with its actions.
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_sensors.h"
#include "platform/libraid.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/systems/raid_paths.h"

namespace odata::redfish {
namespace {

int drive_health(const St_RaidDrive& drive) {
    return drive.state == RAID_DRIVE_FAILED     ? SENSOR_HEALTH_CRITICAL
           : drive.state == RAID_DRIVE_REPLACED ? SENSOR_HEALTH_WARNING
                                                : SENSOR_HEALTH_OK;
}

boost::json::object drive_actions(const std::string& uri) {
    return boost::json::object(
        {{"#Drive.SecureErase", {{"target", uri + "/Actions/Drive.SecureErase"}}},
         {"Oem",
          {{"#TwrDrive.Indicate",
            {{"target", uri + "/Actions/Oem/TwrDrive.Indicate"},
             {"@Redfish.ActionInfo", uri + "/IndicateActionInfo"}}},
           {"#TwrDrive.SecureEraseAbort",
            {{"target", uri + "/Actions/Oem/TwrDrive.SecureEraseAbort"}}}}}},
        answer_storage());
}

}  // namespace

void diskdrive::set_raid_drive(const raid_drive_ref& ref) {
    St_RaidDrive drive{};
    if (UtilRaidGetDrive(ref.family->family, ref.controller, ref.bay, &drive) != PLT_OK)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Drive", context_.uri});
    uri_ = raid_drive_uri(ref);
    name_ = sata_bay_name(ref.bay);
    set_common_properties();
    set("Status", status_object(drive_health(drive)));
    set("Model", drive.model);
    set("SerialNumber", drive.serial_number);
    set("CapacityBytes", drive.capacity_bytes);
    set("MediaType", "SSD");
    set("Protocol", "SAS");
    set("IndicatorLED", drive.locating ? "Blinking" : "Off");
    if (drive.erase_percent >= 0 && drive.erase_percent < 100)
        set("Operations", boost::json::array{{{"OperationName", "SecureErase"},
                                              {"PercentageComplete", drive.erase_percent}}});
    boost::json::array volumes;
    if (drive.volume >= 0)
        volumes.push_back(link(raid_volume_uri({ref.family, ref.controller, drive.volume})));
    set("Links", {{"Chassis", link(raid_enclosure_uri(*ref.family, ref.controller))},
                  {"Volumes", std::move(volumes)}});
    set("Actions", drive_actions(uri_));
}

}  // namespace odata::redfish
