// The host's memory metrics, /redfish/v1/Systems/1/MemorySummary/MemoryMetrics.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class memorysummarymetrics : public redfish {
public:
    explicit memorysummarymetrics(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
