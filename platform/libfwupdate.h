// Firmware update on the BMC (libweb.so and the fw_update command): the
// firmware-update lock, the running versions, and the staging inventory.
#pragma once

#include <sys/types.h>

extern "C" {

// Devices of "fw_update -d".
enum { FW_DEVICE_BMC = 1, FW_DEVICE_BIOS = 2, FW_DEVICE_CPLD = 3 };

// Takes the firmware-update lock for the calling process: 0 when taken, -1
// while another update holds it. The lock frees itself when its holder
// ends without releasing it.
int get_fw_updating_lock(void);
// Hands the lock to worker; 0 keeps it without a process (an image staged
// for the next host reset) until release_fw_updating_lock.
int set_fw_updating_lock_holder(pid_t worker);
int release_fw_updating_lock(void);
// 1 while the lock is held, else 0.
int fw_updating_in_progress(void);

// 1 while an evidence dump is being generated, else 0.
int evidence_dump_in_progress(void);

// The running version of a device into version (size bytes with the NUL);
// negative for an unknown device.
int GetFirmwareVersion(int device, char* version, int size);

// The version that the image at path carries for device; negative when the
// image is not one for that device.
int GetFirmwareImageVersion(int device, const char* path, char* version, int size);

// The absolute path of the fw_update program.
const char* fw_update_program(void);

}  // extern "C"
