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

// A fixed BMC path resolved once per root: the files a process reads on
// every request would otherwise build their path on every read. The path
// given is a literal, or outlives the object.
class fixed_bmc_path {
public:
    explicit fixed_bmc_path(std::string_view absolute_path);
    const std::string& get();

private:
    std::string_view absolute_path_;
    std::string path_;
    unsigned root_generation_;
};

// Points this process at another root (normalised like BMC_ROOT). Only for
// tests, which give each case a fresh directory; shared state attached
// under the old root stays attached until GlobalParaFin.
void set_bmc_root_for_tests(std::string_view root);

}  // namespace platform
