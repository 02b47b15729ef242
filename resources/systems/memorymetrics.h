// The metrics of one memory module,
// /redfish/v1/Systems/1/Memory/<n>/MemoryMetrics, and the error counts the
// summary metrics add up.
#pragma once

#include <boost/json.hpp>
#include <cstdint>

#include "framework/redfish.h"
#include "platform/libmemory.h"
#include "platform/libsmbios.h"

namespace odata::redfish {

class memorymetrics : public redfish {
public:
    explicit memorymetrics(request_context& context);
    int get(request_context& context) override;
};

// Zeros when the platform has none for the module.
St_MemoryErrorCounts module_error_counts(const St_SMBiosType17& module);

// "CurrentPeriod": the counts since the host's power-on.
boost::json::object error_count_period(uint64_t correctable, uint64_t uncorrectable);

}  // namespace odata::redfish
