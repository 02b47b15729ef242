#include "resources/chassis/chassis_type.h"

#include "resources/chassis/code_names.h"

namespace odata::redfish {
namespace {

// SMBIOS chassis types (their names in the comments) and the Redfish type
// that describes each best.
constexpr code_name chassis_types[] = {
    {0x01, "Other"},             // Other
    {0x02, "Other"},             // Unknown
    {0x03, "StandAlone"},        // Desktop
    {0x04, "StandAlone"},        // Low Profile Desktop
    {0x05, "StandAlone"},        // Pizza Box
    {0x06, "StandAlone"},        // Mini Tower
    {0x07, "StandAlone"},        // Tower
    {0x08, "StandAlone"},        // Portable
    {0x09, "StandAlone"},        // Laptop
    {0x0A, "StandAlone"},        // Notebook
    {0x0B, "StandAlone"},        // Hand Held
    {0x0C, "Other"},             // Docking Station
    {0x0D, "StandAlone"},        // All in One
    {0x0E, "StandAlone"},        // Sub Notebook
    {0x0F, "StandAlone"},        // Space-saving
    {0x10, "StandAlone"},        // Lunch Box
    {0x11, "RackMount"},         // Main Server Chassis
    {0x12, "Expansion"},         // Expansion Chassis
    {0x13, "Module"},            // SubChassis
    {0x14, "Expansion"},         // Bus Expansion Chassis
    {0x15, "Expansion"},         // Peripheral Chassis
    {0x16, "StorageEnclosure"},  // RAID Chassis
    {0x17, "RackMount"},         // Rack Mount Chassis
    {0x18, "StandAlone"},        // Sealed-case PC
    {0x19, "Enclosure"},         // Multi-system chassis
    {0x1A, "Card"},              // Compact PCI
    {0x1B, "Card"},              // Advanced TCA
    {0x1C, "Blade"},             // Blade
    {0x1D, "Enclosure"},         // Blade Enclosure
    {0x1E, "StandAlone"},        // Tablet
    {0x1F, "StandAlone"},        // Convertible
    {0x20, "StandAlone"},        // Detachable
    {0x21, "StandAlone"},        // IoT Gateway
    {0x22, "StandAlone"},        // Embedded PC
    {0x23, "StandAlone"},        // Mini PC
    {0x24, "StandAlone"},        // Stick PC
};

constexpr const char* unknown_chassis_type = "RackMount";

// Bit 7 of the SMBIOS code tells whether a lock is present.
constexpr uint8_t chassis_lock_bit = 0x80;

}  // namespace

const char* chassis_type_name(uint8_t fru_chassis_type) {
    return name_of_code(chassis_types, fru_chassis_type & ~chassis_lock_bit, unknown_chassis_type);
}

}  // namespace odata::redfish
