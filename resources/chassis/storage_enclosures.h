// The storage enclosures that the storage controllers report, as members of
// the chassis collection.
#pragma once

#include <string>
#include <vector>

namespace odata::redfish {

// True while the storage inventory is still being collected; the counts
// are not final then.
bool storage_inventory_loading();

// One URI per enclosure, controllers and enclosures numbered from 0.
std::vector<std::string> storage_enclosure_uris();

}  // namespace odata::redfish
