// The telemetry service: its power-consumption metrics are computed when a
// report is read, over the platform's samples (reports are "OnRequest").
#include "resources/chassis/telemetry_resources.h"

#include <cctype>

#include "base/utc_time.h"
#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/exception_http.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/power_consumption_metrics.h"

namespace odata::redfish {
namespace {

constexpr const char* telemetry_service_uri = "/redfish/v1/TelemetryService";
constexpr const char* definitions_uri = "/redfish/v1/TelemetryService/MetricDefinitions";
constexpr const char* report_definitions_uri =
    "/redfish/v1/TelemetryService/MetricReportDefinitions";
constexpr const char* reports_uri = "/redfish/v1/TelemetryService/MetricReports";

std::string captured(const request_context& context) {
    return context.captures.empty() ? std::string() : context.captures[0];
}

std::string child_uri(const char* collection, const std::string& id) {
    return std::string(collection) + "/" + id;
}

std::vector<std::string> member_uris(const char* collection,
                                     std::string (*id_of)(const power_metric&)) {
    std::vector<std::string> uris;
    for (const power_metric& metric : power_metrics())
        uris.push_back(child_uri(collection, id_of(metric)));
    return uris;
}

// The route admits only the nine ids.
power_metric requested_metric(const request_context& context,
                              std::optional<power_metric> (*metric_of)(std::string_view)) {
    const std::optional<power_metric> metric = metric_of(captured(context));
    if (!metric) throw_http_error(404, "Base.1.10.ResourceNotFound", {"Metric", captured(context)});
    return *metric;
}

// "Average power consumption over the last hour".
std::string metric_name(const power_metric& metric, const char* what) {
    std::string period = metric.period;
    for (char& c : period) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return std::string(metric.function) + " power " + what + " over the last " + period;
}

struct power_history {
    std::vector<St_PowerSample> samples;
    uint32_t last_minute = 0;
};

power_history read_power_history() {
    power_history history;
    history.samples.resize(POWER_HISTORY_MINUTES);
    int count = 0;
    if (PltPSU_GetPowerHistory(history.samples.data(), POWER_HISTORY_MINUTES, &count,
                               &history.last_minute) != PLT_OK)
        throw_http_error(500, "Base.1.10.InternalError", {});
    history.samples.resize(count);
    return history;
}

boost::json::array metric_values(const power_metric& metric, const power_history& history,
                                 const std::string& timestamp) {
    const std::optional<uint32_t> value =
        power_metric_value(metric, history.samples, history.last_minute);
    if (!value) return {};
    const std::string id = metric_definition_id(metric);
    return {boost::json::object{{"MetricId", id},
                                {"MetricValue", std::to_string(*value)},
                                {"Timestamp", timestamp},
                                {"MetricProperty", power_consumed_property},
                                {"MetricDefinition", link(child_uri(definitions_uri, id))}}};
}

}  // namespace

telemetryservice::telemetryservice(request_context& context)
    : redfish(context, "TelemetryService", std::string(schema_file_of("TelemetryService").version),
              "Telemetry Service", telemetry_service_uri) {}

int telemetryservice::get(request_context&) {
    set_common_properties("TelemetryService");
    set("Status", status_object(SENSOR_HEALTH_OK));
    set("MaxReports", power_metrics().size());
    set("MinCollectionInterval", "PT1M");
    set("SupportedCollectionFunctions", {"Average", "Minimum", "Maximum"});
    set("MetricDefinitions", link(definitions_uri));
    set("MetricReportDefinitions", link(report_definitions_uri));
    set("MetricReports", link(reports_uri));
    return 0;
}

metricdefinitions::metricdefinitions(request_context& context)
    : redfish(context, "MetricDefinitionCollection", "", "Metric Definition Collection",
              definitions_uri) {}

int metricdefinitions::get(request_context&) {
    set_common_properties();
    set_members(member_uris(definitions_uri, metric_definition_id));
    return 0;
}

powerconsumed::powerconsumed(request_context& context)
    : redfish(context, "MetricDefinition", std::string(schema_file_of("MetricDefinition").version),
              "", child_uri(definitions_uri, captured(context))) {}

int powerconsumed::get(request_context& context) {
    const power_metric metric = requested_metric(context, metric_of_definition);
    name_ = metric_name(metric, "consumed");
    set_common_properties();
    set("MetricType", "Numeric");
    set("MetricDataType", "Integer");
    set("Units", "W");
    set("Implementation", "Calculated");
    set("Calculable", "NonSummable");
    set("IsLinear", true);
    set("MetricProperties", {power_consumed_property});
    set("SensingInterval", "PT1M");
    set("CalculationAlgorithm", metric.function);
    set("CalculationTimeInterval", metric.duration);
    return 0;
}

metricreportdefinitions::metricreportdefinitions(request_context& context)
    : redfish(context, "MetricReportDefinitionCollection", "",
              "Metric Report Definition Collection", report_definitions_uri) {}

int metricreportdefinitions::get(request_context&) {
    set_common_properties();
    set_members(member_uris(report_definitions_uri, metric_report_id));
    return 0;
}

defpowerconsumption::defpowerconsumption(request_context& context)
    : redfish(context, "MetricReportDefinition",
              std::string(schema_file_of("MetricReportDefinition").version), "",
              child_uri(report_definitions_uri, captured(context))) {}

int defpowerconsumption::get(request_context& context) {
    const power_metric metric = requested_metric(context, metric_of_report);
    name_ = metric_name(metric, "consumption");
    set_common_properties();
    set("MetricReportDefinitionType", "OnRequest");
    set("MetricReportDefinitionEnabled", true);
    set("ReportActions", {"LogToMetricReportsCollection"});
    set("ReportUpdates", "Overwrite");
    set("ReportTimespan", metric.duration);
    set("MetricProperties", {power_consumed_property});
    set("Metrics", boost::json::array{boost::json::object{
                       {"MetricId", metric_definition_id(metric)},
                       {"MetricProperties", boost::json::array{power_consumed_property}},
                       {"CollectionFunction", metric.function},
                       {"CollectionDuration", metric.duration},
                       {"CollectionTimeScope", "Interval"}}});
    set("MetricReport", link(child_uri(reports_uri, metric_report_id(metric))));
    set("Status", status_object(SENSOR_HEALTH_OK));
    return 0;
}

metricreports::metricreports(request_context& context)
    : redfish(context, "MetricReportCollection", "", "Metric Report Collection", reports_uri) {}

int metricreports::get(request_context&) {
    set_common_properties();
    set_members(member_uris(reports_uri, metric_report_id));
    return 0;
}

powerconsumption::powerconsumption(request_context& context)
    : redfish(context, "MetricReport", std::string(schema_file_of("MetricReport").version), "",
              child_uri(reports_uri, captured(context))) {}

int powerconsumption::get(request_context& context) {
    const power_metric metric = requested_metric(context, metric_of_report);
    const power_history history = read_power_history();
    // The report covers the minutes through the last complete one.
    const std::string timestamp =
        platform::utc_timestamp((static_cast<long long>(history.last_minute) + 1) * 60);
    name_ = metric_name(metric, "consumption");
    set_common_properties();
    set("MetricReportDefinition",
        link(child_uri(report_definitions_uri, metric_report_id(metric))));
    set("Timestamp", timestamp);
    set("MetricValues", metric_values(metric, history, timestamp));
    return 0;
}

}  // namespace odata::redfish
