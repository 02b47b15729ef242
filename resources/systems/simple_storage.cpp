// The host's simple storage: its onboard SATA controller (member 1) with
// one device per bay, an empty bay showing as "Absent".
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/simplestorage.h"
#include "resources/systems/simplestoragecollection.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr int onboard_sata_controller = 1;

boost::json::object device_of(const St_SataDrive& drive) {
    boost::json::object device({{"Name", sata_bay_name(drive.bay)}}, answer_storage());
    if (!drive.present) {
        device["Status"] = {{"State", "Absent"}};
        return device;
    }
    device["Manufacturer"] = drive.manufacturer;
    device["Model"] = drive.model;
    device["CapacityBytes"] = drive.capacity_bytes;
    device["Status"] = status_object(SENSOR_HEALTH_OK);
    return device;
}

boost::json::array sata_devices() {
    boost::json::array devices(answer_storage());
    for (const St_SataDrive& drive : sata_bays()) devices.push_back(device_of(drive));
    return devices;
}

}  // namespace

simplestoragecollection::simplestoragecollection(request_context& context)
    : redfish(context, "SimpleStorageCollection", "", "Simple Storage Collection",
              simple_storage_uri) {}

int simplestoragecollection::get(request_context&) {
    set_common_properties();
    set_members({std::string(simple_storage_uri) + "/" + std::to_string(onboard_sata_controller)});
    return 0;
}

simplestorage::simplestorage(request_context& context)
    : redfish(context, "SimpleStorage", std::string(schema_file_of("SimpleStorage").version),
              "Simple Storage Controller", member_uri(simple_storage_uri, context)) {}

int simplestorage::get(request_context& context) {
    if (member_number(context) != onboard_sata_controller)
        throw_member_not_found("SimpleStorage", context);
    set_common_properties();
    set("Description", "Onboard SATA Controller");
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("Devices", sata_devices());
    return 0;
}

}  // namespace odata::redfish
