// The simulated firmware-update lock held by a task, and the BIOS image
// staged for the next host reset: who holds the lock when a process or a
// task ends, and what a stager killed midway leaves.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "platform/libfwupdate.h"
#include "platform/libtask.h"
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
