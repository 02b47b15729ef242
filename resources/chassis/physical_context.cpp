#include "resources/chassis/physical_context.h"

#include <algorithm>
#include <iterator>

namespace odata::redfish {
namespace {

struct name_pattern {
    std::string_view part_of_name;
    const char* physical_context;
};

// First match wins. "DIMM" precedes "CPU": memory named after its
// processor ("CPU1_DIMM_A1 Temp") is memory.
constexpr name_pattern temperature_patterns[] = {
    {"DIMM", "Memory"},       {"CPU", "CPU"},           {"GPU", "ASIC"},
    {"Xeon Phi", "ASIC"},     {"NIC", "ASIC"},          {"PLX", "ASIC"},
    {"SSD", "StorageDevice"}, {"HDD", "StorageDevice"}, {"BPN", "Backplane"},
    {"Chassis", "Backplane"}, {"Inlet", "Intake"},
};

constexpr name_pattern voltage_patterns[] = {
    {"Vcpu", "CPU"},
    {"VDimmP", "Memory"},
};

template <size_t size>
const char* first_match(const name_pattern (&patterns)[size], std::string_view sensor_name) {
    auto found = std::find_if(
        std::begin(patterns), std::end(patterns), [sensor_name](const name_pattern& pattern) {
            return sensor_name.find(pattern.part_of_name) != std::string_view::npos;
        });
    return found == std::end(patterns) ? default_physical_context : found->physical_context;
}

}  // namespace

const char* temperature_physical_context(std::string_view sensor_name) {
    return first_match(temperature_patterns, sensor_name);
}

const char* voltage_physical_context(std::string_view sensor_name) {
    return first_match(voltage_patterns, sensor_name);
}

}  // namespace odata::redfish
