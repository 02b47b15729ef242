// What the board's FRU tells of the chassis.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace odata::redfish {

struct chassis_fru {
    uint8_t chassis_type = 0;  // SMBIOS chassis type code, 0 when absent
    std::string manufacturer;
    std::string model;
    std::string sku;
    std::string serial_number;  // the node's own on twin-node boards
    std::string part_number;    // likewise
    std::string asset_tag;
    std::string board_serial_number;
    uint32_t board_id = 0;
};

// Null (and logged) when the FRU cannot be read.
std::optional<chassis_fru> read_chassis_fru();

// Replaces the product asset tag; false (and logged) when the FRU refuses it.
bool write_asset_tag(const std::string& asset_tag);

}  // namespace odata::redfish
