// The simulated task store and the task-state table: ids, persistence,
// concurrent writers, dead workers, and the monitor's answer by state.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cstring>
#include <string>

#include "framework/event_registry.h"
#include "platform/libtask.h"
#include "platform/sim/published_events.h"
#include "sim_root_fixture.h"
#include "tasks/task_states.h"

using sim_testing::sim_root;

namespace {

int add_task(const char* name) {
    int task_id = 0;
    EXPECT_EQ(TaskServiceAddTask(name, &task_id), 0);
    return task_id;
}

TaskInfo task_info(int task_id) {
    TaskInfo info{};
    EXPECT_EQ(TaskServiceGetTaskInfo(task_id, &info), 0);
    return info;
}

}  // namespace

TEST(TaskStates, TableAndMonitorAnswers) {
    using odata::redfish::task_monitor_status;
    using odata::redfish::task_shows_end_time;
    using odata::redfish::task_state_text;
    EXPECT_EQ(task_state_text(0), "New");
    EXPECT_EQ(task_state_text(9), "Exception");
    EXPECT_EQ(task_state_text(13), "Unknown");
    EXPECT_EQ(task_state_text(14), "Unknown");
    EXPECT_EQ(task_state_text(-1), "Unknown");
    for (int state : {0, 1, 2, 5, 6}) EXPECT_EQ(task_monitor_status(state), 202) << state;
    EXPECT_EQ(task_monitor_status(7), 200);
    EXPECT_EQ(task_monitor_status(9), 400);
    for (int state : {3, 4, 8, 10, 11, 12, 13, 14, 1000})
        EXPECT_EQ(task_monitor_status(state), 500) << state;
    for (int state = 0; state < 14; ++state)
        EXPECT_EQ(task_shows_end_time(state), state == 7 || state == 8 || state == 9) << state;
}

// The store reads its messages from the registry that the service publishes.
class task_store : public sim_root {
protected:
    void SetUp() override {
        sim_root::SetUp();
        sim_testing::write_text(platform::sim::published_event_registry_file(),
                                boost::json::serialize(odata::redfish::event_message_registry()));
    }
};

TEST_F(task_store, NumbersTasksAndFindsThemByMonitor) {
    EXPECT_EQ(add_task("Simple Update"), 1);
    EXPECT_EQ(add_task("BIOS Update"), 2);
    const TaskInfo second = task_info(2);
    EXPECT_STREQ(second.name, "BIOS Update");
    EXPECT_EQ(second.state, TASK_STATE_NEW);
    EXPECT_EQ(std::strlen(second.monitor_id), 32u);
    TaskInfo found{};
    ASSERT_EQ(TaskServiceGetTaskInfoByMonitorId(second.monitor_id, &found), 0);
    EXPECT_EQ(found.id, 2);
    EXPECT_LT(TaskServiceGetTaskInfoByMonitorId("", &found), 0);
    EXPECT_LT(TaskServiceGetTaskInfo(3, &found), 0);
    EXPECT_LT(TaskServiceGetTaskInfo(0, &found), 0);
    EXPECT_LT(TaskServiceUpdateTaskState(3, TASK_STATE_RUNNING), 0);
    EXPECT_LT(TaskServiceUpdateTaskState(1, 14), 0);
}

TEST_F(task_store, CancelMessageAndDisabledService) {
    const int task_id = add_task("Simple Update");
    ASSERT_EQ(TaskServiceUpdateTaskMsgFromEvt(task_id, TASK_EVENT_CANCELLED, "1",
                                              "redfish/v1/TaskService/Tasks"),
              0);
    const TaskInfo info = task_info(task_id);
    ASSERT_EQ(info.message_count, 1);
    EXPECT_STREQ(info.messages[0].argument, "1");
    EXPECT_STREQ(info.messages[0].related, "redfish/v1/TaskService/Tasks");
    EXPECT_STREQ(info.messages[0].message_id, "Event.1.0.TaskCancelled");
    EXPECT_STREQ(info.messages[0].message, "The task with Id '1' has been cancelled.");
    ASSERT_EQ(TaskServiceSetStartStop(0), 0);
    int refused = 0;
    EXPECT_LT(TaskServiceAddTask("Simple Update", &refused), 0);
    TaskServiceConfig config{};
    ASSERT_EQ(TaskServiceGetConfig(&config), 0);
    EXPECT_EQ(config.enabled, 0);
}

// Worker outcomes are messages of the event registry; an overlong outcome
// is cut, never overrun.
TEST_F(task_store, RegistryMessagesWithTheirArgument) {
    TaskMessage message{};
    EXPECT_LT(TaskServiceEventMessage("NoSuchEvent", "x", &message), 0);
    EXPECT_LT(TaskServiceEventMessage(nullptr, "x", &message), 0);
    const std::string outcome(1000, 'o');
    ASSERT_EQ(TaskServiceEventMessage("FirmwareUpdateFailed", outcome.c_str(), &message), 0);
    EXPECT_STREQ(message.message_id, "Event.1.0.FirmwareUpdateFailed");
    EXPECT_STREQ(message.severity, "Critical");
    EXPECT_EQ(std::strlen(message.message), sizeof message.message - 1);
    EXPECT_EQ(std::strlen(message.argument), sizeof message.argument - 1);
    ASSERT_EQ(TaskServiceEventMessage("TaskWorkerEnded", "ignored", &message), 0);
    EXPECT_STREQ(message.argument, "");
}

// Before the service has published its registry, or with a damaged one, a
// message cannot be made, but a task still ends.
TEST_F(task_store, WithoutTheRegistryATaskEndsWithoutMessage) {
    for (const char* registry : {"", "{\"Messages\": [1]}"}) {
        sim_testing::write_text(platform::sim::published_event_registry_file(), registry);
        TaskMessage message{};
        EXPECT_LT(TaskServiceEventMessage("TaskWorkerEnded", "", &message), 0);
        const int task_id = add_task("Simple Update");
        EXPECT_LT(TaskServiceUpdateTaskMsgFromEvt(task_id, TASK_EVENT_CANCELLED, "1", ""), 0);
        const pid_t worker = sim_testing::start_child([] {
            pause();
            return 0;
        });
        ASSERT_EQ(TaskServiceSetTaskWorker(task_id, worker), 0);
        kill(worker, SIGKILL);
        sim_testing::wait_child(worker);
        const TaskInfo ended = task_info(task_id);
        EXPECT_EQ(ended.state, TASK_STATE_EXCEPTION);
        EXPECT_EQ(ended.message_count, 0);
    }
}

TEST_F(task_store, AFullStoreReusesTheOldestFinishedPlaceOnly) {
    for (int i = 0; i < TASK_STORE_CAPACITY; ++i) add_task("Simple Update");
    int task_id = 0;
    EXPECT_LT(TaskServiceAddTask("Another", &task_id), 0);
    ASSERT_EQ(TaskServiceUpdateTaskState(5, TASK_STATE_COMPLETED), 0);
    ASSERT_EQ(TaskServiceAddTask("Another", &task_id), 0);
    EXPECT_EQ(task_id, 5);
    EXPECT_STREQ(task_info(5).name, "Another");
}

TEST_F(task_store, ConcurrentWritersLoseNoTask) {
    std::vector<pid_t> children;
    for (int child = 0; child < 4; ++child)
        children.push_back(sim_testing::start_child([] {
            for (int i = 0; i < 5; ++i) {
                int task_id = 0;
                if (TaskServiceAddTask("Parallel", &task_id) != 0) return 1;
            }
            return 0;
        }));
    for (pid_t child : children) EXPECT_EQ(sim_testing::wait_child(child), 0);
    int count = 0;
    ASSERT_EQ(TaskServiceGetTaskCount(&count), 0);
    EXPECT_EQ(count, 20);
}

TEST_F(task_store, ATaskWhoseWorkerDiedEndsAsException) {
    const int task_id = add_task("Simple Update");
    const pid_t worker = sim_testing::start_child([] {
        pause();
        return 0;
    });
    ASSERT_EQ(TaskServiceSetTaskWorker(task_id, worker), 0);
    ASSERT_EQ(TaskServiceUpdateTaskState(task_id, TASK_STATE_RUNNING), 0);
    EXPECT_EQ(task_info(task_id).state, TASK_STATE_RUNNING);
    kill(worker, SIGKILL);
    sim_testing::wait_child(worker);
    const TaskInfo ended = task_info(task_id);
    EXPECT_EQ(ended.state, TASK_STATE_EXCEPTION);
    EXPECT_NE(ended.end_time, 0);
    ASSERT_EQ(ended.message_count, 1);
    EXPECT_STREQ(ended.messages[0].message_id, "Event.1.0.TaskWorkerEnded");
}

TEST_F(task_store, AMalformedStoreReadsAsEmpty) {
    sim_testing::write_text(path("/nv/task_store.json"), "{\"Tasks\": 5");
    int count = -1;
    ASSERT_EQ(TaskServiceGetTaskCount(&count), 0);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(add_task("Simple Update"), 1);
}
