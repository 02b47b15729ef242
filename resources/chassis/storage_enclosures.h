// The storage enclosures, members of the chassis collection: those that the
// storage controllers report, and the onboard SATA backplane with its drives.
#pragma once

#include <string>
#include <vector>

#include "framework/redfish.h"

namespace odata::redfish {

// True while the storage inventory is still being collected; the counts
// are not final then.
bool storage_inventory_loading();

// One URI per enclosure, controllers and enclosures numbered from 0.
std::vector<std::string> storage_enclosure_uris();

class storagepod : public redfish {
public:
    explicit storagepod(request_context& context);
    int get(request_context& context) override;

private:
    void set_sata_backplane();
    void set_controller_enclosure(const std::string& enclosure);
};

}  // namespace odata::redfish
