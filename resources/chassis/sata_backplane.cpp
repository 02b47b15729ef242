#include "resources/chassis/sata_backplane.h"

#include <algorithm>

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/systems/raid_paths.h"

namespace odata::redfish {
namespace {

std::string drive_uri(int bay) {
    return std::string(sata_backplane_uri) + "/Drives/" + sata_bay_name(bay);
}

// The bay number is the last capture.
std::string captured_text(const request_context& context) {
    return context.captures.empty() ? std::string() : context.captures.back();
}

}  // namespace

std::string enclosure_captured(const request_context& context) {
    return context.captures.empty() ? std::string() : context.captures.front();
}

std::vector<St_SataDrive> sata_bays() {
    std::vector<St_SataDrive> bays;
    for (int bay = 0; bay < UtilGetSataBayCount(); ++bay) {
        St_SataDrive drive{};
        if (UtilGetSataDrive(bay, &drive) == PLT_OK) bays.push_back(drive);
    }
    return bays;
}

std::string sata_bay_name(int bay) { return "Disk.Bay." + std::to_string(bay); }

std::vector<std::string> sata_drive_uris() {
    std::vector<std::string> uris;
    for (const St_SataDrive& drive : sata_bays())
        if (drive.present) uris.push_back(drive_uri(drive.bay));
    return uris;
}

boost::json::array sata_drive_links() {
    boost::json::array links(answer_storage());
    for (const std::string& uri : sata_drive_uris()) links.push_back(link(uri));
    return links;
}

diskdrive::diskdrive(request_context& context)
    : redfish(context, "Drive", std::string(schema_file_of("Drive").version), "", context.uri) {}

// Bays are written without leading zeros: "Disk.Bay.01" names no drive.
int diskdrive::get(request_context& context) {
    if (const auto raid = raid_drive_of_path(context.uri)) {
        set_raid_drive(*raid);
        return 0;
    }
    const int bay = context.capture_number(context.captures.size() - 1);
    const std::vector<St_SataDrive> bays = sata_bays();
    const auto drive = std::find_if(bays.begin(), bays.end(), [&](const St_SataDrive& candidate) {
        return candidate.present && candidate.bay == bay;
    });
    if (enclosure_captured(context) != sata_backplane_id ||
        captured_text(context) != std::to_string(bay) || drive == bays.end())
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Drive", captured_text(context)});
    uri_ = drive_uri(bay);
    name_ = sata_bay_name(bay);
    set_common_properties();
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("Manufacturer", drive->manufacturer);
    set("Model", drive->model);
    set("SerialNumber", drive->serial_number);
    set("Revision", drive->revision);
    set("CapacityBytes", drive->capacity_bytes);
    set("MediaType", drive->solid_state ? "SSD" : "HDD");
    set("Protocol", "SATA");
    set("Links", {{"Chassis", link(sata_backplane_uri)}});
    return 0;
}

}  // namespace odata::redfish
