// Power metering, power-supply bays and their redundancy (the BMC's
// libipmi.so). Return codes are those of plt_result.h; health codes are the
// SENSOR_HEALTH_* of libipmi_sensors.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

// What the BMC does when consumption exceeds the power limit.
enum {
    POWER_LIMIT_NO_ACTION = 0,       // Redfish "NoAction"
    POWER_LIMIT_HARD_POWER_OFF = 1,  // Redfish "HardPowerOff"
};

// Whole-system power figures, in watts.
struct St_PowerControl {
    uint32_t consumed_watts;    // now; the standby draw while host power is off
    uint32_t capacity_watts;    // what the supplies deliver with redundancy kept
    uint32_t available_watts;   // capacity minus allocated
    uint32_t requested_watts;   // what the host's components ask for
    uint32_t allocated_watts;   // what the BMC has granted
    uint32_t interval_minutes;  // the period of the metrics below
    uint32_t min_consumed_watts;
    uint32_t max_consumed_watts;
    uint32_t average_consumed_watts;
    uint32_t limit_watts;     // 0: no limit set
    uint8_t limit_exception;  // POWER_LIMIT_*
};

// Power supply types and line input voltage types.
enum { PSU_TYPE_AC = 1 };                     // Redfish PowerSupplyType "AC"
enum { PSU_INPUT_AC = 1, PSU_INPUT_DC = 2 };  // Redfish InputType "AC", "DC"
enum {
    PSU_LINE_UNKNOWN = 0,     // "Unknown"
    PSU_LINE_AC_LOW = 1,      // "ACLowLine" (100-127 V)
    PSU_LINE_AC_MID = 2,      // "ACMidLine" (200-240 V)
    PSU_LINE_AC_HIGH = 3,     // "ACHighLine" (277 V)
    PSU_LINE_DC_480V = 4,     // "DC480V"
    PSU_LINE_DC_NEG_48V = 5,  // "DCNeg48V"
};

enum { PSU_TEXT_SIZE = 32, PSU_INPUT_RANGES_MAX = 2, PSU_BAYS_MAX = 2 };

struct St_PowerInputRange {
    uint8_t input_type;  // PSU_INPUT_*
    uint16_t minimum_volts;
    uint16_t maximum_volts;
    uint16_t output_watts;
};

// One power-supply bay. Text fields are empty while the bay is empty.
struct St_PowerSupplyInfo {
    uint8_t bay;            // 1-based
    uint8_t sensor_number;  // the bay's "PSn Status" sensor
    uint8_t present;
    uint8_t health;             // SENSOR_HEALTH_* (UNAVAILABLE when empty)
    uint8_t supply_type;        // PSU_TYPE_*
    uint8_t line_input_type;    // PSU_LINE_*
    uint16_t line_input_volts;  // 0 while input is lost or the supply failed
    uint16_t capacity_watts;
    uint16_t last_output_watts;
    char model[PSU_TEXT_SIZE];
    char firmware_version[PSU_TEXT_SIZE];
    char serial_number[PSU_TEXT_SIZE];
    char part_number[PSU_TEXT_SIZE];
    char spare_part_number[PSU_TEXT_SIZE];
    uint8_t input_range_count;
    St_PowerInputRange input_ranges[PSU_INPUT_RANGES_MAX];
};

// The supplies' redundancy group (failover).
struct St_PowerRedundancy {
    uint8_t max_supported;  // supplies the group can hold
    uint8_t min_needed;     // supplies needed to power the system
    uint8_t health;         // SENSOR_HEALTH_*: WARNING when redundancy is lost
    uint8_t member_count;
    uint8_t member_bays[PSU_BAYS_MAX];  // 1-based bay numbers
};

// The system's power figures.
int PltPSU_GetPowerControl(St_PowerControl* control);
// Caps the system's consumption at watts (0: no cap), with what the BMC does
// beyond it (POWER_LIMIT_*); PLT_ERR_ARGUMENT for an unknown action or a
// cap above the supplies' capacity.
int PltPSU_SetPowerLimit(uint32_t watts, uint8_t exception);
// Number of power-supply bays (PSU_BAYS_MAX).
int PltPSU_GetBayCount(void);
// One bay (1-based); PLT_ERR_NOT_FOUND for a bay that does not exist.
int PltPSU_GetBayInfo(int bay, St_PowerSupplyInfo* info);
// The redundancy group of the supplies.
int PltPSU_GetRedundancy(St_PowerRedundancy* redundancy);

// The power-consumption history: one sample a minute while host power is
// on, kept for a week.
enum { POWER_HISTORY_MINUTES = 10080 };

struct St_PowerSample {
    uint32_t minute;  // lx_time_get() / 60 at the start of the minute
    uint16_t watts;   // the consumption over that minute
};

// The samples of the week that ends with the last complete minute, oldest
// first: *count of them (at most capacity) and *last_minute, the minute the
// week ends with, sampled or not.
int PltPSU_GetPowerHistory(St_PowerSample* samples, int capacity, int* count,
                           uint32_t* last_minute);

}  // extern "C"
