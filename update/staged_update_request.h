// The parameters of the actions that start flashing a pushed image:
// UpdateService.StartUpdate and the OEM TwrUpdateService.Install.
#pragma once

#include <boost/json.hpp>

#include "frontend/message.h"

namespace odata::redfish {

struct staged_update_request {
    int device = 0;  // FW_DEVICE_BMC or FW_DEVICE_BIOS; 0 for the pushed one
};

// StartUpdate: optional Targets (one push target) and PreserveOptions.
// Failures go to result as OemHttppushuriErrorMessage.
void read_start_update(const boost::json::object& body, staged_update_request& request,
                       result_record& result);

// Install: Targets with exactly one target, optional InstallOptions.
void read_install(const boost::json::object& body, staged_update_request& request,
                  result_record& result);

// The result that Install gathers its failures in (StartUpdate uses the
// push's).
result_record install_errors();

}  // namespace odata::redfish
