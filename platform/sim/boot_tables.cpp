// Boot-device tables: Redfish BootSource names with their IPMI boot-flags
// bytes. Setting a device asks for a one-time UEFI boot override (byte 1
// 0xA0); the selectors are the IPMI boot device selectors of byte 2.
#include "platform/libipmi_chassis.h"

namespace {

constexpr uint8_t once_uefi = 0xA0;

}  // namespace

extern "C" {

const St_BootFlagEntry boot_flags[] = {
    {"None", 0xFF, 0xFF & ~BOOT_DEVICE_SELECTOR_MASK},
    {"Pxe", once_uefi, 0x04},
    {"Hdd", once_uefi, 0x08},
    {"Diags", once_uefi, 0x10},
    {"Cd", once_uefi, 0x14},
    {"BiosSetup", once_uefi, 0x18},
    {"Usb", once_uefi, 0x3C},
};
const int ChassisBootTableSize = sizeof boot_flags / sizeof boot_flags[0];

const St_BootFlagEntry boot_flags_ext[] = {
    {"RemoteDrive", once_uefi, 0x2C},
};
const int ChassisBootTableExtSize = sizeof boot_flags_ext / sizeof boot_flags_ext[0];

}  // extern "C"
