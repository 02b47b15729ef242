// The conditions that hold back every way of updating firmware.
#pragma once

namespace odata::redfish {

// While an evidence dump is being generated: logs and throws 503. Otherwise
// removes the stale evidence files.
void check_no_evidence_dump();

// Host power must be off to write the BIOS: throws 400 with message_id
// (the action's error message) and the power-off text under errors_code.
void check_bios_host_off(const char* message_id, const char* errors_code);

// Takes the firmware-update lock, or throws 400
// OemFirmwareAlreadyInUpdateMode naming the component while another update
// holds it (or naming the component in update mode while one is), 500
// InternalError when it cannot be recorded.
void take_firmware_update_lock(const char* component);

}  // namespace odata::redfish
