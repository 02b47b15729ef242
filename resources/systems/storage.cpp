#include "resources/systems/storage.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/raid_paths.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* onboard_sata_id = "SATAEmbedded";

std::string onboard_sata_uri() {
    return std::string(storage_collection_uri) + "/" + onboard_sata_id;
}

boost::json::object sata_controller() {
    return boost::json::object({{"@odata.id", onboard_sata_uri() + "#/StorageControllers/0"},
                                {"MemberId", "0"},
                                {"Name", "Onboard SATA Controller"},
                                {"Status", status_object(SENSOR_HEALTH_OK)},
                                {"SupportedControllerProtocols", boost::json::array{"PCIe"}},
                                {"SupportedDeviceProtocols", boost::json::array{"SATA"}}},
                               answer_storage());
}

}  // namespace

storagecollection::storagecollection(request_context& context)
    : redfish(context, "StorageCollection", "", "Storage Collection", storage_collection_uri) {}

int storagecollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members = {onboard_sata_uri()};
    for (const raid_family& family : raid_families())
        if (raid_controller_count(family) > 0) members.push_back(raid_storage_uri(family));
    set_members(members);
    return 0;
}

storage::storage(request_context& context)
    : redfish(context, "Storage", std::string(schema_file_of("Storage").version),
              "Onboard SATA Storage", onboard_sata_uri()) {}

int storage::get(request_context& context) {
    const std::string id = context.captures.empty() ? std::string() : context.captures[0];
    const raid_family* family = raid_family_of_storage(id);
    if (family && raid_controller_count(*family) > 0) {
        set_raid_storage(*family);
        return 0;
    }
    if (id != onboard_sata_id) throw_member_not_found("Storage", context);
    set_common_properties();
    set("Description", "The drives of the host's onboard SATA controller");
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("StorageControllers", {sata_controller()});
    boost::json::array drives = sata_drive_links();
    const std::size_t count = drives.size();
    set("Drives", std::move(drives));
    set("Drives@odata.count", count);
    set("Links", {{"Enclosures", link_array(sata_backplane_uri)}});
    return 0;
}

}  // namespace odata::redfish
