#include "resources/systems/raid_paths.h"

#include <algorithm>

#include <boost/algorithm/string/predicate.hpp>

#include "base/joined_text.h"
#include "platform/libraid.h"
#include "platform/libstorage.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

// A decimal number as written without leading zeros, up to 999.
std::optional<int> plain_number(std::string_view text) {
    if (text.empty() || text.size() > 3 || text.find_first_not_of("0123456789") != text.npos ||
        (text.size() > 1 && text[0] == '0'))
        return std::nullopt;
    return std::stoi(std::string(text));
}

// "<prefix><n><suffix>": n.
std::optional<int> number_between(std::string_view text, std::string_view prefix,
                                  std::string_view suffix) {
    if (text.size() <= prefix.size() + suffix.size() || !boost::starts_with(text, prefix) ||
        !boost::ends_with(text, suffix))
        return std::nullopt;
    return plain_number(text.substr(prefix.size(), text.size() - prefix.size() - suffix.size()));
}

std::vector<std::string_view> segments_of(std::string_view path) {
    std::vector<std::string_view> segments;
    for (size_t start = 0;;) {
        const size_t slash = path.find('/', start);
        segments.push_back(path.substr(start, slash - start));
        if (slash == path.npos) return segments;
        start = slash + 1;
    }
}

bool controller_exists(const raid_family& family, int controller) {
    return controller >= 0 && controller < raid_controller_count(family);
}

}  // namespace

const std::vector<raid_family>& raid_families() {
    static const std::vector<raid_family> families = {
        {"HA-RAID", RAID_FAMILY_BROADCOM, "HA-RAID.", ".StorageEnclosure.0"},
        {"MRVL.HA-RAID", RAID_FAMILY_MARVELL, "MRVL.HA-RAID.", ".StorageModule"},
    };
    return families;
}

const raid_family* raid_family_of_storage(std::string_view storage_id) {
    for (const raid_family& family : raid_families())
        if (storage_id == family.storage_id) return &family;
    return nullptr;
}

int raid_controller_count(const raid_family& family) {
    return family.family == RAID_FAMILY_BROADCOM ? GetBRCMDeviceNum() : UtilGetMRVLCtrlNum();
}

std::string raid_storage_uri(const raid_family& family) {
    return platform::joined({storage_collection_uri, "/", family.storage_id});
}

std::string raid_volume_uri(const raid_volume_ref& volume) {
    return platform::joined({raid_storage_uri(*volume.family), "/Volumes/Controller.",
                             std::to_string(volume.controller), ".Volume.",
                             std::to_string(volume.volume)});
}

std::string raid_enclosure_uri(const raid_family& family, int controller) {
    return platform::joined({chassis_collection_uri, "/", family.enclosure_prefix,
                             std::to_string(controller), family.enclosure_suffix});
}

std::string raid_drive_uri(const raid_drive_ref& drive) {
    return platform::joined({raid_enclosure_uri(*drive.family, drive.controller),
                             "/Drives/Disk.Bay.", std::to_string(drive.bay)});
}

std::string storage_id_of_path(std::string_view path) {
    const std::string_view prefix = "/redfish/v1/Systems/1/Storage/";
    if (!boost::starts_with(path, prefix)) return {};
    const std::string_view rest = path.substr(prefix.size());
    return std::string(rest.substr(0, rest.find('/')));
}

// ["", "redfish", "v1", "Systems", "1", "Storage", <id>, "Volumes", <member>, ...]
std::optional<raid_volume_ref> raid_volume_of_path(std::string_view path) {
    const std::vector<std::string_view> segments = segments_of(path);
    if (segments.size() < 9 || segments[7] != "Volumes") return std::nullopt;
    const raid_family* family = raid_family_of_storage(segments[6]);
    const std::string_view member = segments[8];
    const size_t split = member.find(".Volume.");
    if (!family || split == member.npos) return std::nullopt;
    const auto controller = number_between(member.substr(0, split), "Controller.", "");
    const auto volume = plain_number(member.substr(split + 8));
    if (!controller || !volume || !controller_exists(*family, *controller)) return std::nullopt;
    return raid_volume_ref{family, *controller, *volume};
}

std::vector<raid_drive_ref> raid_enclosure_drives(std::string_view enclosure) {
    for (const raid_family& family : raid_families()) {
        const auto controller =
            number_between(enclosure, family.enclosure_prefix, family.enclosure_suffix);
        if (!controller || !controller_exists(family, *controller)) continue;
        std::vector<raid_drive_ref> drives;
        for (int bay = 0; bay < RAID_BAYS; ++bay) drives.push_back({&family, *controller, bay});
        return drives;
    }
    return {};
}

// ["", "redfish", "v1", "Chassis", <enclosure>, "Drives", "Disk.Bay.<n>", ...]
std::optional<raid_drive_ref> raid_drive_of_path(std::string_view path) {
    const std::vector<std::string_view> segments = segments_of(path);
    if (segments.size() < 7 || segments[5] != "Drives") return std::nullopt;
    const auto bay = number_between(segments[6], "Disk.Bay.", "");
    const std::vector<raid_drive_ref> drives = raid_enclosure_drives(segments[4]);
    if (!bay || *bay >= static_cast<int>(drives.size())) return std::nullopt;
    return drives[*bay];
}

const std::vector<std::string_view>& raid_type_names() {
    static const std::vector<std::string_view> names = {"RAID0", "RAID1", "RAID5", "RAID10"};
    return names;
}

std::optional<int> raid_level_of(std::string_view name) {
    if (std::find(raid_type_names().begin(), raid_type_names().end(), name) ==
        raid_type_names().end())
        return std::nullopt;
    return std::stoi(std::string(name.substr(4)));
}

std::string raid_type_name(int level) { return "RAID" + std::to_string(level); }

}  // namespace odata::redfish
