#include "resources/chassis/related_item.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "platform/libpcie.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/physical_context.h"
#include "resources/chassis/sdr_sensors.h"

namespace odata::redfish {
namespace {

enum class measured { network_adapter, gpu, processor };

struct name_pattern {
    std::string_view part_of_name;
    measured item;
};

// First match wins. "_NIC" also covers riser cards ("UR_NIC").
constexpr name_pattern temperature_patterns[] = {
    {"_NIC", measured::network_adapter},
    {"_FPGA", measured::network_adapter},
    {"GPU", measured::gpu},
    {"VRMCpu", measured::processor},
    {"VRMP", measured::processor},
    {"-DIM", measured::processor},
    {"CPU", measured::processor},
};

// Prefixes that a socket number follows: "CPU2", "VRMCpu2", "P2-DIMMA1".
constexpr std::string_view socket_prefixes[] = {"CPU", "Cpu", "P"};

bool digit_at(std::string_view text, size_t at) {
    return at < text.size() && std::isdigit(static_cast<unsigned char>(text[at]));
}

std::string digits_from(std::string_view text, size_t at) {
    size_t end = at;
    while (digit_at(text, end)) ++end;
    return std::string(text.substr(at, end - at));
}

// Single-socket names carry no number: the one processor is 1.
std::string processor_number(std::string_view name) {
    for (size_t at = 0; at < name.size(); ++at) {
        for (std::string_view prefix : socket_prefixes)
            if (name.compare(at, prefix.size(), prefix) == 0 && digit_at(name, at + prefix.size()))
                return digits_from(name, at + prefix.size());
    }
    return "1";
}

std::string gpu_number(std::string_view name) {
    const size_t at = name.find("GPU") + 3;
    return digit_at(name, at) ? digits_from(name, at) : "1";
}

std::string owner_uri(const St_SensorData& record) {
    return record.flags & SDR_FLAG_HOST_POWERED ? host_system_uri : chassis_uri;
}

std::string network_adapter_uri(const St_SensorData& record) {
    int card = 0;
    if (PcieCardGetChip(record.sensor_number, &card) != PLT_OK) return owner_uri(record);
    return std::string(network_adapters_uri) + "/" + std::to_string(card);
}

}  // namespace

std::string temperature_related_item(const St_SensorData& record) {
    const std::string name = sensor_name(record);
    auto found = std::find_if(std::begin(temperature_patterns), std::end(temperature_patterns),
                              [&name](const name_pattern& pattern) {
                                  return name.find(pattern.part_of_name) != std::string::npos;
                              });
    if (found == std::end(temperature_patterns)) return owner_uri(record);
    switch (found->item) {
        case measured::network_adapter:
            return network_adapter_uri(record);
        case measured::gpu:
            return std::string(pcie_devices_uri) + "/GPU" + gpu_number(name);
        case measured::processor:
            break;
    }
    return std::string(processors_uri) + "/" + processor_number(name);
}

std::string voltage_related_item(std::string_view sensor_name) {
    const bool host_rail =
        std::string_view(voltage_physical_context(sensor_name)) != default_physical_context;
    return host_rail ? host_system_uri : chassis_uri;
}

}  // namespace odata::redfish
