// The BMC's task store (libweb.so): long-running operations registered by
// the actions that start them and moved through their states by the
// process that does the work. Ids run from 1 to the task count.
#pragma once

#include <sys/types.h>

extern "C" {

enum {
    TASK_NAME_MAX = 64,
    TASK_MONITOR_ID_MAX = 32,
    TASK_MESSAGES_MAX = 4,
    // Tasks kept at once; a new task then takes the place of the oldest
    // finished one (CompletedTaskOverWritePolicy "Oldest").
    TASK_STORE_CAPACITY = 32,
};

enum {
    TASK_STATE_NEW = 0,
    TASK_STATE_STARTING = 1,
    TASK_STATE_RUNNING = 2,
    TASK_STATE_PENDING = 5,
    TASK_STATE_COMPLETED = 7,
    TASK_STATE_KILLED = 8,
    TASK_STATE_EXCEPTION = 9,
};

// Event number of a cancelled task in the platform's event registry.
enum { TASK_EVENT_CANCELLED = 19 };

struct TaskMessage {
    char message_id[64];
    char message[256];
    char argument[256];  // the one message argument; "" when none
    char related[64];    // the one related property; "" when none
    char severity[16];
};

struct TaskInfo {
    int id;
    char name[TASK_NAME_MAX + 1];
    int state;
    long long start_time;
    long long end_time;  // 0 while the task has not ended
    int percent;
    int hide_payload;
    char monitor_id[TASK_MONITOR_ID_MAX + 1];
    char health[16];
    int message_count;
    TaskMessage messages[TASK_MESSAGES_MAX];
};

struct TaskServiceConfig {
    int enabled;
    char overwrite_policy[16];  // an OverWritePolicy value: "Oldest"
    int life_cycle_event;
};

// Registers a task in state New, worked on by the calling process until
// TaskServiceSetTaskWorker names another. Negative when no task can be
// created (store full of unfinished tasks, service disabled, I/O).
int TaskServiceAddTask(const char* name, int* task_id);
// The process that works on the task. While a task has not ended and its
// worker is gone, the store shows it as Exception with a message, and
// records that at its next change.
int TaskServiceSetTaskWorker(int task_id, pid_t worker);

int TaskServiceGetTaskCount(int* count);
int TaskServiceGetTaskInfo(int task_id, TaskInfo* info);
int TaskServiceGetTaskInfoByMonitorId(const char* monitor_id, TaskInfo* info);
int TaskServiceGetConfig(TaskServiceConfig* config);
int TaskServiceSetStartStop(int enabled);

int TaskServiceUpdateTaskState(int task_id, int state);
int TaskServiceUpdateTaskPercentage(int task_id, int percent);
// Stamps the end time now.
int TaskServiceUpdateTaskETime(int task_id);
// Adds the message of an event of the platform's event registry.
int TaskServiceUpdateTaskMsgFromEvt(int task_id, int event, const char* argument,
                                    const char* origin);
// Fills message with the message key of the platform's event registry,
// argument standing for its "%1"; negative for an unknown key.
int TaskServiceEventMessage(const char* key, const char* argument, TaskMessage* message);
// Adds a message given in full (the worker's outcome).
int TaskServiceAddTaskMessage(int task_id, const TaskMessage* message);

}  // extern "C"
