// Power figures and supply psu_bays: two 1600 W AC supplies in failover.
#include "platform/sim/power_supply.h"

#include <algorithm>
#include <cstring>

#include "base/bmc_root.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/libipmi_power.h"
#include "platform/libipmi_sensors.h"
#include "platform/sim/power_history.h"
#include "platform/sim/sdr_repository.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr uint32_t supply_capacity_watts = 1600;
constexpr uint32_t standby_watts = 12;
constexpr uint32_t requested_watts = 600;
constexpr uint32_t metrics_interval_minutes = 60;
constexpr uint16_t line_input_volts = 230;
constexpr uint32_t default_consumed_watts = 285;

struct bay_details {
    const char* status_sensor;
    const char* serial_number;
};

constexpr bay_details psu_bays[PSU_BAYS_MAX] = {
    {"PS1 Status", "PSU16A2301001"},
    {"PS2 Status", "PSU16A2301002"},
};

constexpr St_PowerInputRange input_ranges[PSU_INPUT_RANGES_MAX] = {
    {PSU_INPUT_AC, 90, 140, 1000},
    {PSU_INPUT_AC, 180, 264, static_cast<uint16_t>(supply_capacity_watts)},
};

// The consumption over the metrics interval; a fresh BMC has seen an hour
// of samples.
struct power_metrics {
    uint32_t min_watts;
    uint32_t max_watts;
    uint32_t average_watts;
    uint32_t samples;
};

power_metrics load_metrics(const pt::ptree& state) {
    return {state.get("Metrics.MinWatts", 250u), state.get("Metrics.MaxWatts", 340u),
            state.get("Metrics.AverageWatts", 280u), state.get("Metrics.Samples", 60u)};
}

void store_sample(pt::ptree& state, uint32_t watts) {
    power_metrics metrics = load_metrics(state);
    uint64_t total = uint64_t{metrics.average_watts} * metrics.samples + watts;
    state.put("Control.ConsumedWatts", watts);
    state.put("Metrics.MinWatts", std::min(metrics.min_watts, watts));
    state.put("Metrics.MaxWatts", std::max(metrics.max_watts, watts));
    state.put("Metrics.AverageWatts", total / (uint64_t{metrics.samples} + 1));
    state.put("Metrics.Samples", metrics.samples + 1);
}

struct supply_state {
    uint8_t sensor_number = 0;
    uint8_t bits = 0;

    bool present() const { return bits & PS_STATE_PRESENT; }
    bool working() const {
        return present() && (bits & (PS_STATE_FAILED | PS_STATE_INPUT_LOST)) == 0;
    }
};

supply_state read_supply(int bay) {
    supply_state state;
    const St_SensorData* record = platform::find_sensor_by_name(psu_bays[bay - 1].status_sensor);
    if (record && UtilGetSensorReading(record->sensor_number, &state.bits) == PLT_OK)
        state.sensor_number = record->sensor_number;
    return state;
}

uint32_t working_supplies() {
    uint32_t count = 0;
    for (int bay = 1; bay <= PSU_BAYS_MAX; ++bay) count += read_supply(bay).working() ? 1 : 0;
    return count;
}

uint32_t load_watts(const pt::ptree& state) {
    return state.get("Control.ConsumedWatts", default_consumed_watts);
}

uint32_t consumed_watts(const pt::ptree& state) {
    return PltCHASSIS_PowerStatus() == 1 ? load_watts(state) : standby_watts;
}

void fill_supply_details(St_PowerSupplyInfo& info, int bay) {
    platform::sim::copy_text(info.model, "TW-PSU-1600AC");
    platform::sim::copy_text(info.firmware_version, "1.04.2");
    platform::sim::copy_text(info.serial_number, psu_bays[bay - 1].serial_number);
    platform::sim::copy_text(info.part_number, "PSU-1600-AC-01");
    platform::sim::copy_text(info.spare_part_number, "SP-PSU-1600-AC");
    info.input_range_count = PSU_INPUT_RANGES_MAX;
    std::copy(std::begin(input_ranges), std::end(input_ranges), info.input_ranges);
}

}  // namespace

namespace platform {

const std::string& power_state_file() {
    static fixed_bmc_path path("/var/bmc/power.ini");
    return path.get();
}

bool set_consumed_watts(uint32_t watts) {
    const bool host_on = PltCHASSIS_PowerStatus() == 1;
    bool settled = false;
    const bool stored = sim::update_state_ini(power_state_file(), [&](pt::ptree& state) {
        settled = settle_power_history(lx_time_get(), host_on, load_watts(state));
        if (settled) store_sample(state, watts);
        return settled;
    });
    return stored && settled;
}

uint32_t host_load_watts() { return load_watts(*sim::stored_state_ini(power_state_file())); }

bool set_power_limit(uint32_t watts, uint8_t exception) {
    return sim::update_state_ini(power_state_file(), [&](pt::ptree& state) {
        state.put("Control.LimitWatts", watts);
        state.put("Control.LimitException", static_cast<unsigned>(exception));
        return true;
    });
}

}  // namespace platform

extern "C" int PltPSU_GetPowerControl(St_PowerControl* control) {
    if (!control) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> stored =
        platform::sim::stored_state_ini(platform::power_state_file());
    const pt::ptree& state = *stored;
    St_PowerControl figures{};
    figures.consumed_watts = consumed_watts(state);
    figures.capacity_watts = working_supplies() > 0 ? supply_capacity_watts : 0;
    figures.requested_watts = requested_watts;
    figures.allocated_watts = std::min(requested_watts, figures.capacity_watts);
    figures.available_watts = figures.capacity_watts - figures.allocated_watts;
    figures.interval_minutes = metrics_interval_minutes;
    power_metrics metrics = load_metrics(state);
    figures.min_consumed_watts = metrics.min_watts;
    figures.max_consumed_watts = metrics.max_watts;
    figures.average_consumed_watts = metrics.average_watts;
    figures.limit_watts = state.get("Control.LimitWatts", 0u);
    figures.limit_exception = state.get("Control.LimitException", 0u) == POWER_LIMIT_HARD_POWER_OFF
                                  ? POWER_LIMIT_HARD_POWER_OFF
                                  : POWER_LIMIT_NO_ACTION;
    *control = figures;
    return PLT_OK;
}

extern "C" int PltPSU_SetPowerLimit(uint32_t watts, uint8_t exception) {
    if (watts > supply_capacity_watts ||
        (exception != POWER_LIMIT_NO_ACTION && exception != POWER_LIMIT_HARD_POWER_OFF))
        return PLT_ERR_ARGUMENT;
    return platform::set_power_limit(watts, exception) ? PLT_OK : PLT_ERR_IO;
}

extern "C" int PltPSU_GetBayCount(void) { return PSU_BAYS_MAX; }

extern "C" int PltPSU_GetBayInfo(int bay, St_PowerSupplyInfo* info) {
    if (!info) return PLT_ERR_ARGUMENT;
    if (bay < 1 || bay > PSU_BAYS_MAX) return PLT_ERR_NOT_FOUND;
    supply_state supply = read_supply(bay);
    St_PowerSupplyInfo details{};
    details.bay = static_cast<uint8_t>(bay);
    details.sensor_number = supply.sensor_number;
    details.present = supply.present() ? 1 : 0;
    details.health = static_cast<uint8_t>(
        std::max(UtilGetSensorCurrStatus(supply.sensor_number, SENSOR_STATUS_HEALTH), 0));
    details.supply_type = PSU_TYPE_AC;
    details.line_input_type = supply.present() ? PSU_LINE_AC_MID : PSU_LINE_UNKNOWN;
    details.capacity_watts = static_cast<uint16_t>(supply_capacity_watts);
    if (supply.present()) {
        fill_supply_details(details, bay);
        details.line_input_volts = supply.bits & PS_STATE_INPUT_LOST ? 0 : line_input_volts;
    }
    if (supply.working()) {
        details.last_output_watts = static_cast<uint16_t>(
            consumed_watts(*platform::sim::stored_state_ini(platform::power_state_file())) /
            working_supplies());
    }
    *info = details;
    return PLT_OK;
}

extern "C" int PltPSU_GetRedundancy(St_PowerRedundancy* redundancy) {
    if (!redundancy) return PLT_ERR_ARGUMENT;
    uint32_t working = working_supplies();
    St_PowerRedundancy group{};
    group.max_supported = PSU_BAYS_MAX;
    group.min_needed = 1;
    group.health = working >= group.max_supported ? SENSOR_HEALTH_OK
                   : working >= group.min_needed  ? SENSOR_HEALTH_WARNING
                                                  : SENSOR_HEALTH_CRITICAL;
    group.member_count = PSU_BAYS_MAX;
    for (int bay = 1; bay <= PSU_BAYS_MAX; ++bay)
        group.member_bays[bay - 1] = static_cast<uint8_t>(bay);
    *redundancy = group;
    return PLT_OK;
}
