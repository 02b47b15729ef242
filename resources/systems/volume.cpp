#include "resources/systems/volume.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* onboard_sata_id = "SATAEmbedded";

boost::json::object volume_status(const St_RaidVolume& info) {
    const char* state = info.state == RAID_VOLUME_FOREIGN ? "StandbyOffline"
                        : info.init_percent < 100         ? "Starting"
                                                          : "Enabled";
    const char* health = info.state == RAID_VOLUME_OPTIMAL ? "OK" : "Warning";
    return boost::json::object({{"State", state}, {"Health", health}, {"HealthRollup", health}},
                               answer_storage());
}

boost::json::object action(const std::string& uri, const char* name, bool with_info) {
    boost::json::object entry({{"target", uri + "/Actions/Oem/TwrVolume." + name}},
                              answer_storage());
    if (with_info) entry["@Redfish.ActionInfo"] = uri + "/Oem/Tarnwright/IndicateActionInfo";
    return entry;
}

boost::json::object volume_actions(const raid_volume_ref& ref) {
    const std::string uri = raid_volume_uri(ref);
    const char* deletion = ref.family->family == RAID_FAMILY_MARVELL ? "DeleteVD" : "Delete";
    return boost::json::object(
        {{"Oem",
          {{"#TwrVolume.Indicate", action(uri, "Indicate", true)},
           {std::string("#TwrVolume.") + deletion, action(uri, deletion, false)},
           {"#TwrVolume.RebuildVD", action(uri, "RebuildVD", false)},
           {"#TwrVolume.ImportVD", action(uri, "ImportVD", false)}}}},
        answer_storage());
}

boost::json::array member_drives(const raid_volume_ref& ref, const St_RaidVolume& info) {
    boost::json::array drives(answer_storage());
    for (int i = 0; i < info.drive_count; ++i)
        drives.push_back(link(raid_drive_uri({ref.family, ref.controller, info.bays[i]})));
    return drives;
}

}  // namespace

found_volume volume_of_request(const request_context& context) {
    const auto ref = raid_volume_of_path(context.uri);
    St_RaidVolume info{};
    if (!ref ||
        UtilRaidGetVolume(ref->family->family, ref->controller, ref->volume, &info) != PLT_OK)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Volume", context.uri});
    return {*ref, info};
}

std::vector<std::string> raid_volume_uris(const raid_family& family) {
    std::vector<std::string> uris;
    for (int controller = 0; controller < raid_controller_count(family); ++controller) {
        St_RaidController info{};
        if (UtilRaidGetController(family.family, controller, &info) != PLT_OK) continue;
        for (int i = 0; i < info.volume_count; ++i)
            uris.push_back(raid_volume_uri({&family, controller, info.volume_ids[i]}));
    }
    return uris;
}

volumecollection::volumecollection(request_context& context)
    : redfish(context, "VolumeCollection", "", "Volume Collection", context.uri) {}

int volumecollection::get(request_context& context) {
    const std::string id = storage_id_of_path(context.uri);
    const raid_family* family = raid_family_of_storage(id);
    if (id != onboard_sata_id && (!family || raid_controller_count(*family) == 0))
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Storage", id});
    uri_ = std::string(storage_collection_uri) + "/" + id + "/Volumes";
    set_common_properties();
    set_members(family ? raid_volume_uris(*family) : std::vector<std::string>{});
    return 0;
}

volume::volume(request_context& context)
    : redfish(context, "Volume", std::string(schema_file_of("Volume").version), "", context.uri) {}

int volume::get(request_context& context) {
    const found_volume found = volume_of_request(context);
    const St_RaidVolume& info = found.info;
    uri_ = raid_volume_uri(found.ref);
    name_ = info.name[0] ? info.name : "Volume " + std::to_string(info.id);
    set_common_properties();
    set("RAIDType", raid_type_name(info.level));
    set("CapacityBytes", info.capacity_bytes);
    set("Status", volume_status(info));
    if (info.init_percent < 100)
        set("Operations",
            {{{"OperationName", "Initialize"}, {"PercentageComplete", info.init_percent}}});
    boost::json::array drives = member_drives(found.ref, info);
    const std::size_t count = drives.size();
    set("Links", {{"Drives", std::move(drives)}, {"Drives@odata.count", count}});
    set("Actions", volume_actions(found.ref));
    set("Oem", {{"Tarnwright",
                 {{"@odata.type", "#TwrStorageExtensions.v1_0_0.Volume"},
                  {"Foreign", info.state == RAID_VOLUME_FOREIGN},
                  {"Locating", info.locating != 0}}}});
    return 0;
}

}  // namespace odata::redfish
