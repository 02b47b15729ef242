// Small files shared with other BMC programs, replaced whole.
#pragma once

#include <string>

namespace odata::redfish {

// Writes content to a private temporary file beside path, syncs it and
// renames it over path, so a reader sees the old or the new file.
bool replace_small_file(const std::string& path, const std::string& content);

}  // namespace odata::redfish
