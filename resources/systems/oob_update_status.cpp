#include "resources/systems/oob_update_status.h"

#include "framework/schema_files.h"
#include "platform/libfwupdate.h"
#include "platform/libipmi.h"

namespace odata::redfish {
namespace {

constexpr const char* oob_uri = "/redfish/v1/Systems/1/Oem/Tarnwright/OOB";
constexpr int firmware_version_size = 64;

std::string running_version(int device) {
    char version[firmware_version_size] = {};
    return GetFirmwareVersion(device, version, firmware_version_size) < 0 ? std::string() : version;
}

// Null while no image is staged under the entry.
boost::json::value staged_version(const char* entry) {
    char version[firmware_version_size] = {};
    if (GetStagedFirmwareVersion(entry, version, firmware_version_size) < 0) return nullptr;
    return boost::json::string(version);
}

}  // namespace

oob_update_status::oob_update_status(request_context& context)
    : redfish(context, "TwrOOBUpdateStatus",
              std::string(schema_file_of("TwrOOBUpdateStatus").version),
              "Out-of-band Update Status", oob_uri) {}

int oob_update_status::get(request_context&) {
    set_common_properties();
    set("UpdateInProgress", fw_updating_in_progress() == 1);
    set("BiosInUpdateMode", (at_p_St_GlobalVar->fw_update_flags & bios_update_mode_flag) != 0);
    set("BiosVersion", running_version(FW_DEVICE_BIOS));
    set("StagedBiosVersion", staged_version("Staging_BIOS"));
    set("BmcVersion", running_version(FW_DEVICE_BMC));
    set("StagedBmcVersion", staged_version("Staging_BMC"));
    return 0;
}

}  // namespace odata::redfish
