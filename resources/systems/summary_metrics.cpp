// Metrics of the system's processor and memory summaries, from the
// temperature and memory sensors of the SDR.
#include "framework/schema_files.h"
#include "resources/chassis/sdr_sensors.h"
#include "resources/systems/memorymetrics.h"
#include "resources/systems/memorysummarymetrics.h"
#include "resources/systems/processormetrics.h"
#include "resources/systems/smbios_lists.h"

namespace odata::redfish {
namespace {

constexpr const char* processor_metrics_uri =
    "/redfish/v1/Systems/1/ProcessorSummary/ProcessorMetrics";
constexpr const char* memory_metrics_uri = "/redfish/v1/Systems/1/MemorySummary/MemoryMetrics";
constexpr const char* ecc_sensor_name = "Memory ECC";

bool names(const St_SensorData& record, std::string_view part) {
    return sensor_name(record).find(part) != std::string::npos;
}

bool processor_temperature(const St_SensorData& record) {
    return names(record, "CPU") && !names(record, "DIMM");
}

// The hottest processor now; null while none has a reading.
boost::json::value hottest_processor() {
    boost::json::value hottest = nullptr;
    for (const St_SensorData* record : threshold_sensors(SENSOR_TYPE_TEMPERATURE)) {
        if (!processor_temperature(*record)) continue;
        const boost::json::value reading = reading_value(*record, number_form::decimal);
        if (!reading.is_null() &&
            (hottest.is_null() || reading.to_number<double>() > hottest.to_number<double>()))
            hottest = reading;
    }
    return hottest;
}

bool unhealthy(const St_SensorData& record) {
    const boost::json::object status = sensor_status(record);
    const boost::json::value* health = status.if_contains("Health");
    return health && *health != "OK";
}

bool memory_temperature_alarm() {
    for (const St_SensorData* record : threshold_sensors(SENSOR_TYPE_TEMPERATURE))
        if (names(*record, "DIMM") && unhealthy(*record)) return true;
    return false;
}

bool uncorrectable_ecc_alarm() {
    const St_SensorData* ecc = find_sensor_named(ecc_sensor_name);
    return ecc && unhealthy(*ecc);
}

// The modules' counts added up; zeros when the SMBIOS table is unreadable.
boost::json::object all_module_error_counts() {
    uint64_t correctable = 0, uncorrectable = 0;
    smbios_lists lists;
    if (lists.parse() != PLT_OK) return error_count_period(0, 0);
    for (int i = 0; i < lists.data().type17_count; ++i) {
        const St_SMBiosType17& module = lists.data().type17[i];
        if (module.size_mib == 0) continue;
        const St_MemoryErrorCounts counts = module_error_counts(module);
        correctable += counts.correctable;
        uncorrectable += counts.uncorrectable;
    }
    return error_count_period(correctable, uncorrectable);
}

}  // namespace

processormetrics::processormetrics(request_context& context)
    : redfish(context, "ProcessorMetrics", std::string(schema_file_of("ProcessorMetrics").version),
              "Processor Summary Metrics", processor_metrics_uri) {}

int processormetrics::get(request_context&) {
    set_common_properties();
    set("TemperatureCelsius", hottest_processor());
    return 0;
}

memorysummarymetrics::memorysummarymetrics(request_context& context)
    : redfish(context, "MemoryMetrics", std::string(schema_file_of("MemoryMetrics").version),
              "Memory Summary Metrics", memory_metrics_uri) {}

int memorysummarymetrics::get(request_context&) {
    set_common_properties();
    set("CurrentPeriod", all_module_error_counts());
    set("HealthData", {{"AlarmTrips",
                        {{"Temperature", memory_temperature_alarm()},
                         {"UncorrectableECCError", uncorrectable_ecc_alarm()}}}});
    return 0;
}

}  // namespace odata::redfish
