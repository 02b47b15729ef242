// The boot override of the IPMI boot-flags parameter, data bytes 1 and 2
// (at_p_St_GlobalVar->boot_flags), as the Redfish Boot properties.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/libipmi_chassis.h"

namespace odata::redfish {

inline constexpr std::string_view uefi_boot_next_target = "UefiBootNext";
inline constexpr std::string_view uefi_http_target = "UefiHttp";

// A value of a property that lives in bits of byte 1: setting it keeps the
// bits of keep_mask and sets set_bits. Byte 1 holds the one value whose
// setting would leave it unchanged.
struct byte1_setting {
    std::string_view name;
    uint8_t keep_mask;
    uint8_t set_bits;
};

// BootSourceOverrideEnabled, bits 7 (valid) and 6 (persistent).
const std::vector<byte1_setting>& override_enabled_settings();
// BootSourceOverrideMode, bit 5 (EFI boot).
const std::vector<byte1_setting>& override_mode_settings();

// The setting named exactly name, or null.
const byte1_setting* find_setting(const std::vector<byte1_setting>& settings,
                                  std::string_view name);
std::string_view setting_name(const std::vector<byte1_setting>& settings, uint8_t byte1);
uint8_t apply_setting(const byte1_setting& setting, uint8_t byte1);

// Every name of boot_flags, then of boot_flags_ext.
const std::vector<std::string_view>& boot_source_names();
// The row of either table named exactly name, or null.
const St_BootFlagEntry* find_boot_source(std::string_view name);
// The name of the row whose device selector byte 2 holds; "" for none.
std::string_view boot_source_name(uint8_t byte2);
// The first row of boot_flags clears the selector (its bytes are AND
// masks); any other row sets both bytes.
void apply_boot_source(const St_BootFlagEntry& row, uint8_t (&bytes)[2]);

// BootSourceOverrideTarget as GET shows it: the name of the selector,
// replaced by "UefiBootNext" while a BootNext is pending and by "UefiHttp"
// for a UEFI boot from an HTTP boot URI. Empty, and logged, when the
// selector is unknown and no override applies.
std::string shown_override_target(const uint8_t (&bytes)[2], bool boot_next_pending,
                                  bool has_http_boot_uri);

}  // namespace odata::redfish
