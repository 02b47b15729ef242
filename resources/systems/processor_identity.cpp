#include "resources/systems/processor_identity.h"

#include <cstdio>

namespace odata::redfish {
namespace {

struct family_row {
    uint16_t first;
    uint16_t last;
    processor_architecture architecture;
};

constexpr processor_architecture x86_64 = {"x86", "x86-64"};
constexpr processor_architecture arm_64 = {"ARM", "ARM-A64"};

// Processor family codes of SMBIOS type 4 (family 2 for the wide ones).
constexpr family_row family_rows[] = {
    {0xA1, 0xAF, x86_64},    // Xeon families of the 2000s
    {0xB3, 0xB3, x86_64},    // Xeon
    {0xC6, 0xCF, x86_64},    // Core i7 .. Core i9 and later Xeons
    {0x100, 0x101, arm_64},  // ARMv7, ARMv8
};

std::string hex(unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", value);
    return text;
}

}  // namespace

const processor_architecture* architecture_of_family(uint16_t family) {
    for (const family_row& row : family_rows)
        if (family >= row.first && family <= row.last) return &row.architecture;
    return nullptr;
}

x86_signature decode_x86_signature(uint64_t processor_id) {
    const auto eax = static_cast<uint32_t>(processor_id & 0xFFFFFFFFu);
    const unsigned step = eax & 0xF;
    const unsigned model = (eax >> 4) & 0xF;
    const unsigned family = (eax >> 8) & 0xF;
    const unsigned extended_model = (eax >> 16) & 0xF;
    const unsigned extended_family = (eax >> 20) & 0xFF;
    const unsigned effective_family = family == 0xF ? family + extended_family : family;
    const unsigned effective_model =
        family == 0x6 || family == 0xF ? (extended_model << 4) + model : model;
    return {hex(effective_family), hex(effective_model), hex(step)};
}

std::string identification_registers(uint64_t processor_id) {
    char text[24];
    std::snprintf(text, sizeof text, "0x%016llx", static_cast<unsigned long long>(processor_id));
    return text;
}

}  // namespace odata::redfish
