// Inventory files that a fresh simulated BMC generates on first use.
#pragma once

#include <string>

namespace platform::sim {

// Reads the file at path; when it is missing, generate() makes its content,
// which is written (whole, through rename) and returned. PLT_OK, or
// PLT_ERR_IO when the file can be neither read nor written.
int read_or_generate(const std::string& path, std::string (*generate)(), std::string& bytes);

}  // namespace platform::sim
