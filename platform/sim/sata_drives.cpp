#include "platform/sim/sata_drives.h"

#include <cstring>
#include <iterator>
#include <string>

#include "platform/libstorage.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"
#include "platform/sim/storage_inventory.h"

namespace pt = boost::property_tree;

namespace {

struct drive_row {
    bool fitted;  // false: the bay has never held a drive
    bool solid_state;
    uint64_t capacity_bytes;
    const char* manufacturer;
    const char* model;
    const char* serial_number;
    const char* revision;
};

constexpr drive_row drive_bays[] = {
    {true, true, 960197124096ull, "Example Storage", "ES-SSD-960", "ESS0000000001", "1.2"},
    {true, false, 4000787030016ull, "Example Storage", "ES-HDD-4T", "ESH0000000002", "A3"},
    {false, false, 0, "", "", "", ""},
    {false, false, 0, "", "", "", ""},
};

constexpr int bay_count = static_cast<int>(std::size(drive_bays));

std::string present_key(int bay) { return "SataBay" + std::to_string(bay) + ".Present"; }

bool drive_present(int bay) {
    return drive_bays[bay].fitted &&
           platform::sim::stored_state_ini(platform::storage_inventory_file())
                   ->get(present_key(bay), 1) != 0;
}

}  // namespace

namespace platform {

bool set_sata_drive_present(int bay, bool present) {
    if (bay < 0 || bay >= bay_count || !drive_bays[bay].fitted) return false;
    return sim::update_state_ini(storage_inventory_file(), [&](pt::ptree& state) {
        state.put(present_key(bay), present ? 1 : 0);
        return true;
    });
}

}  // namespace platform

extern "C" int UtilGetSataBayCount(void) { return bay_count; }

extern "C" int UtilGetSataDrive(int bay, St_SataDrive* drive) {
    if (!drive) return PLT_ERR_ARGUMENT;
    if (bay < 0 || bay >= bay_count) return PLT_ERR_NOT_FOUND;
    *drive = St_SataDrive{};
    drive->bay = static_cast<uint8_t>(bay);
    if (!drive_present(bay)) return PLT_OK;
    const drive_row& row = drive_bays[bay];
    drive->present = 1;
    drive->solid_state = row.solid_state ? 1 : 0;
    drive->capacity_bytes = row.capacity_bytes;
    platform::sim::copy_text(drive->manufacturer, row.manufacturer);
    platform::sim::copy_text(drive->model, row.model);
    platform::sim::copy_text(drive->serial_number, row.serial_number);
    platform::sim::copy_text(drive->revision, row.revision);
    return PLT_OK;
}
