// bmcsim power: host power control, power metering and supply bays.
#include <climits>
#include <ostream>
#include <string>

#include "platform/libipmi_chassis.h"
#include "platform/libipmi_power.h"
#include "platform/libipmi_sensors.h"
#include "platform/sim/chassis_state.h"
#include "platform/sim/power_supply.h"
#include "platform/sim/sdr_repository.h"
#include "platform/sim/sensor_readings.h"
#include "platform/sim/tool/areas.h"
#include "platform/sim/tool/health_names.h"

namespace bmcsim {
namespace power_commands {

struct power_action {
    const char* command;
    int (*apply)(void);
};

constexpr power_action power_actions[] = {
    {"on", PltCHASSIS_PowerUp},
    {"off", PltCHASSIS_PowerDown},
    {"soft", PltCHASSIS_SoftShutdown},
    {"reset", PltCHASSIS_PowerReset},
    {"nmi", PltCHASSIS_PulseDiagnosticInterrupt},
};

struct supply_condition {
    const char* name;
    uint8_t state;
};

constexpr supply_condition supply_conditions[] = {
    {"ok", PS_STATE_PRESENT},
    {"failed", PS_STATE_PRESENT | PS_STATE_FAILED},
    {"input-lost", PS_STATE_PRESENT | PS_STATE_INPUT_LOST},
    {"predictive-failure", PS_STATE_PRESENT | PS_STATE_PREDICTIVE_FAILURE},
    {"absent", 0},
};

struct limit_action {
    const char* name;
    uint8_t exception;
};

constexpr limit_action limit_actions[] = {
    {"no-action", POWER_LIMIT_NO_ACTION},
    {"hard-power-off", POWER_LIMIT_HARD_POWER_OFF},
};

constexpr const char* restore_policies[] = {"always-off", "last-state", "always-on"};

const char* restore_policy_name(int policy) {
    return policy >= POWER_RESTORE_ALWAYS_OFF && policy <= POWER_RESTORE_ALWAYS_ON
               ? restore_policies[policy]
               : "unknown";
}

const char* limit_action_name(uint8_t exception) {
    for (const limit_action& each : limit_actions)
        if (each.exception == exception) return each.name;
    return "unknown";
}

int report(int result, std::ostream& err) {
    if (result == PLT_OK) return exit_ok;
    err << (result == PLT_ERR_STATE ? "bmcsim: host power is off\n"
                                    : "bmcsim: cannot change the host power state\n");
    return exit_failed;
}

void show_supplies(std::ostream& out) {
    for (int bay = 1; bay <= PltPSU_GetBayCount(); ++bay) {
        St_PowerSupplyInfo info{};
        if (PltPSU_GetBayInfo(bay, &info) != PLT_OK) continue;
        out << "psu" << bay << '=' << (info.present ? health_name(info.health) : "absent")
            << " output " << info.last_output_watts << " W input " << info.line_input_volts
            << " V\n";
    }
    St_PowerRedundancy redundancy{};
    PltPSU_GetRedundancy(&redundancy);
    out << "redundancy=" << health_name(redundancy.health) << '\n';
}

int show(std::ostream& out, std::ostream& err) {
    platform::chassis_state state;
    St_PowerControl control{};
    if (!platform::current_chassis_state(state) || PltPSU_GetPowerControl(&control) != PLT_OK) {
        err << "bmcsim: cannot read " << platform::chassis_state_file() << '\n';
        return exit_failed;
    }
    out << "power=" << (state.power_on ? "on" : "off") << '\n'
        << "soft_off_at=" << state.soft_off_at << '\n'
        << "power_on_at=" << state.power_on_at << '\n'
        << "resets=" << state.resets << '\n'
        << "cycles=" << state.cycles << '\n'
        << "nmi_count=" << state.diagnostic_interrupts << '\n'
        << "consumed_watts=" << control.consumed_watts << '\n'
        << "limit_watts=" << control.limit_watts << '\n'
        << "limit_action=" << limit_action_name(control.limit_exception) << '\n'
        << "restore_policy=" << restore_policy_name(PltCHASSIS_GetRestorePolicy()) << '\n';
    show_supplies(out);
    return exit_ok;
}

int nmi_count(std::ostream& out, std::ostream& err) {
    platform::chassis_state state;
    if (!platform::current_chassis_state(state)) {
        err << "bmcsim: cannot read " << platform::chassis_state_file() << '\n';
        return exit_failed;
    }
    out << state.diagnostic_interrupts << '\n';
    return exit_ok;
}

int cycle(const area& self, const arguments& words, std::ostream& err) {
    long long seconds = 1;
    if (words.size() > 2 || (words.size() == 2 && !parse_number(words[1], 0, 255, seconds)))
        return usage(self, err);
    return report(PltCHASSIS_PowerCycle(static_cast<uint8_t>(seconds)), err);
}

int consumed(const area& self, const arguments& words, std::ostream& err) {
    long long watts = 0;
    if (words.size() != 2 || !parse_number(words[1], 0, UINT16_MAX, watts)) return usage(self, err);
    return written(platform::set_consumed_watts(static_cast<uint32_t>(watts)),
                   platform::power_state_file(), err);
}

int limit(const area& self, const arguments& words, std::ostream& err) {
    long long watts = 0;
    if (words.size() < 2 || words.size() > 3 || !parse_number(words[1], 0, UINT16_MAX, watts))
        return usage(self, err);
    std::string action = words.size() == 3 ? words[2] : "no-action";
    for (const limit_action& each : limit_actions)
        if (action == each.name)
            return written(platform::set_power_limit(static_cast<uint32_t>(watts), each.exception),
                           platform::power_state_file(), err);
    return usage(self, err);
}

int supply(const area& self, const arguments& words, std::ostream& err) {
    long long bay = 0;
    if (words.size() != 3 || !parse_number(words[1], 1, PltPSU_GetBayCount(), bay))
        return usage(self, err);
    const St_SensorData* record =
        platform::find_sensor_by_name("PS" + std::to_string(bay) + " Status");
    for (const supply_condition& each : supply_conditions) {
        if (words[2] != each.name || !record) continue;
        if (platform::set_raw_reading(record->sensor_number, each.state)) return exit_ok;
        err << "bmcsim: cannot write " << platform::sensor_readings_file() << '\n';
        return exit_failed;
    }
    return usage(self, err);
}

int run_power(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    for (const power_action& each : power_actions)
        if (command == each.command && words.size() == 1) return report(each.apply(), err);
    if (command == "show" && words.size() == 1) return show(out, err);
    if (command == "nmi-count" && words.size() == 1) return nmi_count(out, err);
    if (command == "cycle") return cycle(self, words, err);
    if (command == "consumed") return consumed(self, words, err);
    if (command == "limit") return limit(self, words, err);
    if (command == "psu") return supply(self, words, err);
    return usage(self, err);
}

}  // namespace power_commands

const area power_area = {
    "power",
    "show | on | off | soft | reset | nmi | cycle [SECONDS] | nmi-count | consumed WATTS"
    " | limit WATTS [no-action|hard-power-off]"
    " | psu BAY ok|failed|input-lost|predictive-failure|absent",
    power_commands::run_power};

}  // namespace bmcsim
