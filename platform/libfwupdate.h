// Firmware update on the BMC (libweb.so and the fw_update command): the
// firmware-update lock, the running versions, and the staging inventory.
#pragma once

extern "C" {

// Devices of "fw_update -d": the BMC, the host BIOS, the motherboard and
// backplane CPLDs, the network adapters, the GPUs, the backplane's LCMC and
// the Broadcom and Marvell RAID controllers (the controllers of one kind
// run one firmware).
enum {
    FW_DEVICE_BMC = 1,
    FW_DEVICE_BIOS = 2,
    FW_DEVICE_CPLD = 3,
    FW_DEVICE_BACKPLANE_CPLD = 4,
    FW_DEVICE_NIC = 5,
    FW_DEVICE_GPU = 6,
    FW_DEVICE_LCMC = 7,
    FW_DEVICE_BROADCOM = 8,
    FW_DEVICE_MARVELL = 9,
};

// Takes the firmware-update lock for the calling process: 0 when taken, -1
// while another update holds it, -2 when the lock cannot be recorded (its
// storage failed). The lock frees itself when its holder ends without
// releasing it.
int get_fw_updating_lock(void);
// Hands the lock to a task: held from then on while the task has not ended
// (a Pending task waits without a process), and after its end until the
// process working on it has gone.
int set_fw_updating_lock_task(int task_id);
int release_fw_updating_lock(void);
// 1 while the lock is held, else 0.
int fw_updating_in_progress(void);

// Update mode (/tmp/fw_updating): the component whose update a task is
// carrying out. A marker whose holder has ended (its task over, its process
// killed) is void: it holds nothing back and the next entry replaces it.
// Entering answers 0 when marked (also when the task holds it already),
// -1 while another live holder has it, -2 when the marker cannot be
// written.
int enter_fw_update_mode(int task_id, const char* component);
// 1 while a live holder has update mode, its component copied into
// component (size bytes with the NUL) when not null, and its task into
// task_id when not null (0 for a process); else 0.
int fw_update_mode_held(char* component, int size, int* task_id);
// Leaves update mode if task_id holds it: 0 when it is not held by task_id
// any more.
int leave_fw_update_mode(int task_id);

// The file at which an image of device is staged for its flash (the BIOS
// agent takes the BIOS image there); null for an unknown device.
const char* firmware_staging_file(int device);

// The staging inventory: the version of a staged image under its entry
// ("Staging_BMC", "Staging_BIOS", "Staging_CPLD_Motherboard", ...).
// Storing answers 0 when recorded (an empty version takes the entry back);
// reading answers negative when the entry holds no version, else copies it
// into version (size bytes with the NUL).
int StoreStagedFirmwareVersion(const char* entry, const char* version);
int GetStagedFirmwareVersion(const char* entry, char* version, int size);

// Records that the image at the BIOS staging file is written at the next
// host reset, for the task that waits for it. Written after the task has
// been handed the lock, before it goes Pending: a record whose task has
// ended is void, and the next update to take the lock removes it with the
// image.
int StageBiosUpdateOnReset(int task_id);
// Drops the BIOS image staged for the next host reset, its records and
// image, when task_id is its task: 0 when dropped, -1 otherwise.
int DropBiosUpdateOnReset(int task_id);

// 1 while an evidence dump is being generated, else 0.
int evidence_dump_in_progress(void);
// Removes the evidence dumps of earlier runs, which an update makes stale.
void RemoveEvidenceDumps(void);

// The running version of a device into version (size bytes with the NUL);
// negative for an unknown device.
int GetFirmwareVersion(int device, char* version, int size);

// The version that the image at path carries for device; negative when the
// image is not one for that device.
int GetFirmwareImageVersion(int device, const char* path, char* version, int size);

// The absolute path of the fw_update program.
const char* fw_update_program(void);

}  // extern "C"
