#include "resources/systems/volume_actions.h"

#include "platform/libraid.h"
#include "resources/systems/volume.h"

namespace odata::redfish {

volume_indicate::volume_indicate(request_context& context)
    : raid_action(context, "TwrVolume.Indicate") {}

int volume_indicate::post(request_context& context) {
    const found_volume found = volume_of_request(context);
    const bool active = indicator_parameter(context);
    const raid_volume_ref& ref = found.ref;
    check(UtilRaidSetVolumeLocate(ref.family->family, ref.controller, ref.volume, active ? 1 : 0),
          "Base.1.10.ResourceInUse");
    answer_success();
    return 0;
}

volume_delete::volume_delete(request_context& context, const char* action)
    : raid_action(context, action) {}

int volume_delete::post(request_context& context) {
    const found_volume found = volume_of_request(context);
    refuse_parameters(context);
    const raid_volume_ref& ref = found.ref;
    check(UtilRaidDeleteVolume(ref.family->family, ref.controller, ref.volume),
          "Base.1.10.ResourceInUse");
    answer_success();
    return 0;
}

volume_deletevd::volume_deletevd(request_context& context)
    : volume_delete(context, "TwrVolume.DeleteVD") {}

volume_rebuildvd::volume_rebuildvd(request_context& context)
    : raid_action(context, "TwrVolume.RebuildVD") {}

// Only a degraded volume whose failed drives were all replaced rebuilds.
int volume_rebuildvd::post(request_context& context) {
    apply_to_volume(context, UtilRaidRebuildVolume);
    return 0;
}

volume_importvd::volume_importvd(request_context& context)
    : raid_action(context, "TwrVolume.ImportVD") {}

int volume_importvd::post(request_context& context) {
    apply_to_volume(context, UtilRaidImportVolume);
    return 0;
}

}  // namespace odata::redfish
