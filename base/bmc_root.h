// Every absolute BMC path resolves under one root directory, taken from
// BMC_ROOT (default "/", as on the BMC itself), so that several simulated
// BMCs can run side by side.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The root directory, read once per process; never ends in '/'
// unless it is "/" itself.
const std::string& bmc_root();

// "/tmp/redfish.lock" -> "<root>/tmp/redfish.lock".
std::string bmc_path(std::string_view absolute_path);

// Points this process at another root (normalised like BMC_ROOT). Only for
// tests, which give each case a fresh directory; shared state attached
// under the old root stays attached until GlobalParaFin.
void set_bmc_root_for_tests(std::string_view root);

}  // namespace platform
