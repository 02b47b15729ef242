// The RAID controllers as the URI space names them: the storage members
// "HA-RAID" (every Broadcom-class controller) and "MRVL.HA-RAID" (every
// Marvell-class one), their volumes ".../Volumes/Controller.<c>.Volume.<v>"
// and the drives in each controller's enclosure
// "/redfish/v1/Chassis/<enclosure>/Drives/Disk.Bay.<bay>".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace odata::redfish {

struct raid_family {
    const char* storage_id;  // "HA-RAID"
    int family;              // RAID_FAMILY_*
    const char* enclosure_prefix;
    const char* enclosure_suffix;
};

const std::vector<raid_family>& raid_families();
const raid_family* raid_family_of_storage(std::string_view storage_id);
int raid_controller_count(const raid_family& family);

struct raid_volume_ref {
    const raid_family* family;
    int controller;
    int volume;
};

struct raid_drive_ref {
    const raid_family* family;
    int controller;
    int bay;
};

std::string raid_storage_uri(const raid_family& family);
std::string raid_volume_uri(const raid_volume_ref& volume);
std::string raid_enclosure_uri(const raid_family& family, int controller);
std::string raid_drive_uri(const raid_drive_ref& drive);

// The storage member a path under /redfish/v1/Systems/1/Storage/ names.
std::string storage_id_of_path(std::string_view path);

// The volume or drive that a path names or leads with (its actions, its
// ActionInfo), when its controller exists; numbers are written without
// leading zeros.
std::optional<raid_volume_ref> raid_volume_of_path(std::string_view path);
std::optional<raid_drive_ref> raid_drive_of_path(std::string_view path);

// The drives of the enclosure that a chassis member names, in bay order;
// none for a member that is no enclosure of an existing controller.
std::vector<raid_drive_ref> raid_enclosure_drives(std::string_view enclosure);

// DMTF's Volume RAIDType names: "RAID0", "RAID1", "RAID5", "RAID10".
const std::vector<std::string_view>& raid_type_names();
std::optional<int> raid_level_of(std::string_view name);
std::string raid_type_name(int level);

}  // namespace odata::redfish
