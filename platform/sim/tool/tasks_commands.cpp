// bmcsim tasks: the task store as the service's actions leave it.
#include <ostream>
#include <string>

#include "platform/libtask.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace tasks_commands {

void print_task(const TaskInfo& task, std::ostream& out) {
    out << "id=" << task.id << "\nname=" << task.name << "\nstate=" << task.state
        << "\npercent=" << task.percent << "\nstart=" << task.start_time
        << "\nend=" << task.end_time << "\nmonitor=" << task.monitor_id
        << "\nhealth=" << task.health << '\n';
    for (int index = 0; index < task.message_count; ++index)
        out << "message." << index << '=' << task.messages[index].message_id << ' '
            << task.messages[index].message << '\n';
}

int list_tasks(std::ostream& out, std::ostream& err) {
    int count = 0;
    if (TaskServiceGetTaskCount(&count) < 0) {
        err << "bmcsim: cannot read the task store\n";
        return exit_failed;
    }
    for (int task_id = 1; task_id <= count; ++task_id) {
        TaskInfo task{};
        if (TaskServiceGetTaskInfo(task_id, &task) < 0) continue;
        out << task.id << ' ' << task.state << ' ' << task.percent << ' ' << task.name << '\n';
    }
    return exit_ok;
}

int run_tasks(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "list" && words.size() == 1) return list_tasks(out, err);
    long long task_id = 0;
    if (command != "show" || words.size() != 2 ||
        !parse_number(words[1], 1, TASK_STORE_CAPACITY, task_id))
        return usage(self, err);
    TaskInfo task{};
    if (TaskServiceGetTaskInfo(static_cast<int>(task_id), &task) < 0) {
        err << "bmcsim: no task " << task_id << '\n';
        return exit_failed;
    }
    print_task(task, out);
    return exit_ok;
}

}  // namespace tasks_commands

const area tasks_area = {"tasks", "list | show ID", tasks_commands::run_tasks};

}  // namespace bmcsim
