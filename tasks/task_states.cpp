#include "tasks/task_states.h"

#include <array>

namespace odata::redfish {
namespace {

struct task_state {
    std::string_view text;
    int monitor_status;
};

constexpr std::array<task_state, 14> task_states = {{
    {"New", 202},
    {"Starting", 202},
    {"Running", 202},
    {"Suspended", 500},
    {"Interrupted", 500},
    {"Pending", 202},
    {"Stopping", 202},
    {"Completed", 200},
    {"Killed", 500},
    {"Exception", 400},
    {"Service", 500},
    {"Cancelling", 500},
    {"Cancelled", 500},
    {"Unknown", 500},
}};

const task_state& state_entry(int state) {
    if (state < 0 || static_cast<size_t>(state) >= task_states.size()) return task_states.back();
    return task_states[static_cast<size_t>(state)];
}

}  // namespace

std::string_view task_state_text(int state) { return state_entry(state).text; }

bool task_shows_end_time(int state) {
    std::string_view text = task_state_text(state);
    return text == "Completed" || text == "Killed" || text == "Exception";
}

int task_monitor_status(int state) { return state_entry(state).monitor_status; }

}  // namespace odata::redfish
