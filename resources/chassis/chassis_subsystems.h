// The chassis's power and thermal subsystems and its environment metrics,
// /redfish/v1/Chassis/1/PowerSubsystem, .../ThermalSubsystem and
// .../EnvironmentMetrics: what the supplies can deliver, the health of each
// and the power the chassis draws; the readings stay in Power, Thermal and
// Sensors.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class powersubsystem : public redfish {
public:
    explicit powersubsystem(request_context& context);
    int get(request_context& context) override;
};

class thermalsubsystem : public redfish {
public:
    explicit thermalsubsystem(request_context& context);
    int get(request_context& context) override;
};

class environmentmetrics : public redfish {
public:
    explicit environmentmetrics(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
