// What SMBIOS processor fields tell a client: the architecture of a
// processor family code and the CPUID signature of an x86 processor.
#pragma once

#include <cstdint>
#include <string>

namespace odata::redfish {

struct processor_architecture {
    const char* architecture;     // Redfish ProcessorArchitecture
    const char* instruction_set;  // Redfish InstructionSet
};

// Null for a family code whose architecture the service does not know.
const processor_architecture* architecture_of_family(uint16_t family);

struct x86_signature {
    std::string effective_family;  // "0x6"
    std::string effective_model;   // "0x6a"
    std::string step;              // "0x6"
};

// The signature in the low 32 bits of the SMBIOS processor id (CPUID leaf
// 1, EAX), with the extended family and model folded in as the x86 rules
// say.
x86_signature decode_x86_signature(uint64_t processor_id);

// The processor id as 16 hexadecimal digits after "0x".
std::string identification_registers(uint64_t processor_id);

}  // namespace odata::redfish
