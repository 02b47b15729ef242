// The telemetry service and its power-consumption metrics:
// /redfish/v1/TelemetryService with MetricDefinitions,
// MetricReportDefinitions and MetricReports, each a collection of the nine
// metrics (power_consumption_metrics.h).
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class telemetryservice : public redfish {
public:
    explicit telemetryservice(request_context& context);
    int get(request_context& context) override;
};

class metricdefinitions : public redfish {
public:
    explicit metricdefinitions(request_context& context);
    int get(request_context& context) override;
};

class powerconsumed : public redfish {
public:
    explicit powerconsumed(request_context& context);
    int get(request_context& context) override;
};

class metricreportdefinitions : public redfish {
public:
    explicit metricreportdefinitions(request_context& context);
    int get(request_context& context) override;
};

class defpowerconsumption : public redfish {
public:
    explicit defpowerconsumption(request_context& context);
    int get(request_context& context) override;
};

class metricreports : public redfish {
public:
    explicit metricreports(request_context& context);
    int get(request_context& context) override;
};

class powerconsumption : public redfish {
public:
    explicit powerconsumption(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
