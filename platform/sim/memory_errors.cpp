#include "platform/sim/memory_errors.h"

#include <algorithm>
#include <cctype>

#include "base/bmc_root.h"
#include "platform/libmemory.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr std::size_t max_locator_length = 32;

St_MemoryErrorCounts stored_counts(const pt::ptree& module) {
    return {module.get<uint32_t>("Correctable", 0), module.get<uint32_t>("Uncorrectable", 0)};
}

}  // namespace

namespace platform {

const std::string& memory_errors_file() {
    static fixed_bmc_path path("/var/bmc/memory_errors.ini");
    return path.get();
}

bool valid_device_locator(const std::string& device_locator) {
    return !device_locator.empty() && device_locator.size() <= max_locator_length &&
           std::all_of(device_locator.begin(), device_locator.end(), [](char c) {
               return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-';
           });
}

bool set_memory_error_counts(const std::string& device_locator, uint32_t correctable,
                             uint32_t uncorrectable) {
    if (!valid_device_locator(device_locator)) return false;
    return sim::update_state_ini(memory_errors_file(), [&](pt::ptree& state) {
        state.put(device_locator + ".Correctable", correctable);
        state.put(device_locator + ".Uncorrectable", uncorrectable);
        return true;
    });
}

void for_each_memory_error_count(
    const std::function<void(const std::string&, uint32_t, uint32_t)>& visit) {
    const std::shared_ptr<const pt::ptree> state = sim::stored_state_ini(memory_errors_file());
    for (const auto& [locator, module] : *state) {
        const St_MemoryErrorCounts counts = stored_counts(module);
        visit(locator, counts.correctable, counts.uncorrectable);
    }
}

}  // namespace platform

extern "C" int MemGetErrorCounts(const char* device_locator, St_MemoryErrorCounts* counts) {
    if (!device_locator || !counts || !platform::valid_device_locator(device_locator))
        return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::memory_errors_file());
    const auto module = state->get_child_optional(device_locator);
    *counts = module ? stored_counts(*module) : St_MemoryErrorCounts{};
    return PLT_OK;
}
