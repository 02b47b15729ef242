#include "update/firmware_update_checks.h"

#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "platform/libipmi_chassis.h"
#include "platform/libweb.h"

namespace odata::redfish {

void check_no_evidence_dump() {
    if (evidence_dump_in_progress()) {
        console_log("[ERROR] Generating evidence in progress.\n");
        throw_http_error(503, "TWR.1.0.OemEvidenceDumpErrorMessage");
    }
    RemoveEvidenceDumps();
}

void check_bios_host_off(const char* message_id, const char* errors_code) {
    if (PltCHASSIS_PowerStatus() == 0) return;
    console_log("[ERROR] Update BIOS image requries system power off..\n");
    result_record result{errors_code, general_error_text, {}};
    add_message(result, message_id, {"Update BIOS image requries system power off."});
    throw_http_result(400, result);
}

void take_firmware_update_lock(const char* component) {
    const int taken = get_fw_updating_lock();
    if (taken != 0 && taken != -1) {
        console_log("[ERROR] FirmwareUpdate the update lock cannot be recorded\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    // The component in update mode is the one to name, also when another
    // BMC program holds it without the lock.
    char held[64] = {};
    if (fw_update_mode_held(held, sizeof held, nullptr)) {
        if (taken == 0) release_fw_updating_lock();
        throw_http_error(400, "TWR.1.0.OemFirmwareAlreadyInUpdateMode", {held});
    }
    if (taken == -1) throw_http_error(400, "TWR.1.0.OemFirmwareAlreadyInUpdateMode", {component});
}

}  // namespace odata::redfish
