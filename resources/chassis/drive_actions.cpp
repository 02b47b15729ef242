#include "resources/chassis/drive_actions.h"

#include "frontend/exception_http.h"
#include "platform/libraid.h"
#include "resources/systems/raid_paths.h"
#include "resources/systems/storage_task.h"

namespace odata::redfish {
namespace {

struct found_drive {
    raid_drive_ref ref;
    St_RaidDrive info;
    std::string uri;
};

found_drive drive_of_request(const request_context& context) {
    const auto ref = raid_drive_of_path(context.uri);
    St_RaidDrive info{};
    if (!ref || UtilRaidGetDrive(ref->family->family, ref->controller, ref->bay, &info) != PLT_OK)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"Drive", context.uri});
    return {*ref, info, raid_drive_uri(*ref)};
}

bool erasing(const St_RaidDrive& drive) {
    return drive.erase_percent >= 0 && drive.erase_percent < 100;
}

int erase_progress(const raid_drive_ref& ref) {
    St_RaidDrive drive{};
    return UtilRaidGetDrive(ref.family->family, ref.controller, ref.bay, &drive) == PLT_OK
               ? drive.erase_percent
               : -1;
}

}  // namespace

drive_indicate::drive_indicate(request_context& context)
    : raid_action(context, "TwrDrive.Indicate") {}

int drive_indicate::post(request_context& context) {
    const found_drive drive = drive_of_request(context);
    const bool active = indicator_parameter(context);
    check(UtilRaidSetDriveLocate(drive.ref.family->family, drive.ref.controller, drive.ref.bay,
                                 active ? 1 : 0),
          "Base.1.10.ResourceInUse");
    answer_success();
    return 0;
}

drive_secureerase::drive_secureerase(request_context& context)
    : raid_action(context, "Drive.SecureErase") {}

// A drive of a volume keeps its data: the volume must go first.
int drive_secureerase::post(request_context& context) {
    const found_drive drive = drive_of_request(context);
    refuse_parameters(context);
    if (erasing(drive.info))
        throw_http_error(400, "TWR.1.0.OemSecureEraseIsInProgress", {drive.uri});
    if (drive.info.volume >= 0 || drive.info.state == RAID_DRIVE_FAILED)
        throw_http_error(400, "Base.1.10.ResourceInUse");
    const raid_drive_ref ref = drive.ref;
    const int started = answer_with_task(
        {"Drive Secure Erase", "SecureErase", drive.uri.c_str(),
         [ref] { return erase_progress(ref); }},
        [&] { return UtilRaidStartSecureErase(ref.family->family, ref.controller, ref.bay); });
    check(started, "Base.1.10.ResourceInUse");
    return 0;
}

drive_secureeraseabort::drive_secureeraseabort(request_context& context)
    : raid_action(context, "TwrDrive.SecureEraseAbort") {}

int drive_secureeraseabort::post(request_context& context) {
    const found_drive drive = drive_of_request(context);
    refuse_parameters(context);
    check(UtilRaidAbortSecureErase(drive.ref.family->family, drive.ref.controller, drive.ref.bay),
          "TWR.1.0.OemSecureEraseIsNotInProgress", {drive.uri});
    answer_success();
    return 0;
}

}  // namespace odata::redfish
