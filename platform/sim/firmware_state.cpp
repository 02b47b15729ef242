#include "platform/sim/firmware_state.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "base/bmc_root.h"
#include "platform/libbmc.h"
#include "platform/libdump.h"
#include "platform/libfwupdate.h"
#include "platform/libtask.h"
#include "platform/plt_result.h"
#include "platform/sim/bios_staging.h"
#include "platform/sim/bmc_firmware.h"
#include "platform/sim/firmware_image.h"
#include "platform/sim/process_identity.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"
#include "platform/sim/task_store.h"

namespace platform::sim {
namespace {

struct component {
    int device;
    const char* name;
    const char* first_version;  // before any update
    const char* staging_file;
};

constexpr component components[] = {
    {FW_DEVICE_BMC, "BMC", "1.00.00", "/tmp/fwimgbuff"},
    // As the generated SMBIOS table says.
    {FW_DEVICE_BIOS, "BIOS", "2.1.0", "/tmp/bios_rom"},
    {FW_DEVICE_CPLD, "CPLD", "01", "/tmp/cpld_rom"},
    {FW_DEVICE_BACKPLANE_CPLD, "CPLD_Backplane", "01", "/tmp/bpn_cpld_rom"},
    {FW_DEVICE_NIC, "NIC", "14.32.10", "/tmp/nic_fw"},
    {FW_DEVICE_GPU, "GPU", "96.00.5E", "/tmp/gpu_fw"},
    {FW_DEVICE_LCMC, "LCMC", "01.02.03", "/tmp/lcmc_fw"},
    {FW_DEVICE_BROADCOM, "Broadcom", "52.22.0", "/tmp/broadcom_stor_ctrl_rom"},
    {FW_DEVICE_MARVELL, "Marvell", "1.0.0.1048", "/tmp/marvell_stor_ctrl_rom"},
};

const component* find_component(int device) {
    for (const component& each : components)
        if (each.device == device) return &each;
    return nullptr;
}

const std::string& versions_file() {
    static fixed_bmc_path path("/nv/firmware.ini");
    return path.get();
}

// Holds "<pid> <start>" of the holding process, or "task <id> <monitor id>"
// of the holding task.
const std::string& update_lock_file() {
    static fixed_bmc_path path("/tmp/fw_updating_lock");
    return path.get();
}

bool lock_held() {
    std::string holder;
    return read_file(update_lock_file(), holder) && holder_alive(holder);
}

}  // namespace

std::string task_holder(int task_id) {
    TaskInfo task{};
    if (TaskServiceGetTaskInfo(task_id, &task) != 0) return {};
    return "task " + std::to_string(task_id) + " " + task.monitor_id;
}

bool holder_alive(const std::string& holder) {
    int task_id = 0;
    char monitor_id[TASK_MONITOR_ID_MAX + 1] = {};
    if (std::sscanf(holder.c_str(), "task %d %32s", &task_id, monitor_id) == 2)
        return task_in_progress(task_id, monitor_id);
    return process_alive(parse_process(holder));
}

void copy_out(const std::string& text, char* target, int size) {
    const size_t length = std::min(text.size(), static_cast<size_t>(size - 1));
    std::memcpy(target, text.data(), length);
    target[length] = '\0';
}

const char* firmware_component(int device) {
    const component* found = find_component(device);
    return found ? found->name : nullptr;
}

int firmware_device(const std::string& name) {
    for (const component& each : components)
        if (name == each.name) return each.device;
    return 0;
}

std::string firmware_version(int device) {
    const component* found = find_component(device);
    if (!found) return {};
    // The BMC's running version is the one its manager reports.
    char bmc_version[64] = {};
    if (device == FW_DEVICE_BMC && UtilGetBmcFwVersion(bmc_version, sizeof bmc_version) == PLT_OK)
        return bmc_version;
    return stored_state_ini(versions_file())
        ->get<std::string>(std::string(found->name) + ".Version", found->first_version);
}

bool store_firmware_version(int device, const std::string& version) {
    const component* found = find_component(device);
    if (device == FW_DEVICE_BMC) return platform::set_bmc_firmware_version(version);
    return found && update_state_ini(versions_file(), [&](boost::property_tree::ptree& tree) {
               tree.put(std::string(found->name) + ".Version", version);
               return true;
           });
}

const std::string& evidence_marker_file() {
    static fixed_bmc_path path("/tmp/evidence_generating");
    return path.get();
}

}  // namespace platform::sim

using namespace platform::sim;

extern "C" {

int get_fw_updating_lock(void) {
    int taken = -2;
    with_file_lock(update_lock_file(), [&] {
        if (lock_held()) {
            taken = -1;
        } else if (replace_file(update_lock_file(), format_process(identify_process(getpid())),
                                0600)) {
            drop_void_bios_staging();
            taken = 0;
        }
        return true;
    });
    return taken;
}

int set_fw_updating_lock_task(int task_id) {
    const std::string holder = task_holder(task_id);
    if (holder.empty()) return -1;
    bool set = with_file_lock(update_lock_file(),
                              [&] { return replace_file(update_lock_file(), holder, 0600); });
    return set ? 0 : -1;
}

int release_fw_updating_lock(void) {
    bool released = with_file_lock(update_lock_file(), [] {
        return ::unlink(update_lock_file().c_str()) == 0 || errno == ENOENT;
    });
    return released ? 0 : -1;
}

int fw_updating_in_progress(void) { return lock_held() ? 1 : 0; }

const char* firmware_staging_file(int device) {
    // Made afresh on each call, as the root may change (tests); a caller's
    // pointer stays valid until the next call for the same device.
    static std::string paths[std::size(components)];
    for (size_t at = 0; at < std::size(components); ++at) {
        if (components[at].device != device) continue;
        paths[at] = platform::bmc_path(components[at].staging_file);
        return paths[at].c_str();
    }
    return nullptr;
}

int evidence_dump_in_progress(void) {
    return ::access(evidence_marker_file().c_str(), F_OK) == 0 ||
                   DumpIsGenerating(DUMP_BMC_EVIDENCE) || DumpIsGenerating(DUMP_BIOS_EVIDENCE)
               ? 1
               : 0;
}

void RemoveEvidenceDumps(void) {
    DumpDelete(DUMP_BMC_EVIDENCE);
    DumpDelete(DUMP_BIOS_EVIDENCE);
}

int GetFirmwareVersion(int device, char* version, int size) {
    if (!firmware_component(device) || !version || size < 1) return -1;
    copy_out(firmware_version(device), version, size);
    return 0;
}

int GetFirmwareImageVersion(int device, const char* path, char* version, int size) {
    const char* component = firmware_component(device);
    firmware_image_header header;
    std::string reason;
    if (!component || !path || !version || size < 1 ||
        !check_firmware_image(path, component, header, reason))
        return -1;
    copy_out(header.version, version, size);
    return 0;
}

const char* fw_update_program(void) {
    static std::string program;
    program = platform::bmc_path("/usr/sbin/fw_update");
    return program.c_str();
}

}  // extern "C"
