// The power-consumption metrics of the telemetry service: the average,
// least and most consumption over the last hour, day and week, computed
// from the platform's one-minute samples.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/libipmi_power.h"

namespace odata::redfish {

enum class power_statistic { average, minimum, maximum };

struct power_metric {
    power_statistic statistic;
    const char* statistic_prefix;  // "Avg"
    const char* function;          // "Average": CollectionFunction, CalculationAlgorithm
    const char* period;            // "Hour"
    const char* duration;          // "PT1H"
    uint32_t period_minutes;
};

// The nine metrics: each statistic over each period.
const std::vector<power_metric>& power_metrics();

// "AvgPowerConsumedHour" (the metric definition), "AvgPowerConsumptionHour"
// (its report definition and report).
std::string metric_definition_id(const power_metric& metric);
std::string metric_report_id(const power_metric& metric);

// The metric an id names; none for another id.
std::optional<power_metric> metric_of_definition(std::string_view id);
std::optional<power_metric> metric_of_report(std::string_view id);

// The statistic of the samples in the period that ends with last_minute,
// in watts (an average rounded to the nearest watt, halves up); none when
// the period holds no sample (host power was off throughout).
std::optional<uint32_t> power_metric_value(const power_metric& metric,
                                           const std::vector<St_PowerSample>& samples,
                                           uint32_t last_minute);

// The property the metrics measure.
inline constexpr const char* power_consumed_property =
    "/redfish/v1/Chassis/1/Power#/PowerControl/0/PowerConsumedWatts";

}  // namespace odata::redfish
