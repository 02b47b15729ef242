#include "platform/sim/bios_config.h"

#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/split.hpp>
#include <string_view>

#include "base/bmc_root.h"
#include "platform/libbios.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr int max_boot_options = 128;

bool valid_boot_option(std::string_view option) {
    if (option.empty()) return false;
    for (char c : option)
        if (c == ',' || static_cast<unsigned char>(c) < 0x21 ||
            static_cast<unsigned char>(c) > 0x7E)
            return false;
    return true;
}

// Absolute, and no component is "..".
bool valid_bmc_path(std::string_view path) {
    if (path.empty() || path.front() != '/') return false;
    std::size_t start = 0;
    while (start < path.size()) {
        std::size_t end = path.find('/', start);
        end = end == std::string_view::npos ? path.size() : end;
        if (path.substr(start, end - start) == "..") return false;
        start = end + 1;
    }
    return true;
}

}  // namespace

namespace platform {

const std::string& bios_config_file() {
    static fixed_bmc_path path("/var/bmc/bios.ini");
    return path.get();
}

bool set_hii_supported(bool supported) {
    return sim::update_state_ini(bios_config_file(), [&](pt::ptree& state) {
        state.put("HII.Supported", supported ? 1 : 0);
        return true;
    });
}

std::vector<std::string> pending_boot_order() {
    std::string joined = sim::stored_state_ini(bios_config_file())->get("HII.BootOrder", "");
    std::vector<std::string> order;
    if (!joined.empty()) boost::algorithm::split(order, joined, [](char c) { return c == ','; });
    return order;
}

}  // namespace platform

extern "C" int isNewHIISupport(void) {
    return platform::sim::stored_state_ini(platform::bios_config_file())->get("HII.Supported", 1) !=
                   0
               ? 1
               : 0;
}

extern "C" int UtilHiiSetBootOrder(const char* const* boot_options, int count) {
    if (count < 0 || count > max_boot_options || (count > 0 && !boot_options))
        return PLT_ERR_ARGUMENT;
    std::vector<std::string> order;
    for (int i = 0; i < count; ++i) {
        if (!boot_options[i] || !valid_boot_option(boot_options[i])) return PLT_ERR_ARGUMENT;
        order.emplace_back(boot_options[i]);
    }
    if (!isNewHIISupport()) return PLT_ERR_STATE;
    bool stored =
        platform::sim::update_state_ini(platform::bios_config_file(), [&](pt::ptree& state) {
            state.put("HII.BootOrder", boost::algorithm::join(order, ","));
            return true;
        });
    return stored ? PLT_OK : PLT_ERR_IO;
}

extern "C" int WriteConfigFile(const char* path, const char* content) {
    if (!path || !content || !valid_bmc_path(path)) return PLT_ERR_ARGUMENT;
    return platform::sim::replace_file(platform::bmc_path(path), content, 0644) ? PLT_OK
                                                                                : PLT_ERR_IO;
}
