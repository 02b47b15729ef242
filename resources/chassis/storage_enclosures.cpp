#include "resources/chassis/storage_enclosures.h"

#include "platform/libstorage.h"
#include "resources/chassis/chassis_uris.h"

namespace odata::redfish {
namespace {

// Each controller family and the member name of its enclosure: the name
// leads up to the controller number, the suffix follows it.
struct enclosure_family {
    int (*count)();
    const char* prefix;
    const char* suffix;
};

// An NVMe backplane group holds every NVMe slot the board supports.
int nvme_backplanes() { return GetNVMeSSDMaxNumSupport() > 0 ? 1 : 0; }

const enclosure_family enclosure_families[] = {
    {GetBRCMDeviceNum, "HA-RAID.", ".StorageEnclosure.0"},
    {UtilGetMRVLCtrlNum, "MRVL.HA-RAID.", ".StorageModule"},
    {nvme_backplanes, "NVMeSSD.", ".Group.0.StorageBackplane"},
};

}  // namespace

bool storage_inventory_loading() { return UtilIsStorageInventoryLoading() != 0; }

std::vector<std::string> storage_enclosure_uris() {
    std::vector<std::string> uris;
    for (const enclosure_family& family : enclosure_families) {
        const int count = family.count();
        for (int controller = 0; controller < count; ++controller)
            uris.push_back(std::string(chassis_collection_uri) + "/" + family.prefix +
                           std::to_string(controller) + family.suffix);
    }
    return uris;
}

}  // namespace odata::redfish
