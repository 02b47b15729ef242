// bmcsim storage: storage controllers found on the host.
#include <ostream>
#include <string>

#include "platform/libstorage.h"
#include "platform/sim/sata_drives.h"
#include "platform/sim/storage_inventory.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace storage_commands {

struct controller_kind {
    const char* name;
    platform::storage_count which;
    int (*count)(void);
};

constexpr controller_kind controller_kinds[] = {
    {"broadcom", platform::storage_count::broadcom, GetBRCMDeviceNum},
    {"marvell", platform::storage_count::marvell, UtilGetMRVLCtrlNum},
    {"nvme", platform::storage_count::nvme_slots, GetNVMeSSDMaxNumSupport},
};

int show(std::ostream& out) {
    for (const controller_kind& kind : controller_kinds)
        out << kind.name << '=' << kind.count() << '\n';
    out << "loading=" << (UtilIsStorageInventoryLoading() ? "on" : "off") << '\n';
    for (int bay = 0; bay < UtilGetSataBayCount(); ++bay) {
        St_SataDrive drive{};
        if (UtilGetSataDrive(bay, &drive) != PLT_OK) continue;
        out << "sata" << bay << '=' << (drive.present ? drive.model : "empty") << '\n';
    }
    return exit_ok;
}

int set(const area& self, const arguments& words, std::ostream& err) {
    long long count = 0;
    if (words.size() != 3 || !parse_number(words[2], 0, 64, count)) return usage(self, err);
    for (const controller_kind& kind : controller_kinds)
        if (words[1] == kind.name)
            return written(platform::set_storage_count(kind.which, static_cast<int>(count)),
                           platform::storage_inventory_file(), err);
    return usage(self, err);
}

// "drive BAY insert|remove": a drive that the bay held goes or comes back.
int drive(const area& self, const arguments& words, std::ostream& err) {
    long long bay = 0;
    const bool insert = words[2] == "insert";
    if ((!insert && words[2] != "remove") ||
        !parse_number(words[1], 0, UtilGetSataBayCount() - 1, bay))
        return usage(self, err);
    if (platform::set_sata_drive_present(static_cast<int>(bay), insert)) return exit_ok;
    err << "bmcsim: bay " << bay << " has no drive, or " << platform::storage_inventory_file()
        << " cannot be written\n";
    return exit_failed;
}

int run_storage(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "set") return set(self, words, err);
    if (command == "raid") return run_raid(self, words, out, err);
    if (command == "drive" && words.size() == 3) return drive(self, words, err);
    if (command == "loading" && words.size() == 2 && (words[1] == "on" || words[1] == "off"))
        return written(platform::set_storage_inventory_loading(words[1] == "on"),
                       platform::storage_inventory_file(), err);
    return usage(self, err);
}

}  // namespace storage_commands

const area storage_area = {
    "storage",
    "show | set broadcom|marvell|nvme COUNT | loading on|off | drive BAY insert|remove | raid show "
    "| raid fail|replace CONTROLLER BAY | raid foreign CONTROLLER RAID0|RAID1|RAID5|RAID10 "
    "BAY[,BAY...] | raid seconds erase|init SECONDS",
    storage_commands::run_storage};

}  // namespace bmcsim
