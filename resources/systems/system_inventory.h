// What the computer system is: its serial and part number, and what its
// SMBIOS table tells of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace odata::redfish {

struct part_identity {
    std::string serial_number;
    std::string part_number;
};

// The product area of the board FRU (the numbers SMBIOS also gives the
// system), or the node's own numbers on twin-node boards; both
// empty (and logged) when the FRU cannot be read.
part_identity read_part_identity();

struct smbios_inventory {
    std::string manufacturer;  // "-" for a string the table does not hold
    std::string model;
    std::string sku;
    std::string uuid;             // "" when the table holds none
    int processor_count = 0;      // populated sockets
    std::string processor_model;  // of the first populated socket; "" without one
    uint64_t memory_gib = 0;      // installed modules of known size, whole GiB rounded down
};

// Null (and logged) when the table cannot be parsed.
std::optional<smbios_inventory> read_smbios_inventory();

}  // namespace odata::redfish
