// The RAID controller functions of the storage-controller library, over
// the simulated controllers' configuration.
#include <algorithm>
#include <string>

#include "platform/sim/raid_controllers.h"

#include "platform/libraid.h"
#include "platform/sim/raid_store.h"
#include "platform/sim/sim_file.h"

using platform::sim::raid_controller_record;
using platform::sim::raid_volume_record;

namespace {

constexpr uint64_t drive_capacity[] = {1920383410176ull, 480103981056ull};
constexpr const char* drive_model[] = {"ES-SAS-1T92", "ES-M2-480"};
constexpr const char* controller_model[] = {"Example RAID 9560-8i", "Example M.2 RAID"};

bool valid_family(int family) {
    return family == RAID_FAMILY_BROADCOM || family == RAID_FAMILY_MARVELL;
}

bool erasing(const platform::sim::raid_bay_record& bay) {
    return bay.erase_start_ms != 0 &&
           platform::sim::raid_progress(bay.erase_start_ms, bay.erase_end_ms) < 100;
}

raid_volume_record* find_volume(raid_controller_record& record, int id) {
    for (raid_volume_record& volume : record.volumes)
        if (volume.id == id) return &volume;
    return nullptr;
}

const raid_volume_record* volume_of_bay(const raid_controller_record& record, int bay) {
    for (const raid_volume_record& volume : record.volumes)
        if (std::find(volume.bays.begin(), volume.bays.end(), bay) != volume.bays.end())
            return &volume;
    return nullptr;
}

bool degraded(const raid_controller_record& record, const raid_volume_record& volume) {
    return std::any_of(volume.bays.begin(), volume.bays.end(),
                       [&](int bay) { return record.bays[bay].state != RAID_DRIVE_OK; });
}

int data_drives(int level, int count) {
    switch (level) {
        case RAID_LEVEL_1:
        case RAID_LEVEL_10:
            return count / 2;
        case RAID_LEVEL_5:
            return count - 1;
        default:
            return count;
    }
}

// A lookup of one controller's stored configuration.
template <class body>
int with_controller(int family, int controller, body read) {
    if (!valid_family(family) || !platform::sim::raid_controller_exists(family, controller))
        return PLT_ERR_NOT_FOUND;
    raid_controller_record record = platform::sim::read_raid_controller(family, controller);
    return read(record);
}

int change(int family, int controller, const std::function<int(raid_controller_record&)>& body) {
    if (!valid_family(family)) return PLT_ERR_NOT_FOUND;
    return platform::sim::change_raid_controller(family, controller, body);
}

// A change of the configuration, which then differs from the saved one.
int reconfigure(int family, int controller,
                const std::function<int(raid_controller_record&)>& body) {
    return change(family, controller, [&](raid_controller_record& record) -> int {
        const int result = body(record);
        record.saved = false;
        return result;
    });
}

int check_members(const raid_controller_record& record, const uint8_t* bays, int count) {
    for (int i = 0; i < count; ++i) {
        if (bays[i] >= RAID_BAYS || std::count(bays, bays + count, bays[i]) != 1)
            return PLT_ERR_ARGUMENT;
        const platform::sim::raid_bay_record& bay = record.bays[bays[i]];
        if (bay.state == RAID_DRIVE_FAILED || erasing(bay) || volume_of_bay(record, bays[i]))
            return PLT_ERR_STATE;
    }
    return PLT_OK;
}

int free_volume_id(const raid_controller_record& record) {
    for (int id = 0; id < RAID_VOLUMES_MAX; ++id)
        if (std::none_of(record.volumes.begin(), record.volumes.end(),
                         [id](const raid_volume_record& volume) { return volume.id == id; }))
            return id;
    return -1;
}

}  // namespace

namespace platform {

bool set_raid_drive(int family, int controller, int bay, raid_drive_change what) {
    if (bay < 0 || bay >= RAID_BAYS) return false;
    return change(family, controller, [&](raid_controller_record& record) -> int {
               sim::raid_bay_record& slot = record.bays[bay];
               slot.erase_start_ms = 0;
               slot.state = what == raid_drive_change::fail         ? RAID_DRIVE_FAILED
                            : volume_of_bay(record, bay) != nullptr ? RAID_DRIVE_REPLACED
                                                                    : RAID_DRIVE_OK;
               return PLT_OK;
           }) == PLT_OK;
}

int add_foreign_volume(int family, int controller, int level, const std::vector<uint8_t>& bays) {
    const int count = static_cast<int>(bays.size());
    if (UtilRaidCheckLevel(level, count) != PLT_OK) return PLT_ERR_ARGUMENT;
    int id = -1;
    const int result =
        UtilRaidCreateVolume(family, controller, level, bays.data(), count, "Foreign", &id);
    if (result != PLT_OK) return result;
    return change(family, controller, [&](raid_controller_record& record) -> int {
        raid_volume_record* volume = find_volume(record, id);
        if (!volume) return PLT_ERR_NOT_FOUND;
        volume->foreign = true;
        volume->init_start_ms = 0;
        return PLT_OK;
    });
}

}  // namespace platform

extern "C" {

int UtilRaidCheckLevel(int level, int count) {
    if (count < 1 || count > RAID_BAYS) return PLT_ERR_ARGUMENT;
    switch (level) {
        case RAID_LEVEL_0:
            return PLT_OK;
        case RAID_LEVEL_1:
            return count == 2 ? PLT_OK : PLT_ERR_ARGUMENT;
        case RAID_LEVEL_5:
            return count >= 3 ? PLT_OK : PLT_ERR_ARGUMENT;
        case RAID_LEVEL_10:
            return count >= 4 && count % 2 == 0 ? PLT_OK : PLT_ERR_ARGUMENT;
        default:
            return PLT_ERR_ARGUMENT;
    }
}

int UtilRaidGetController(int family, int controller, St_RaidController* info) {
    if (!info) return PLT_ERR_ARGUMENT;
    return with_controller(family, controller, [&](const raid_controller_record& record) -> int {
        *info = St_RaidController{};
        for (const raid_volume_record& volume : record.volumes)
            info->volume_ids[info->volume_count++] = static_cast<uint8_t>(volume.id);
        info->saved = record.saved ? 1 : 0;
        platform::sim::copy_text(info->model, controller_model[family]);
        return PLT_OK;
    });
}

int UtilRaidGetDrive(int family, int controller, int bay, St_RaidDrive* drive) {
    if (!drive) return PLT_ERR_ARGUMENT;
    if (bay < 0 || bay >= RAID_BAYS) return PLT_ERR_NOT_FOUND;
    return with_controller(family, controller, [&](const raid_controller_record& record) -> int {
        const platform::sim::raid_bay_record& slot = record.bays[bay];
        const raid_volume_record* volume = volume_of_bay(record, bay);
        *drive = St_RaidDrive{};
        drive->bay = static_cast<uint8_t>(bay);
        drive->state = static_cast<uint8_t>(slot.state);
        drive->locating = slot.locating ? 1 : 0;
        drive->volume = static_cast<int8_t>(volume ? volume->id : -1);
        drive->erase_percent = static_cast<int8_t>(
            slot.erase_start_ms == 0
                ? RAID_NO_OPERATION
                : platform::sim::raid_progress(slot.erase_start_ms, slot.erase_end_ms));
        drive->capacity_bytes = drive_capacity[family];
        platform::sim::copy_text(drive->model, drive_model[family]);
        platform::sim::copy_text(drive->serial_number, "ESR" + std::to_string(family) +
                                                           std::to_string(controller) + "00" +
                                                           std::to_string(bay));
        return PLT_OK;
    });
}

int UtilRaidGetVolume(int family, int controller, int id, St_RaidVolume* info) {
    if (!info) return PLT_ERR_ARGUMENT;
    return with_controller(family, controller, [&](raid_controller_record& record) -> int {
        const raid_volume_record* volume = find_volume(record, id);
        if (!volume) return PLT_ERR_NOT_FOUND;
        *info = St_RaidVolume{};
        info->id = static_cast<uint8_t>(id);
        info->level = static_cast<uint8_t>(volume->level);
        info->state = volume->foreign             ? RAID_VOLUME_FOREIGN
                      : degraded(record, *volume) ? RAID_VOLUME_DEGRADED
                                                  : RAID_VOLUME_OPTIMAL;
        info->locating = volume->locating ? 1 : 0;
        info->init_percent = static_cast<int8_t>(
            volume->init_start_ms == 0
                ? 100
                : platform::sim::raid_progress(volume->init_start_ms, volume->init_end_ms));
        for (int bay : volume->bays) info->bays[info->drive_count++] = static_cast<uint8_t>(bay);
        info->capacity_bytes = drive_capacity[family] *
                               static_cast<uint64_t>(data_drives(volume->level, info->drive_count));
        platform::sim::copy_text(info->name, volume->name);
        return PLT_OK;
    });
}

int UtilRaidCreateVolume(int family, int controller, int level, const uint8_t* bays, int count,
                         const char* name, int* volume) {
    if (!bays || !volume || UtilRaidCheckLevel(level, count) != PLT_OK) return PLT_ERR_ARGUMENT;
    return reconfigure(family, controller, [&](raid_controller_record& record) -> int {
        const int members = check_members(record, bays, count);
        const int id = free_volume_id(record);
        if (members != PLT_OK) return members;
        if (id < 0) return PLT_ERR_STATE;
        raid_volume_record made;
        made.id = id;
        made.level = level;
        made.bays.assign(bays, bays + count);
        platform::sim::start_raid_operation(platform::sim::raid_duration::init, made.init_start_ms,
                                            made.init_end_ms);
        made.name = name ? std::string(name).substr(0, RAID_VOLUME_NAME_MAX) : std::string();
        record.volumes.push_back(made);
        std::sort(
            record.volumes.begin(), record.volumes.end(),
            [](const raid_volume_record& a, const raid_volume_record& b) { return a.id < b.id; });
        *volume = id;
        return PLT_OK;
    });
}

int UtilRaidDeleteVolume(int family, int controller, int id) {
    return reconfigure(family, controller, [&](raid_controller_record& record) -> int {
        const auto before = record.volumes.size();
        record.volumes.erase(
            std::remove_if(record.volumes.begin(), record.volumes.end(),
                           [id](const raid_volume_record& volume) { return volume.id == id; }),
            record.volumes.end());
        return record.volumes.size() == before ? PLT_ERR_NOT_FOUND : PLT_OK;
    });
}

int UtilRaidClearVolumes(int family, int controller) {
    return reconfigure(family, controller, [](raid_controller_record& record) -> int {
        record.volumes.clear();
        return PLT_OK;
    });
}

int UtilRaidRebuildVolume(int family, int controller, int id) {
    return reconfigure(family, controller, [&](raid_controller_record& record) -> int {
        raid_volume_record* volume = find_volume(record, id);
        if (!volume) return PLT_ERR_NOT_FOUND;
        if (volume->foreign || !degraded(record, *volume)) return PLT_ERR_STATE;
        for (int bay : volume->bays)
            if (record.bays[bay].state == RAID_DRIVE_FAILED) return PLT_ERR_STATE;
        for (int bay : volume->bays) record.bays[bay].state = RAID_DRIVE_OK;
        return PLT_OK;
    });
}

int UtilRaidImportVolume(int family, int controller, int id) {
    return reconfigure(family, controller, [&](raid_controller_record& record) -> int {
        raid_volume_record* volume = find_volume(record, id);
        if (!volume) return PLT_ERR_NOT_FOUND;
        if (!volume->foreign) return PLT_ERR_STATE;
        volume->foreign = false;
        return PLT_OK;
    });
}

int UtilRaidSetVolumeLocate(int family, int controller, int id, int on) {
    return change(family, controller, [&](raid_controller_record& record) -> int {
        raid_volume_record* volume = find_volume(record, id);
        if (!volume) return PLT_ERR_NOT_FOUND;
        volume->locating = on != 0;
        return PLT_OK;
    });
}

int UtilRaidSetDriveLocate(int family, int controller, int bay, int on) {
    if (bay < 0 || bay >= RAID_BAYS) return PLT_ERR_NOT_FOUND;
    return change(family, controller, [&](raid_controller_record& record) -> int {
        record.bays[bay].locating = on != 0;
        return PLT_OK;
    });
}

int UtilRaidSaveConfig(int family, int controller) {
    return change(family, controller, [](raid_controller_record& record) -> int {
        record.saved = true;
        return PLT_OK;
    });
}

int UtilRaidStartSecureErase(int family, int controller, int bay) {
    if (bay < 0 || bay >= RAID_BAYS) return PLT_ERR_NOT_FOUND;
    return change(family, controller, [&](raid_controller_record& record) -> int {
        platform::sim::raid_bay_record& slot = record.bays[bay];
        if (slot.state == RAID_DRIVE_FAILED || erasing(slot) || volume_of_bay(record, bay))
            return PLT_ERR_STATE;
        platform::sim::start_raid_operation(platform::sim::raid_duration::erase,
                                            slot.erase_start_ms, slot.erase_end_ms);
        return PLT_OK;
    });
}

int UtilRaidAbortSecureErase(int family, int controller, int bay) {
    if (bay < 0 || bay >= RAID_BAYS) return PLT_ERR_NOT_FOUND;
    return change(family, controller, [&](raid_controller_record& record) -> int {
        platform::sim::raid_bay_record& slot = record.bays[bay];
        if (!erasing(slot)) return PLT_ERR_STATE;
        slot.erase_start_ms = 0;
        return PLT_OK;
    });
}

}  // extern "C"
