// The simulated firmware-update lock and update mode held by a task, and
// the BIOS image staged for the next host reset: who holds them when a
// process or a task ends, what a stager killed midway leaves, and when the
// staged image is written.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "platform/libfwupdate.h"
#include "platform/libipmi_chassis.h"
#include "platform/libtask.h"
#include "platform/plt_result.h"
#include "platform/sim/firmware_image.h"
#include "platform/sim/process_identity.h"
#include "platform/sim/update_mode.h"
#include "sim_root_fixture.h"

namespace {

class firmware_lock : public sim_testing::sim_root {
protected:
    int add_task(const char* name) {
        int task_id = 0;
        EXPECT_EQ(TaskServiceAddTask(name, &task_id), 0);
        return task_id;
    }

    bool exists(const char* absolute) const { return std::filesystem::exists(path(absolute)); }
};

pid_t waiting_child() {
    return sim_testing::start_child([] {
        pause();
        return 0;
    });
}

void end_child(pid_t child) {
    kill(child, SIGKILL);
    sim_testing::wait_child(child);
}

}  // namespace

TEST_F(firmware_lock, ATaskHoldsTheLockUntilItEndsAndItsWorkerHasGone) {
    ASSERT_EQ(get_fw_updating_lock(), 0);
    const int task_id = add_task("Simple Update");
    const pid_t worker = waiting_child();
    ASSERT_EQ(TaskServiceSetTaskWorker(task_id, worker), 0);
    ASSERT_EQ(set_fw_updating_lock_task(task_id), 0);
    EXPECT_EQ(get_fw_updating_lock(), -1);

    // Cancelled, the task has ended, but its worker may still flash.
    ASSERT_EQ(TaskServiceUpdateTaskState(task_id, TASK_STATE_KILLED), 0);
    EXPECT_EQ(fw_updating_in_progress(), 1);
    end_child(worker);
    EXPECT_EQ(fw_updating_in_progress(), 0);

    // A worker killed while its task runs ends the task and frees the lock.
    ASSERT_EQ(get_fw_updating_lock(), 0);
    const int running = add_task("Simple Update");
    const pid_t killed = waiting_child();
    ASSERT_EQ(TaskServiceSetTaskWorker(running, killed), 0);
    ASSERT_EQ(TaskServiceUpdateTaskState(running, TASK_STATE_RUNNING), 0);
    ASSERT_EQ(set_fw_updating_lock_task(running), 0);
    end_child(killed);
    EXPECT_EQ(get_fw_updating_lock(), 0);
}

TEST_F(firmware_lock, APendingTaskHoldsTheLockWithoutAProcessUntilCancelled) {
    ASSERT_EQ(get_fw_updating_lock(), 0);
    const int task_id = add_task("BIOS Update");
    ASSERT_EQ(set_fw_updating_lock_task(task_id), 0);
    ASSERT_EQ(StageBiosUpdateOnReset(task_id), 0);
    ASSERT_EQ(TaskServiceUpdateTaskState(task_id, TASK_STATE_PENDING), 0);
    EXPECT_TRUE(exists("/nv/OnReset_Update") && exists("/nv/pending_task.ini"));
    EXPECT_EQ(get_fw_updating_lock(), -1);

    EXPECT_EQ(DropBiosUpdateOnReset(task_id + 1), -1);
    EXPECT_TRUE(exists("/nv/OnReset_Update"));
    ASSERT_EQ(TaskServiceUpdateTaskState(task_id, TASK_STATE_KILLED), 0);
    EXPECT_EQ(DropBiosUpdateOnReset(task_id), 0);
    EXPECT_FALSE(exists("/nv/OnReset_Update") || exists("/nv/pending_task.ini"));
    EXPECT_EQ(get_fw_updating_lock(), 0);
}

// The stager dies after recording the staging, before its task goes
// Pending: the task ends, the lock frees, and the next update to take the
// lock removes the void staging with its image.
TEST_F(firmware_lock, AStagingWhoseStagerDiedIsVoid) {
    const pid_t stager = sim_testing::start_child([this] {
        int task_id = 0;
        if (get_fw_updating_lock() != 0 || TaskServiceAddTask("BIOS Update", &task_id) != 0 ||
            set_fw_updating_lock_task(task_id) != 0 || StageBiosUpdateOnReset(task_id) != 0)
            return 1;
        sim_testing::write_text(path("/tmp/bios_rom"), "image");
        raise(SIGKILL);
        return 0;
    });
    EXPECT_EQ(sim_testing::wait_child(stager), -1);
    EXPECT_TRUE(exists("/nv/OnReset_Update") && exists("/tmp/bios_rom"));
    EXPECT_EQ(fw_updating_in_progress(), 0);
    ASSERT_EQ(get_fw_updating_lock(), 0);
    EXPECT_FALSE(exists("/nv/OnReset_Update") || exists("/nv/pending_task.ini") ||
                 exists("/tmp/bios_rom"));
}

TEST_F(firmware_lock, ALockThatCannotBeRecordedIsNotTakenNorReportedAsBusy) {
    std::filesystem::create_directories(path("/tmp/fw_updating_lock.lock"));
    EXPECT_EQ(get_fw_updating_lock(), -2);
    EXPECT_EQ(fw_updating_in_progress(), 0);
}

// Update mode belongs to a live holder: a task in progress or a running
// process. One that has ended holds nothing back, and its marker is
// replaced by the next.
TEST_F(firmware_lock, UpdateModeIsHeldOnlyByALiveHolder) {
    const int first = add_task("BMC Update");
    const pid_t worker = waiting_child();
    ASSERT_EQ(TaskServiceSetTaskWorker(first, worker), 0);
    ASSERT_EQ(enter_fw_update_mode(first, "BMC"), 0);
    EXPECT_EQ(enter_fw_update_mode(first, "BMC"), 0);
    char component[16] = {};
    int holder = 0;
    ASSERT_EQ(fw_update_mode_held(component, sizeof component, &holder), 1);
    EXPECT_EQ(std::string(component), "BMC");
    EXPECT_EQ(holder, first);

    const int second = add_task("BIOS Update");
    EXPECT_EQ(enter_fw_update_mode(second, "BIOS"), -1);
    EXPECT_EQ(leave_fw_update_mode(second), 0);
    EXPECT_EQ(fw_update_mode_held(nullptr, 0, nullptr), 1);
    end_child(worker);
    EXPECT_EQ(fw_update_mode_held(nullptr, 0, nullptr), 0);
    ASSERT_EQ(enter_fw_update_mode(second, "BIOS"), 0);
    EXPECT_EQ(leave_fw_update_mode(second), 0);
    EXPECT_FALSE(exists("/tmp/fw_updating"));

    // Another program's process, killed without leaving it.
    const pid_t program = waiting_child();
    const std::string identity =
        platform::sim::format_process(platform::sim::identify_process(program));
    ASSERT_EQ(platform::sim::mark_update_mode(identity, "CPLD"), 0);
    ASSERT_EQ(fw_update_mode_held(component, sizeof component, &holder), 1);
    EXPECT_EQ(std::string(component) + "/" + std::to_string(holder), "CPLD/0");
    end_child(program);
    EXPECT_EQ(fw_update_mode_held(nullptr, 0, nullptr), 0);
}

// The BIOS agent writes the image staged for the next reset when the host
// starts, and only then; an image that fails its check ends the task
// without changing the BIOS.
TEST_F(firmware_lock, TheImageStagedForResetIsWrittenAsTheHostStarts) {
    char before[32] = {};
    ASSERT_EQ(GetFirmwareVersion(FW_DEVICE_BIOS, before, sizeof before), 0);
    auto stage = [this](const std::string& image) {
        const int task_id = add_task("BIOS Update");
        EXPECT_EQ(get_fw_updating_lock(), 0);
        EXPECT_EQ(set_fw_updating_lock_task(task_id), 0);
        EXPECT_EQ(StageBiosUpdateOnReset(task_id), 0);
        EXPECT_EQ(TaskServiceUpdateTaskState(task_id, TASK_STATE_PENDING), 0);
        sim_testing::write_text(path("/tmp/bios_rom"), image);
        return task_id;
    };
    auto state = [](int task_id) {
        TaskInfo task{};
        EXPECT_EQ(TaskServiceGetTaskInfo(task_id, &task), 0);
        return task.state;
    };
    auto bios = [] {
        char version[32] = {};
        EXPECT_EQ(GetFirmwareVersion(FW_DEVICE_BIOS, version, sizeof version), 0);
        return std::string(version);
    };

    std::string damaged = platform::sim::make_firmware_image("BIOS", "9.9.8", "payload");
    damaged.back() ^= 1;
    const int refused = stage(damaged);
    ASSERT_EQ(PltCHASSIS_PowerUp(), PLT_OK);  // already on: no start
    EXPECT_EQ(state(refused), TASK_STATE_PENDING);
    ASSERT_EQ(PltCHASSIS_PowerReset(), PLT_OK);
    EXPECT_EQ(state(refused), TASK_STATE_EXCEPTION);
    EXPECT_EQ(bios(), before);
    EXPECT_EQ(fw_updating_in_progress(), 0);

    const int written = stage(platform::sim::make_firmware_image("BIOS", "9.9.9", "payload"));
    ASSERT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    EXPECT_EQ(bios(), before);
    ASSERT_EQ(PltCHASSIS_PowerUp(), PLT_OK);
    EXPECT_EQ(state(written), TASK_STATE_COMPLETED);
    EXPECT_EQ(bios(), "9.9.9");
    EXPECT_FALSE(exists("/nv/OnReset_Update") || exists("/nv/pending_task.ini") ||
                 exists("/tmp/bios_rom"));
    EXPECT_EQ(fw_updating_in_progress(), 0);
}

TEST_F(firmware_lock, EveryDeviceHasItsStagingFileAndATakenBackEntryIsGone) {
    for (int device = FW_DEVICE_BMC; device <= FW_DEVICE_MARVELL; ++device) {
        ASSERT_NE(firmware_staging_file(device), nullptr) << device;
        char version[32] = {};
        EXPECT_EQ(GetFirmwareVersion(device, version, sizeof version), 0) << device;
    }
    EXPECT_EQ(firmware_staging_file(FW_DEVICE_MARVELL + 1), nullptr);
    char version[32] = {};
    ASSERT_EQ(StoreStagedFirmwareVersion("StagingNIC0", "14.33.00"), 0);
    ASSERT_EQ(GetStagedFirmwareVersion("StagingNIC0", version, sizeof version), 0);
    ASSERT_EQ(StoreStagedFirmwareVersion("StagingNIC0", ""), 0);
    EXPECT_LT(GetStagedFirmwareVersion("StagingNIC0", version, sizeof version), 0);
}
