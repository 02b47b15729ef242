#include "platform/sim/update_mode.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <sstream>

#include "base/bmc_root.h"
#include "platform/libfwupdate.h"
#include "platform/sim/firmware_state.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace platform::sim {
namespace {

struct marker {
    std::string holder;
    std::string component;
};

// A marker that cannot be read, or whose holder has ended, is void.
bool read_live_marker(marker& found) {
    std::string text;
    if (!read_file(update_mode_file(), text)) return false;
    std::istringstream lines(text);
    return std::getline(lines, found.holder) && std::getline(lines, found.component) &&
           holder_alive(found.holder);
}

}  // namespace

const std::string& update_mode_file() {
    static fixed_bmc_path path("/tmp/fw_updating");
    return path.get();
}

int mark_update_mode(const std::string& holder, const std::string& component) {
    int marked = -2;
    with_file_lock(update_mode_file(), [&] {
        marker found;
        if (read_live_marker(found) && found.holder != holder)
            marked = -1;
        else if (replace_file(update_mode_file(), holder + "\n" + component + "\n", 0600))
            marked = 0;
        return true;
    });
    return marked;
}

}  // namespace platform::sim

using namespace platform::sim;

extern "C" {

int enter_fw_update_mode(int task_id, const char* component) {
    const std::string holder = task_holder(task_id);
    if (holder.empty() || !component || !*component) return -2;
    return mark_update_mode(holder, component);
}

int fw_update_mode_held(char* component, int size, int* task_id) {
    marker found;
    if (!read_live_marker(found)) return 0;
    if (component && size > 0) copy_out(found.component, component, size);
    if (task_id && std::sscanf(found.holder.c_str(), "task %d", task_id) != 1) *task_id = 0;
    return 1;
}

int leave_fw_update_mode(int task_id) {
    const std::string prefix = task_holder(task_id) + "\n";
    const bool left = with_file_lock(update_mode_file(), [&] {
        std::string text;
        if (!read_file(update_mode_file(), text) || text.rfind(prefix, 0) != 0) return true;
        return ::unlink(update_mode_file().c_str()) == 0 || errno == ENOENT;
    });
    return left ? 0 : -1;
}

}  // extern "C"
