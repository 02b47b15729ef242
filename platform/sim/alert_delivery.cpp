#include "platform/sim/alert_delivery.h"

#include "platform/bmc_root.h"
#include "platform/child_program.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {

std::string alert_delivery_log_file() { return bmc_path("/var/log/alert_delivery.log"); }

bool start_alert_delivery(int index, const char* kind, const std::string& request) {
    make_parent_dirs(alert_delivery_log_file());
    child_program sender({bmc_path("/usr/sbin/bmc-alert-send"), kind, std::to_string(index)});
    if (!sender.started()) {
        console_log("[ERROR] alert delivery: bmc-alert-send cannot be started\n");
        return false;
    }
    const bool sent = sender.send(request);
    sender.close_input();
    // The program exits once the delivery process has left its output.
    std::string said;
    while (!sender.read_output(said, -1)) {
    }
    if (sender.wait() == 0 && sent) return true;
    console_log("[ERROR] alert delivery: %s\n", last_line(said).c_str());
    return false;
}

}  // namespace platform::sim
