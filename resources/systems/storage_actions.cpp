#include "resources/systems/storage_actions.h"

#include <memory>

#include "frontend/exception_http.h"
#include "platform/libraid.h"
#include "resources/systems/raid_paths.h"
#include "resources/systems/storage_task.h"
#include "resources/systems/volume_request.h"

namespace odata::redfish {
namespace {

const raid_family& family_of_request(const request_context& context) {
    const std::string id = storage_id_of_path(context.uri);
    const raid_family* family = raid_family_of_storage(id);
    if (!family || raid_controller_count(*family) == 0)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Storage", id});
    return *family;
}

int initialisation(const raid_volume_ref& ref) {
    St_RaidVolume info{};
    return UtilRaidGetVolume(ref.family->family, ref.controller, ref.volume, &info) == PLT_OK
               ? info.init_percent
               : -1;
}

}  // namespace

storage_createvolume::storage_createvolume(request_context& context, const char* action)
    : raid_action(context, action) {}

int storage_createvolume::post(request_context& context) {
    const raid_family& family = family_of_request(context);
    const volume_request request = read_volume_request(context.body_json(), family, action_);
    // The volume's id is known once it is made: the worker, which starts
    // after, reads it.
    auto ref = std::make_shared<raid_volume_ref>(raid_volume_ref{&family, request.controller, -1});
    const std::string storage = raid_storage_uri(family);
    const int started = answer_with_task(
        {"Volume Create", "VolumeCreate", storage.c_str(), [ref] { return initialisation(*ref); }},
        [&] {
            return UtilRaidCreateVolume(family.family, request.controller, request.level,
                                        request.bays.data(), static_cast<int>(request.bays.size()),
                                        request.name.c_str(), &ref->volume);
        });
    check(started, "Base.1.10.ResourceInUse");
    return 0;
}

storage_createvd::storage_createvd(request_context& context)
    : storage_createvolume(context, "TwrStorage.CreateVD") {}

storage_clearvolumes::storage_clearvolumes(request_context& context)
    : raid_action(context, "TwrStorage.ClearVolumes") {}

int storage_clearvolumes::post(request_context& context) {
    const raid_family& family = family_of_request(context);
    check(UtilRaidClearVolumes(family.family, controller_parameter(context, family)),
          "Base.1.10.ResourceInUse");
    answer_success();
    return 0;
}

haraidcontroller_save::haraidcontroller_save(request_context& context)
    : raid_action(context, "TwrHARAIDController.Save") {}

int haraidcontroller_save::post(request_context& context) {
    const raid_family& family = family_of_request(context);
    check(UtilRaidSaveConfig(family.family, controller_parameter(context, family)),
          "Base.1.10.ResourceInUse");
    answer_success();
    return 0;
}

}  // namespace odata::redfish
