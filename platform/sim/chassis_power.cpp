// Host power control of the simulated BMC: every change is one locked
// read-modify-write of the chassis state, after which the changes are
// added to the event log.
#include <functional>
#include <vector>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "base/input_recording.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/libweb.h"
#include "platform/sim/bios_staging.h"
#include "platform/sim/chassis_events.h"
#include "platform/sim/chassis_state.h"
#include "platform/sim/power_history.h"
#include "platform/sim/power_supply.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace platform {
namespace {

chassis_clock test_clock = nullptr;

long long clock_now() { return test_clock ? test_clock() : lx_time_get(); }

struct pending_event {
    chassis_event event;
    long long argument;
};

using event_list = std::vector<pending_event>;
using operation = std::function<int(chassis_state&, long long now, event_list&)>;

chassis_state load(const pt::ptree& tree) {
    chassis_state state;
    state.power_on = tree.get("Power.On", 1) != 0;
    state.soft_off_at = tree.get("Power.SoftOffAt", 0LL);
    state.power_on_at = tree.get("Power.OnAt", 0LL);
    state.resets = tree.get("Counters.Resets", 0LL);
    state.cycles = tree.get("Counters.Cycles", 0LL);
    state.diagnostic_interrupts = tree.get("Counters.DiagnosticInterrupts", 0LL);
    return state;
}

void store(const chassis_state& state, pt::ptree& tree) {
    tree.put("Power.On", state.power_on ? 1 : 0);
    tree.put("Power.SoftOffAt", state.soft_off_at);
    tree.put("Power.OnAt", state.power_on_at);
    tree.put("Counters.Resets", state.resets);
    tree.put("Counters.Cycles", state.cycles);
    tree.put("Counters.DiagnosticInterrupts", state.diagnostic_interrupts);
}

void apply_due_steps(chassis_state& state, long long now, event_list& events) {
    if (state.soft_off_at != 0 && now >= state.soft_off_at) {
        state.soft_off_at = 0;
        state.power_on = false;
        events.push_back({chassis_event::graceful_shutdown_done, 0});
    }
    if (state.power_on_at != 0 && now >= state.power_on_at) {
        state.power_on_at = 0;
        state.power_on = true;
        events.push_back({chassis_event::power_on_after_cycle, 0});
    }
}

bool starts_host(const pending_event& each) {
    switch (each.event) {
        case chassis_event::power_on:
        case chassis_event::power_on_after_cycle:
        case chassis_event::reset:
            return true;
        case chassis_event::power_cycle:
            return each.argument == 0;  // power comes back at once
        default:
            return false;
    }
}

// The consumption history up to a change of host power; the change goes
// ahead when the history cannot be written.
void settle_history(bool was_on, long long now) {
    if (!settle_power_history(now, was_on, host_load_watts()))
        console_log("[ERROR] cannot write %s\n", power_history_file().c_str());
}

int run(const operation& change) {
    int result = PLT_ERR_IO;
    event_list events;
    bool stored = sim::update_state_ini(chassis_state_file(), [&](pt::ptree& tree) {
        chassis_state before = load(tree);
        chassis_state state = before;
        long long now = clock_now();
        apply_due_steps(state, now, events);
        result = change(state, now, events);
        if (state == before) return false;
        if (state.power_on != before.power_on) settle_history(before.power_on, now);
        store(state, tree);
        return true;
    });
    if (!stored) return PLT_ERR_IO;
    bool host_started = false;
    for (const pending_event& each : events) {
        const chassis_event_entry& entry = chassis_event_info(each.event);
        LibSaveSysEvtLog(entry.code, static_cast<int>(each.argument), entry.text);
        host_started |= starts_host(each);
    }
    if (host_started) sim::apply_bios_staged_for_reset();
    return result;
}

// A read needs no lock, as writers rename whole files into place; only a
// scheduled step that has come due takes the locked path, which applies it.
int look(const operation& read) {
    static file_cache<chassis_state> cache;
    std::shared_ptr<const chassis_state> parsed;
    cache.get(
        chassis_state_file(),
        [](chassis_state& state) {
            state = load(sim::read_state_ini(chassis_state_file()));
            return PLT_OK;
        },
        parsed);
    chassis_state state = *parsed;
    const chassis_state stored = state;
    const long long now = clock_now();
    event_list events;
    apply_due_steps(state, now, events);
    if (!(state == stored)) return run(read);
    // What is read now changes by itself when a scheduled step comes due.
    for (long long due : {state.soft_off_at, state.power_on_at})
        if (due != 0) note_input_expiry(due);
    return read(state, now, events);
}

int power_up(chassis_state& state, long long, event_list& events) {
    state.soft_off_at = 0;
    state.power_on_at = 0;
    if (!state.power_on) {
        state.power_on = true;
        events.push_back({chassis_event::power_on, 0});
    }
    return PLT_OK;
}

int power_down(chassis_state& state, long long, event_list& events) {
    state.soft_off_at = 0;
    state.power_on_at = 0;
    if (state.power_on) {
        state.power_on = false;
        events.push_back({chassis_event::power_off, 0});
    }
    return PLT_OK;
}

int soft_shutdown(chassis_state& state, long long now, event_list& events) {
    if (!state.power_on) return PLT_ERR_STATE;
    if (state.soft_off_at == 0) {
        state.soft_off_at = now + CHASSIS_SOFT_SHUTDOWN_SECONDS;
        events.push_back({chassis_event::graceful_shutdown_begun, CHASSIS_SOFT_SHUTDOWN_SECONDS});
    }
    return PLT_OK;
}

operation power_cycle(uint8_t interval_seconds) {
    return [interval_seconds](chassis_state& state, long long now, event_list& events) {
        if (!state.power_on) return static_cast<int>(PLT_ERR_STATE);
        state.soft_off_at = 0;
        ++state.cycles;
        events.push_back({chassis_event::power_cycle, interval_seconds});
        if (interval_seconds != 0) {
            state.power_on = false;
            state.power_on_at = now + interval_seconds;
        }
        return static_cast<int>(PLT_OK);
    };
}

int power_reset(chassis_state& state, long long, event_list& events) {
    if (!state.power_on) return PLT_ERR_STATE;
    events.push_back({chassis_event::reset, ++state.resets});
    return PLT_OK;
}

int diagnostic_interrupt(chassis_state& state, long long, event_list& events) {
    if (!state.power_on) return PLT_ERR_STATE;
    events.push_back({chassis_event::diagnostic_interrupt, ++state.diagnostic_interrupts});
    return PLT_OK;
}

int power_status(chassis_state& state, long long, event_list&) { return state.power_on ? 1 : 0; }

}  // namespace

bool chassis_state::operator==(const chassis_state& other) const {
    return power_on == other.power_on && soft_off_at == other.soft_off_at &&
           power_on_at == other.power_on_at && resets == other.resets && cycles == other.cycles &&
           diagnostic_interrupts == other.diagnostic_interrupts;
}

const std::string& chassis_state_file() {
    static fixed_bmc_path path("/var/bmc/chassis.ini");
    return path.get();
}

bool current_chassis_state(chassis_state& state) {
    return look([&](chassis_state& current, long long, event_list&) {
               state = current;
               return static_cast<int>(PLT_OK);
           }) == PLT_OK;
}

void set_chassis_clock_for_tests(chassis_clock clock) { test_clock = clock; }

}  // namespace platform

extern "C" int PltCHASSIS_PowerStatus(void) { return platform::look(platform::power_status); }

extern "C" int PltCHASSIS_PowerUp(void) { return platform::run(platform::power_up); }

extern "C" int PltCHASSIS_PowerDown(void) { return platform::run(platform::power_down); }

extern "C" int PltCHASSIS_SoftShutdown(void) { return platform::run(platform::soft_shutdown); }

extern "C" int PltCHASSIS_PowerCycle(uint8_t interval_seconds) {
    return platform::run(platform::power_cycle(interval_seconds));
}

extern "C" int PltCHASSIS_PowerReset(void) { return platform::run(platform::power_reset); }

extern "C" int PltCHASSIS_PulseDiagnosticInterrupt(void) {
    return platform::run(platform::diagnostic_interrupt);
}
