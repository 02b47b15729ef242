// Power policies of the simulated node manager, in
// <root>/var/bmc/node_manager.ini:
//
//   [Policy<id>] Enabled=0|1 PowerLimitWatts=<n> CorrectionTimeMs=<n>
//                ReportingPeriodSeconds=<n>
//
// At most NM_MAX_POLICIES (libnodemanager.h) are kept.
#pragma once

#include <string>

#include "platform/libnodemanager.h"

namespace platform {

const std::string& node_manager_file();

enum class policy_stored { stored, full, failed };

// Adds the policy, or replaces the one with its id.
policy_stored store_node_manager_policy(const St_NmPolicy& policy);

}  // namespace platform
