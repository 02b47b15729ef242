// The host's processors' metrics, /redfish/v1/Systems/1/ProcessorSummary/ProcessorMetrics.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class processormetrics : public redfish {
public:
    explicit processormetrics(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
