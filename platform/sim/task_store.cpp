// The simulated task store: one JSON document under the root, changed under
// an flock on "<file>.lock" and replaced through a temporary file, so that
// readers need no lock and a writer killed midway leaves the old document.
#include <unistd.h>

#include <boost/json.hpp>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <string_view>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/libipmi.h"
#include "platform/libtask.h"
#include "platform/sim/process_identity.h"
#include "platform/sim/published_events.h"
#include "platform/sim/random_bytes.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"
#include "platform/sim/task_store.h"

namespace json = boost::json;
using platform::sim::process_identity;

namespace {

const std::string& store_file() {
    static platform::fixed_bmc_path path("/nv/task_store.json");
    return path.get();
}

json::object empty_store() { return {{"ServiceEnabled", true}, {"Tasks", json::array()}}; }

json::object read_store() {
    std::string text;
    if (!platform::sim::read_file(store_file(), text)) return empty_store();
    boost::system::error_code error;
    json::value parsed = json::parse(text, error);
    if (error || !parsed.is_object() || !parsed.as_object().if_contains("Tasks") ||
        !parsed.as_object()["Tasks"].is_array())
        return empty_store();
    return parsed.as_object();
}

// The store as its file holds it, parsed once per version of the file.
std::shared_ptr<const json::object> stored_store() {
    static platform::file_cache<json::object> cache;
    std::shared_ptr<const json::object> store;
    cache.get(
        store_file(),
        [](json::object& parsed) {
            parsed = read_store();
            return PLT_OK;
        },
        store);
    return store;
}

const json::array& stored_tasks(const json::object& store) { return store.at("Tasks").as_array(); }

bool write_store(const json::object& store) {
    return platform::sim::replace_file(store_file(), json::serialize(store), 0600);
}

long long now() { return lx_time_get(); }

long long number(const json::object& task, const char* key) {
    const json::value* value = task.if_contains(key);
    return value && value->is_int64() ? value->as_int64() : 0;
}

std::string text(const json::object& task, const char* key) {
    const json::value* value = task.if_contains(key);
    return value && value->is_string() ? std::string(value->as_string()) : std::string();
}

bool ended(int state) {
    return state == TASK_STATE_COMPLETED || state == TASK_STATE_KILLED ||
           state == TASK_STATE_EXCEPTION || state == 12;
}

// A field of a caller's record, which may lack its NUL.
template <size_t size>
std::string field(const char (&source)[size]) {
    return std::string(source, strnlen(source, size));
}

json::object message_object(const TaskMessage& message) {
    return {{"MessageId", field(message.message_id)},
            {"Message", field(message.message)},
            {"Argument", field(message.argument)},
            {"Related", field(message.related)},
            {"Severity", field(message.severity)}};
}

void add_message(json::object& task, const TaskMessage& message) {
    json::value& messages = task["Messages"];
    if (!messages.is_array()) messages = json::array();
    json::array& list = messages.as_array();
    if (list.size() >= TASK_MESSAGES_MAX) list.erase(list.begin());
    list.push_back(message_object(message));
}

// The registry's message of key, argument standing for its "%1".
bool event_task_message(std::string_view key, const std::string& argument,
                        const std::string& related, TaskMessage& entry) {
    const auto row = platform::sim::published_event_message(key);
    if (!row) return false;
    std::string text = row->message;
    const size_t placeholder = text.find("%1");
    if (placeholder != std::string::npos) text.replace(placeholder, 2, argument);
    entry = TaskMessage{};
    platform::sim::copy_text(entry.message_id, row->message_id);
    platform::sim::copy_text(entry.message, text);
    platform::sim::copy_text(entry.argument,
                             placeholder != std::string::npos ? argument : std::string());
    platform::sim::copy_text(entry.related, related);
    platform::sim::copy_text(entry.severity, row->severity);
    return true;
}

// A task whose worker is gone ends as Exception, as of its last change.
void settle(json::object& task) {
    const int state = static_cast<int>(number(task, "State"));
    if (ended(state) || state == TASK_STATE_PENDING) return;
    const process_identity worker = platform::sim::parse_process(text(task, "Worker"));
    if (worker.pid == 0 || platform::sim::process_alive(worker)) return;
    task["State"] = TASK_STATE_EXCEPTION;
    task["EndTime"] = number(task, "Updated");
    task["Health"] = "Critical";
    task["Worker"] = "";
    TaskMessage ended{};
    if (event_task_message("TaskWorkerEnded", "", "", ended)) add_message(task, ended);
}

// Task task_id (from 1) of a store, changeable or not; none when absent.
template <typename Store>
auto task_at(Store& store, int task_id) -> decltype(&store.at("Tasks").as_array()[0].as_object()) {
    auto& tasks = store.at("Tasks").as_array();
    if (task_id < 1 || static_cast<size_t>(task_id) > tasks.size()) return nullptr;
    auto& task = tasks[static_cast<size_t>(task_id) - 1];
    return task.is_object() ? &task.as_object() : nullptr;
}

// One locked read-modify-write of the store; change returns whether it
// changed it.
int change_store(const std::function<bool(json::object&)>& change) {
    bool changed = false;
    bool written = platform::sim::with_file_lock(store_file(), [&] {
        json::object store = read_store();
        for (json::value& task : store["Tasks"].as_array())
            if (task.is_object()) settle(task.as_object());
        changed = change(store);
        return !changed || write_store(store);
    });
    return written && changed ? 0 : -1;
}

int change_task(int task_id, const std::function<void(json::object&)>& change) {
    return change_store([&](json::object& store) {
        json::object* task = task_at(store, task_id);
        if (!task) return false;
        change(*task);
        (*task)["Updated"] = now();
        return true;
    });
}

std::string new_monitor_id() {
    unsigned char bytes[TASK_MONITOR_ID_MAX / 2];
    if (!platform::sim::random_bytes(bytes, sizeof bytes)) return {};
    static const char hex[] = "0123456789abcdef";
    std::string id;
    for (unsigned char byte : bytes) {
        id += hex[byte >> 4];
        id += hex[byte & 0x0f];
    }
    return id;
}

json::object new_task(const char* name, const std::string& monitor_id) {
    const long long started = now();
    return {{"Name", std::string(name).substr(0, TASK_NAME_MAX)},
            {"State", TASK_STATE_NEW},
            {"StartTime", started},
            {"EndTime", 0},
            {"Percent", 0},
            {"HidePayload", false},
            {"MonitorId", monitor_id},
            {"Health", "OK"},
            {"Messages", json::array()},
            {"Worker", platform::sim::format_process(platform::sim::identify_process(getpid()))},
            {"Updated", started}};
}

// Where a new task goes: after the last one, or in place of the oldest
// finished one when the store is full; 0 when there is no room.
size_t free_place(const json::array& tasks) {
    if (tasks.size() < TASK_STORE_CAPACITY) return tasks.size() + 1;
    size_t oldest = 0;
    long long oldest_end = 0;
    for (size_t index = 0; index < tasks.size(); ++index) {
        const json::object& task = tasks[index].as_object();
        if (!ended(static_cast<int>(number(task, "State")))) continue;
        long long end = number(task, "EndTime");
        if (oldest == 0 || end < oldest_end) oldest = index + 1, oldest_end = end;
    }
    return oldest;
}

void fill_info(const json::object& task, int task_id, TaskInfo& info) {
    info = TaskInfo{};
    info.id = task_id;
    platform::sim::copy_text(info.name, text(task, "Name"));
    info.state = static_cast<int>(number(task, "State"));
    info.start_time = number(task, "StartTime");
    info.end_time = number(task, "EndTime");
    info.percent = static_cast<int>(number(task, "Percent"));
    const json::value* hide = task.if_contains("HidePayload");
    info.hide_payload = hide && hide->is_bool() && hide->as_bool();
    platform::sim::copy_text(info.monitor_id, text(task, "MonitorId"));
    platform::sim::copy_text(info.health, text(task, "Health"));
    const json::value* messages = task.if_contains("Messages");
    if (!messages || !messages->is_array()) return;
    for (const json::value& entry : messages->as_array()) {
        if (!entry.is_object() || info.message_count >= TASK_MESSAGES_MAX) continue;
        const json::object& message = entry.as_object();
        TaskMessage& target = info.messages[info.message_count++];
        platform::sim::copy_text(target.message_id, text(message, "MessageId"));
        platform::sim::copy_text(target.message, text(message, "Message"));
        platform::sim::copy_text(target.argument, text(message, "Argument"));
        platform::sim::copy_text(target.related, text(message, "Related"));
        platform::sim::copy_text(target.severity, text(message, "Severity"));
    }
}

// Reads the task as the store shows it now, without writing.
int read_task(const std::function<bool(const json::object&)>& wanted, TaskInfo* info) {
    if (!info) return -1;
    const std::shared_ptr<const json::object> store = stored_store();
    int task_id = 0;
    for (const json::value& stored : stored_tasks(*store)) {
        ++task_id;
        if (!stored.is_object() || !wanted(stored.as_object())) continue;
        json::object task = stored.as_object();
        settle(task);
        fill_info(task, task_id, *info);
        return 0;
    }
    return -1;
}

}  // namespace

namespace platform::sim {

bool task_in_progress(int task_id, const std::string& monitor_id) {
    const std::shared_ptr<const json::object> store = stored_store();
    const json::object* stored = task_at(*store, task_id);
    if (!stored || text(*stored, "MonitorId") != monitor_id) return false;
    json::object task = *stored;
    settle(task);
    return !ended(static_cast<int>(number(task, "State"))) ||
           process_alive(parse_process(text(task, "Worker")));
}

}  // namespace platform::sim

extern "C" {

int TaskServiceAddTask(const char* name, int* task_id) {
    const std::string monitor_id = new_monitor_id();
    if (!name || !task_id || monitor_id.empty()) return -1;
    return change_store([&](json::object& store) {
        const json::value* enabled = store.if_contains("ServiceEnabled");
        if (enabled && enabled->is_bool() && !enabled->as_bool()) return false;
        json::array& tasks = store["Tasks"].as_array();
        const size_t place = free_place(tasks);
        if (place == 0) return false;
        if (place > tasks.size()) tasks.emplace_back(nullptr);
        tasks[place - 1] = new_task(name, monitor_id);
        *task_id = static_cast<int>(place);
        return true;
    });
}

int TaskServiceSetTaskWorker(int task_id, pid_t worker) {
    const std::string identity =
        platform::sim::format_process(platform::sim::identify_process(worker));
    return change_task(task_id, [&](json::object& task) { task["Worker"] = identity; });
}

int TaskServiceGetTaskCount(int* count) {
    if (!count) return -1;
    *count = static_cast<int>(stored_tasks(*stored_store()).size());
    return 0;
}

int TaskServiceGetTaskInfo(int task_id, TaskInfo* info) {
    int index = 0;
    return read_task([&](const json::object&) { return ++index == task_id; }, info);
}

int TaskServiceGetTaskInfoByMonitorId(const char* monitor_id, TaskInfo* info) {
    if (!monitor_id || monitor_id[0] == '\0') return -1;
    return read_task(
        [&](const json::object& task) { return text(task, "MonitorId") == monitor_id; }, info);
}

int TaskServiceGetConfig(TaskServiceConfig* config) {
    if (!config) return -1;
    *config = TaskServiceConfig{};
    const std::shared_ptr<const json::object> store = stored_store();
    const json::value* enabled = store->if_contains("ServiceEnabled");
    config->enabled = !(enabled && enabled->is_bool() && !enabled->as_bool());
    platform::sim::copy_text(config->overwrite_policy, "Oldest");
    config->life_cycle_event = 0;
    return 0;
}

int TaskServiceSetStartStop(int enabled) {
    return change_store([&](json::object& store) {
        store["ServiceEnabled"] = enabled != 0;
        return true;
    });
}

int TaskServiceUpdateTaskState(int task_id, int state) {
    if (state < 0 || state > 13) return -1;
    return change_task(task_id, [&](json::object& task) {
        task["State"] = state;
        if (state == TASK_STATE_EXCEPTION || state == TASK_STATE_KILLED)
            task["Health"] = "Critical";
        // A Pending task waits without a process. An ended one keeps its
        // worker, which may still be finishing (a cancelled flash).
        if (state == TASK_STATE_PENDING) task["Worker"] = "";
    });
}

int TaskServiceUpdateTaskPercentage(int task_id, int percent) {
    if (percent < 0 || percent > 100) return -1;
    return change_task(task_id, [&](json::object& task) { task["Percent"] = percent; });
}

int TaskServiceUpdateTaskETime(int task_id) {
    return change_task(task_id, [&](json::object& task) { task["EndTime"] = now(); });
}

int TaskServiceUpdateTaskMsgFromEvt(int task_id, int event, const char* argument,
                                    const char* origin) {
    if (event != TASK_EVENT_CANCELLED) return -1;
    TaskMessage message{};
    if (!event_task_message("TaskCancelled", argument ? argument : "", origin ? origin : "",
                            message))
        return -1;
    return change_task(task_id, [&](json::object& task) { add_message(task, message); });
}

int TaskServiceEventMessage(const char* key, const char* argument, TaskMessage* message) {
    if (!key || !message) return -1;
    return event_task_message(key, argument ? argument : "", "", *message) ? 0 : -1;
}

int TaskServiceAddTaskMessage(int task_id, const TaskMessage* message) {
    if (!message) return -1;
    return change_task(task_id, [&](json::object& task) { add_message(task, *message); });
}

}  // extern "C"
