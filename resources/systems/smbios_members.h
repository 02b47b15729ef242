// The processors and memory modules that the SMBIOS table lists, as members
// of the system's collections. A member's id is its structure's 1-based
// position among the structures of its type, so that a socket or slot keeps
// its id when another one empties.
#pragma once

#include <string>
#include <vector>

#include "platform/libsmbios.h"

namespace odata::redfish {

// Populated sockets only.
std::vector<int> processor_ids(const St_SMBiosData& data);
// Null when the id names no populated socket.
const St_SMBiosType4* find_processor(const St_SMBiosData& data, int id);

// Slots holding a module only.
std::vector<int> memory_ids(const St_SMBiosData& data);
// Null when the id names no slot holding a module.
const St_SMBiosType17* find_memory(const St_SMBiosData& data, int id);

// A string of a structure; "" for one it does not hold.
inline std::string smbios_text(const char* text) { return text ? text : ""; }

// base + "/" + id, for each id.
std::vector<std::string> member_uris(const char* base, const std::vector<int>& ids);

}  // namespace odata::redfish
