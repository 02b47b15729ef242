#include "resources/chassis/power_consumption_metrics.h"

#include <algorithm>

namespace odata::redfish {
namespace {

constexpr uint32_t hour_minutes = 60;
constexpr uint32_t day_minutes = 24 * hour_minutes;
constexpr uint32_t week_minutes = 7 * day_minutes;
static_assert(week_minutes == POWER_HISTORY_MINUTES, "a week of samples serves every period");

struct statistic_row {
    power_statistic statistic;
    const char* prefix;
    const char* function;
};

struct period_row {
    const char* name;
    const char* duration;
    uint32_t minutes;
};

constexpr statistic_row statistics[] = {
    {power_statistic::average, "Avg", "Average"},
    {power_statistic::minimum, "Min", "Minimum"},
    {power_statistic::maximum, "Max", "Maximum"},
};

constexpr period_row periods[] = {
    {"Hour", "PT1H", hour_minutes},
    {"Day", "P1D", day_minutes},
    {"Week", "P7D", week_minutes},
};

std::vector<power_metric> every_metric() {
    std::vector<power_metric> metrics;
    for (const period_row& period : periods)
        for (const statistic_row& statistic : statistics)
            metrics.push_back({statistic.statistic, statistic.prefix, statistic.function,
                               period.name, period.duration, period.minutes});
    return metrics;
}

std::string metric_id(const power_metric& metric, const char* middle) {
    return std::string(metric.statistic_prefix) + middle + metric.period;
}

std::optional<power_metric> metric_named(std::string_view id, const char* middle) {
    for (const power_metric& metric : power_metrics())
        if (metric_id(metric, middle) == id) return metric;
    return std::nullopt;
}

}  // namespace

const std::vector<power_metric>& power_metrics() {
    static const std::vector<power_metric> metrics = every_metric();
    return metrics;
}

std::string metric_definition_id(const power_metric& metric) {
    return metric_id(metric, "PowerConsumed");
}

std::string metric_report_id(const power_metric& metric) {
    return metric_id(metric, "PowerConsumption");
}

std::optional<power_metric> metric_of_definition(std::string_view id) {
    return metric_named(id, "PowerConsumed");
}

std::optional<power_metric> metric_of_report(std::string_view id) {
    return metric_named(id, "PowerConsumption");
}

std::optional<uint32_t> power_metric_value(const power_metric& metric,
                                           const std::vector<St_PowerSample>& samples,
                                           uint32_t last_minute) {
    const uint32_t first_minute =
        last_minute >= metric.period_minutes ? last_minute - metric.period_minutes + 1 : 0;
    uint64_t total = 0;
    uint64_t count = 0;
    uint32_t least = UINT32_MAX;
    uint32_t most = 0;
    for (const St_PowerSample& sample : samples) {
        if (sample.minute < first_minute || sample.minute > last_minute) continue;
        total += sample.watts;
        ++count;
        least = std::min<uint32_t>(least, sample.watts);
        most = std::max<uint32_t>(most, sample.watts);
    }
    if (count == 0) return std::nullopt;
    switch (metric.statistic) {
        case power_statistic::minimum:
            return least;
        case power_statistic::maximum:
            return most;
        case power_statistic::average:
            break;
    }
    return static_cast<uint32_t>((2 * total + count) / (2 * count));
}

}  // namespace odata::redfish
