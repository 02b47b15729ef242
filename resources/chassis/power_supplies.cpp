#include "resources/chassis/power_supplies.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "framework/redfish.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi_power.h"
#include "platform/libweb.h"
#include "resources/chassis/array_member.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/code_names.h"

namespace odata::redfish {
namespace {

constexpr code_name supply_types[] = {{PSU_TYPE_AC, "AC"}};

constexpr code_name line_input_types[] = {
    {PSU_LINE_UNKNOWN, "Unknown"},  {PSU_LINE_AC_LOW, "ACLowLine"},
    {PSU_LINE_AC_MID, "ACMidLine"}, {PSU_LINE_AC_HIGH, "ACHighLine"},
    {PSU_LINE_DC_480V, "DC480V"},   {PSU_LINE_DC_NEG_48V, "DCNeg48V"},
};

constexpr code_name input_types[] = {{PSU_INPUT_AC, "AC"}, {PSU_INPUT_DC, "DC"}};

template <size_t size>
std::string text_of(const char (&field)[size]) {
    return std::string(field, strnlen(field, size));
}

// Bays are numbered from 1, their members from 0.
std::string supply_uri(int bay) { return array_member_uri(power_uri, "PowerSupplies", bay - 1); }

boost::json::array input_ranges(const St_PowerSupplyInfo& info) {
    boost::json::array ranges(answer_storage());
    const int count = std::min<int>(info.input_range_count, PSU_INPUT_RANGES_MAX);
    for (int i = 0; i < count; ++i) {
        const St_PowerInputRange& range = info.input_ranges[i];
        ranges.push_back({{"InputType", name_or_null(input_types, range.input_type)},
                          {"MinimumVoltage", range.minimum_volts},
                          {"MaximumVoltage", range.maximum_volts},
                          {"OutputWattage", range.output_watts}});
    }
    return ranges;
}

boost::json::object supply_member(const St_PowerSupplyInfo& info) {
    boost::json::object member =
        array_member(power_uri, "PowerSupplies", info.bay - 1, "Power", "PowerSupply");
    member["Name"] = "Power Supply Bay " + std::to_string(info.bay);
    member["Status"] = status_object(info.health);
    member["PowerSupplyType"] = name_of_code(supply_types, info.supply_type, "Unknown");
    member["LineInputVoltageType"] =
        name_of_code(line_input_types, info.line_input_type, "Unknown");
    member["LineInputVoltage"] = info.line_input_volts;
    member["PowerCapacityWatts"] = info.capacity_watts;
    member["LastPowerOutputWatts"] = info.last_output_watts;
    member["Model"] = text_of(info.model);
    member["FirmwareVersion"] = text_of(info.firmware_version);
    member["SerialNumber"] = text_of(info.serial_number);
    member["PartNumber"] = text_of(info.part_number);
    member["SparePartNumber"] = text_of(info.spare_part_number);
    member["InputRanges"] = input_ranges(info);
    member["RelatedItem"] = link_array(chassis_uri);
    member["Redundancy"] = link_array(array_member_uri(power_uri, "Redundancy", 0));
    // Power v1_6 has no SensorNumber for supplies.
    member["Oem"] = {{"Tarnwright", {{"SensorNumber", info.sensor_number}}}};
    return member;
}

boost::json::array redundancy_set(const St_PowerRedundancy& redundancy) {
    boost::json::array supplies(answer_storage());
    const int count = std::min<int>(redundancy.member_count, PSU_BAYS_MAX);
    for (int i = 0; i < count; ++i) supplies.push_back(link(supply_uri(redundancy.member_bays[i])));
    return supplies;
}

}  // namespace

boost::json::array power_supply_members() {
    boost::json::array members(answer_storage());
    const int bays = PltPSU_GetBayCount();
    for (int bay = 1; bay <= std::min(bays, static_cast<int>(PSU_BAYS_MAX)); ++bay) {
        St_PowerSupplyInfo info{};
        if (PltPSU_GetBayInfo(bay, &info) != PLT_OK) {
            console_log("[Powersupply]cant' initialize entity\n");
            continue;
        }
        members.push_back(supply_member(info));
    }
    return members;
}

boost::json::array power_redundancy_members() {
    St_PowerRedundancy redundancy{};
    if (PltPSU_GetRedundancy(&redundancy) != PLT_OK) {
        console_log("[PowerRedundancy]cant' initialize entity\n");
        return boost::json::array(answer_storage());
    }
    boost::json::object group =
        array_member(power_uri, "Redundancy", 0, "Redundancy", "Redundancy");
    group["Name"] = "PowerSupply Redundancy Group 1";
    group["Mode"] = "Failover";
    group["MaxNumSupported"] = redundancy.max_supported;
    group["MinNumNeeded"] = redundancy.min_needed;
    group["Status"] = status_object(redundancy.health);
    group["RedundancySet"] = redundancy_set(redundancy);
    return boost::json::array({std::move(group)}, answer_storage());
}

}  // namespace odata::redfish
