#include "platform/sim/storage_inventory.h"

#include <charconv>

#include "base/bmc_root.h"
#include "platform/libstorage.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr int max_count = 64;

const char* key_of(platform::storage_count which) {
    switch (which) {
        case platform::storage_count::broadcom:
            return "Controllers.Broadcom";
        case platform::storage_count::marvell:
            return "Controllers.Marvell";
        default:
            return "Controllers.NVMeSlots";
    }
}

// Parsed without the tree's translator, which makes a stream for every
// read: the storage resources ask for these counts several times each.
int stored_number(const char* key) {
    const auto state = platform::sim::stored_state_ini(platform::storage_inventory_file());
    const auto entry = state->get_child_optional(key);
    if (!entry) return 0;
    const std::string& text = entry->data();
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return 0;
    return value < 0 || value > max_count ? 0 : value;
}

}  // namespace

namespace platform {

const std::string& storage_inventory_file() {
    static fixed_bmc_path path("/var/bmc/storage.ini");
    return path.get();
}

bool set_storage_count(storage_count which, int count) {
    if (count < 0 || count > max_count) return false;
    return sim::update_state_ini(storage_inventory_file(), [&](pt::ptree& state) {
        state.put(key_of(which), count);
        return true;
    });
}

bool set_storage_inventory_loading(bool loading) {
    return sim::update_state_ini(storage_inventory_file(), [&](pt::ptree& state) {
        state.put("Inventory.Loading", loading ? 1 : 0);
        return true;
    });
}

}  // namespace platform

extern "C" int GetBRCMDeviceNum(void) {
    return stored_number(key_of(platform::storage_count::broadcom));
}

extern "C" int UtilGetMRVLCtrlNum(void) {
    return stored_number(key_of(platform::storage_count::marvell));
}

extern "C" int GetNVMeSSDMaxNumSupport(void) {
    return stored_number(key_of(platform::storage_count::nvme_slots));
}

extern "C" int UtilIsStorageInventoryLoading(void) {
    return stored_number("Inventory.Loading") != 0 ? 1 : 0;
}
