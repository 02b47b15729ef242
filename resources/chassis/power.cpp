#include "resources/chassis/power.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi_power.h"
#include "platform/libweb.h"
#include "resources/chassis/array_member.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/code_names.h"
#include "resources/chassis/physical_context.h"
#include "resources/chassis/power_supplies.h"
#include "resources/chassis/related_item.h"
#include "resources/chassis/sdr_sensors.h"
#include "resources/systems/system_inventory.h"

namespace odata::redfish {
namespace {

constexpr const char* battery_sensor_name = "VBAT";

constexpr code_name limit_exceptions[] = {
    {POWER_LIMIT_NO_ACTION, "NoAction"},
    {POWER_LIMIT_HARD_POWER_OFF, "HardPowerOff"},
};

boost::json::array processor_links() {
    boost::json::array processors(answer_storage());
    const std::optional<smbios_inventory> inventory = read_smbios_inventory();
    const int count = inventory ? inventory->processor_count : 0;
    for (int number = 1; number <= count; ++number)
        processors.push_back(link(std::string(processors_uri) + "/" + std::to_string(number)));
    if (processors.empty()) console_log("[powerctrl]No CPU is found\n");
    return processors;
}

boost::json::object power_control_member(const St_PowerControl& control) {
    boost::json::object member =
        array_member(power_uri, "PowerControl", 0, "Power", "PowerControl");
    member["Name"] = "System Power Control";
    member["PowerConsumedWatts"] = control.consumed_watts;
    member["PowerCapacityWatts"] = control.capacity_watts;
    member["PowerAvailableWatts"] = control.available_watts;
    member["PowerRequestedWatts"] = control.requested_watts;
    member["PowerAllocatedWatts"] = control.allocated_watts;
    member["PowerMetrics"] = {{"IntervalInMin", control.interval_minutes},
                              {"MinConsumedWatts", control.min_consumed_watts},
                              {"MaxConsumedWatts", control.max_consumed_watts},
                              {"AverageConsumedWatts", control.average_consumed_watts}};
    // A limit of 0 means none is set.
    member["PowerLimit"] = {
        {"LimitInWatts", control.limit_watts ? boost::json::value(control.limit_watts) : nullptr},
        {"LimitException", name_or_null(limit_exceptions, control.limit_exception)}};
    member["RelatedItem"] = processor_links();
    return member;
}

boost::json::array power_control_members() {
    St_PowerControl control{};
    if (PltPSU_GetPowerControl(&control) != PLT_OK) {
        console_log("[PowerControl]cant' initialize entity\n");
        return boost::json::array(answer_storage());
    }
    return boost::json::array({power_control_member(control)}, answer_storage());
}

boost::json::object voltage_member(const St_SensorData& record, size_t index) {
    const std::string name = sensor_name(record);
    boost::json::object member = array_member(power_uri, "Voltages", index, "Power", "Voltage");
    member["Name"] = name;
    member["SensorNumber"] = record.sensor_number;
    member["Status"] = sensor_status(record);
    member["ReadingVolts"] = reading_value(record, number_form::decimal);
    add_thresholds(member, record, number_form::decimal);
    member["MinReadingRange"] = raw_to_json(record, record.min_reading, number_form::decimal);
    member["MaxReadingRange"] = raw_to_json(record, record.max_reading, number_form::decimal);
    member["PhysicalContext"] = voltage_physical_context(name);
    member["RelatedItem"] = link_array(voltage_related_item(name));
    return member;
}

boost::json::array voltage_members() {
    boost::json::array members(answer_storage());
    for (const St_SensorData* record : threshold_sensors(SENSOR_TYPE_VOLTAGE))
        members.push_back(voltage_member(*record, members.size()));
    return members;
}

boost::json::object oem_object() {
    boost::json::object tarnwright({{"@odata.type", "#TwrPowerExtensions.v1_0_0.Power"}},
                                   answer_storage());
    if (const St_SensorData* battery = find_sensor_named(battery_sensor_name)) {
        tarnwright["Battery"] = {{"Name", battery_sensor_name},
                                 {"SensorNumber", battery->sensor_number},
                                 {"Status", sensor_status(*battery)}};
    }
    return boost::json::object({{"Tarnwright", std::move(tarnwright)}}, answer_storage());
}

}  // namespace

power::power(request_context& context)
    : redfish(context, "Power", std::string(schema_file_of("Power").version), "Power", power_uri) {}

int power::get(request_context&) {
    set_common_properties();
    set("PowerControl", power_control_members());
    set("Voltages", voltage_members());
    set("PowerSupplies", power_supply_members());
    set("Redundancy", power_redundancy_members());
    set("Oem", oem_object());
    return 0;
}

}  // namespace odata::redfish
