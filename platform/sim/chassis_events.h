// Event-log records of host power changes: code, text and what the
// argument carries.
#pragma once

#include <cstddef>

namespace platform {

enum class chassis_event {
    power_on,                 // argument 0
    power_off,                // argument 0
    graceful_shutdown_begun,  // argument: seconds until power goes off
    graceful_shutdown_done,   // argument 0
    power_cycle,              // argument: seconds until power comes back
    power_on_after_cycle,     // argument 0
    reset,                    // argument: resets so far
    diagnostic_interrupt,     // argument: interrupts so far
};

struct chassis_event_entry {
    chassis_event event;
    int code;
    const char* text;
};

inline constexpr chassis_event_entry chassis_events[] = {
    {chassis_event::power_on, 160, "Host power on"},
    {chassis_event::power_off, 161, "Host power off"},
    {chassis_event::graceful_shutdown_begun, 162, "Host graceful shutdown requested"},
    {chassis_event::graceful_shutdown_done, 163, "Host powered off by graceful shutdown"},
    {chassis_event::power_cycle, 164, "Host power cycle"},
    {chassis_event::power_on_after_cycle, 165, "Host powered on after power cycle"},
    {chassis_event::reset, 166, "Host hard reset"},
    {chassis_event::diagnostic_interrupt, 167, "Host diagnostic interrupt (NMI)"},
};

constexpr const chassis_event_entry& chassis_event_info(chassis_event event) {
    return chassis_events[static_cast<std::size_t>(event)];
}

static_assert(chassis_event_info(chassis_event::diagnostic_interrupt).event ==
                  chassis_event::diagnostic_interrupt,
              "chassis_events follows the order of chassis_event");

}  // namespace platform
