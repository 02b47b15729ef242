#include "update/staged_components.h"

#include "platform/libfwupdate.h"
#include "platform/libweb.h"
#include "update/update_job.h"
#include "update/update_uris.h"

#define INVENTORY "/redfish/v1/UpdateService/FirmwareInventory/"

namespace odata::redfish {
namespace {

constexpr const char* cpld_failure = "[%s:%d], failed to enter cpld update mode.\n";

bool enter_update_mode(int task_id, const staged_component& component) {
    if (enter_fw_update_mode(task_id, component.name) == 0) return true;
    if (component.update_mode_failure)
        console_log(component.update_mode_failure, __func__, __LINE__);
    else
        console_log("[ERROR] FirmwareUpdate %s cannot enter update mode\n", component.name);
    return false;
}

}  // namespace

const std::vector<staged_component>& staged_components() {
    static const std::vector<staged_component> table = {
        {FW_DEVICE_BMC, "BMC", "Staging_BMC", "BMC Update", bmc_target_uri, nullptr},
        {FW_DEVICE_BIOS, "BIOS", "Staging_BIOS", "BIOS Update", bios_target_uri, nullptr},
        {FW_DEVICE_CPLD, "CPLD", "Staging_CPLD_Motherboard", "CPLD Update",
         INVENTORY "CPLD_Motherboard", cpld_failure},
        {FW_DEVICE_BACKPLANE_CPLD, "CPLD_Backplane", "CPLD_Backplane_0", "CPLD Update",
         INVENTORY "CPLD_Backplane", cpld_failure},
        {FW_DEVICE_NIC, "NIC", "StagingNIC0", "NIC Update", INVENTORY "NIC0",
         "[%s:%d], failed to enter nic update mode.\n"},
        {FW_DEVICE_GPU, "GPU", "StagingGPU0", "GPU Update", INVENTORY "GPU0",
         "[%s:%d], failed to enter gpu update mode.\n"},
        {FW_DEVICE_LCMC, "LCMC", "LCMC_Backplane", "BPN LCMC Update", INVENTORY "LCMC",
         "[%s:%d], failed to enter LCMC update mode.\n"},
        // The RAID controllers are updated through the OEM inventory's
        // actions only.
        {FW_DEVICE_BROADCOM, "Broadcom", "Staging_Broadcom0", "Broadcom Update", nullptr, nullptr},
        {FW_DEVICE_MARVELL, "Marvell", "Staging_Marvell0", "MRVL Update", nullptr, nullptr},
    };
    return table;
}

const staged_component& staged_component_of(int device) {
    for (const staged_component& each : staged_components())
        if (each.device == device) return each;
    return staged_components().front();
}

bool start_staged_flash(int task_id, const staged_component& component, const char* action_uri) {
    if (!enter_update_mode(task_id, component)) return false;
    const update_job job{task_id, component.device, action_uri,
                         firmware_staging_file(component.device),
                         [](std::string&) { return true; }};
    if (start_update_worker(job)) return true;
    leave_fw_update_mode(task_id);
    return false;
}

}  // namespace odata::redfish
