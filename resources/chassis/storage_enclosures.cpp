#include "resources/chassis/storage_enclosures.h"

#include <algorithm>

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_sensors.h"
#include "platform/libstorage.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/systems/raid_paths.h"

namespace odata::redfish {
namespace {

// Each controller family and the member name of its enclosure: the name
// leads up to the controller number, the suffix follows it.
struct enclosure_family {
    int (*count)();
    const char* prefix;
    const char* suffix;
};

// An NVMe backplane group holds every NVMe slot the board supports.
int nvme_backplanes() { return GetNVMeSSDMaxNumSupport() > 0 ? 1 : 0; }

const enclosure_family enclosure_families[] = {
    {GetBRCMDeviceNum, "HA-RAID.", ".StorageEnclosure.0"},
    {UtilGetMRVLCtrlNum, "MRVL.HA-RAID.", ".StorageModule"},
    {nvme_backplanes, "NVMeSSD.", ".Group.0.StorageBackplane"},
};

}  // namespace

bool storage_inventory_loading() { return UtilIsStorageInventoryLoading() != 0; }

std::vector<std::string> storage_enclosure_uris() {
    std::vector<std::string> uris;
    for (const enclosure_family& family : enclosure_families) {
        const int count = family.count();
        for (int controller = 0; controller < count; ++controller)
            uris.push_back(std::string(chassis_collection_uri) + "/" + family.prefix +
                           std::to_string(controller) + family.suffix);
    }
    return uris;
}

storagepod::storagepod(request_context& context)
    : redfish(context, "Chassis", std::string(schema_file_of("Chassis").version),
              "Storage Enclosure", context.uri) {}

int storagepod::get(request_context& context) {
    const std::string enclosure = enclosure_captured(context);
    uri_ = std::string(chassis_collection_uri) + "/" + enclosure;
    const std::vector<std::string> reported = storage_enclosure_uris();
    if (enclosure == sata_backplane_id)
        set_sata_backplane();
    else if (std::find(reported.begin(), reported.end(), uri_) != reported.end())
        set_controller_enclosure(enclosure);
    else
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Chassis", enclosure});
    return 0;
}

void storagepod::set_sata_backplane() {
    name_ = "SATA Storage Backplane";
    set_common_properties();
    set("Description", "The backplane of the host's onboard SATA bays");
    set("ChassisType", "StorageEnclosure");
    set("Status", status_object(SENSOR_HEALTH_OK));
    boost::json::array drives = sata_drive_links();
    const std::size_t count = drives.size();
    set("Links", {{"ComputerSystems", link_array(host_system_uri)},
                  {"ContainedBy", link(chassis_uri)},
                  {"Drives", std::move(drives)},
                  {"Drives@odata.count", count},
                  {"Storage", link_array(sata_storage_uri)}});
}

// The RAID controllers report the drives in their enclosures; the host bus
// adapters and NVMe backplanes do not.
void storagepod::set_controller_enclosure(const std::string& enclosure) {
    set_common_properties();
    set("Description", "An enclosure that a storage controller reports");
    set("ChassisType", "StorageEnclosure");
    set("Status", status_object(SENSOR_HEALTH_OK));
    boost::json::object links(
        {{"ComputerSystems", link_array(host_system_uri)}, {"ContainedBy", link(chassis_uri)}},
        answer_storage());
    const std::vector<raid_drive_ref> drives = raid_enclosure_drives(enclosure);
    if (!drives.empty()) {
        boost::json::array drive_links(answer_storage());
        for (const raid_drive_ref& drive : drives)
            drive_links.push_back(link(raid_drive_uri(drive)));
        links["Drives"] = std::move(drive_links);
        links["Drives@odata.count"] = drives.size();
        links["Storage"] = link_array(raid_storage_uri(*drives.front().family));
    }
    set("Links", std::move(links));
}

}  // namespace odata::redfish
