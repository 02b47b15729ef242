// The storage member of a RAID controller family: its controllers, the
// drives in their enclosures, its volumes and the actions that change them.
#include "base/joined_text.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi_sensors.h"
#include "platform/libraid.h"
#include "resources/systems/raid_paths.h"
#include "resources/systems/storage.h"

namespace odata::redfish {
namespace {

boost::json::object controller_entry(const raid_family& family, int controller) {
    St_RaidController info{};
    UtilRaidGetController(family.family, controller, &info);
    boost::json::array raid_types(answer_storage());
    for (std::string_view name : raid_type_names()) raid_types.emplace_back(name);
    return boost::json::object(
        {{"@odata.id",
          raid_storage_uri(family) + "#/StorageControllers/" + std::to_string(controller)},
         {"MemberId", std::to_string(controller)},
         {"Name", "Controller " + std::to_string(controller)},
         {"Model", info.model},
         {"Status", status_object(SENSOR_HEALTH_OK)},
         {"SupportedRAIDTypes", std::move(raid_types)},
         {"SupportedDeviceProtocols", {"SAS", "SATA"}},
         {"Oem",
          {{"Tarnwright",
            {{"@odata.type", "#TwrStorageExtensions.v1_0_0.StorageController"},
             {"ConfigurationSaved", info.saved != 0}}}}}},
        answer_storage());
}

boost::json::object action(const std::string& storage_uri, const char* name,
                           const char* actioninfo) {
    return boost::json::object(
        {{"target", platform::joined({storage_uri, "/Actions/Oem/", name})},
         {"@Redfish.ActionInfo", platform::joined({storage_uri, "/Oem/Tarnwright/", actioninfo})}},
        answer_storage());
}

boost::json::object storage_actions(const raid_family& family) {
    const std::string uri = raid_storage_uri(family);
    if (family.family == RAID_FAMILY_MARVELL)
        return boost::json::object(
            {{"#TwrStorage.CreateVD", action(uri, "TwrStorage.CreateVD", "CreateVDActionInfo")}},
            answer_storage());
    return boost::json::object(
        {{"#TwrStorage.CreateVolume",
          action(uri, "TwrStorage.CreateVolume", "CreateVolumeActionInfo")},
         {"#TwrStorage.ClearVolumes",
          action(uri, "TwrStorage.ClearVolumes", "ClearVolumesActionInfo")},
         {"#TwrHARAIDController.Save", action(uri, "TwrHARAIDController.Save", "SaveActionInfo")}},
        answer_storage());
}

}  // namespace

void storage::set_raid_storage(const raid_family& family) {
    uri_ = raid_storage_uri(family);
    name_ = std::string(family.storage_id) + " Storage";
    set_common_properties(family.storage_id);
    set("Description", "The volumes and drives of the RAID controllers");
    set("Status", status_object(SENSOR_HEALTH_OK));
    boost::json::array controllers(answer_storage());
    boost::json::array drives(answer_storage());
    boost::json::array enclosures(answer_storage());
    for (int controller = 0; controller < raid_controller_count(family); ++controller) {
        controllers.push_back(controller_entry(family, controller));
        enclosures.push_back(link(raid_enclosure_uri(family, controller)));
        for (int bay = 0; bay < RAID_BAYS; ++bay)
            drives.push_back(link(raid_drive_uri({&family, controller, bay})));
    }
    const std::size_t count = drives.size();
    set("StorageControllers", std::move(controllers));
    set("Drives", std::move(drives));
    set("Drives@odata.count", count);
    set("Volumes", link(uri_ + "/Volumes"));
    set("Links", {{"Enclosures", std::move(enclosures)}});
    set("Actions", {{"Oem", storage_actions(family)}});
}

}  // namespace odata::redfish
