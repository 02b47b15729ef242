// Error counts of the simulated memory modules, in
// <root>/var/bmc/memory_errors.ini:
//
//   [<device locator>] Correctable=<n> Uncorrectable=<n> (default 0)
//
// A device locator is 1 to 32 letters, digits, "_" or "-".
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

const std::string& memory_errors_file();

bool valid_device_locator(const std::string& device_locator);

// False for a malformed locator or when the counts cannot be stored.
bool set_memory_error_counts(const std::string& device_locator, uint32_t correctable,
                             uint32_t uncorrectable);

// Visits the modules that have counts stored.
void for_each_memory_error_count(
    const std::function<void(const std::string&, uint32_t, uint32_t)>& visit);

}  // namespace platform
