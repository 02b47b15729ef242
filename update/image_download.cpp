#include "update/image_download.h"

#include <boost/json.hpp>

#include "base/bmc_root.h"
#include "base/child_program.h"

namespace odata::redfish {
namespace {

// How often the worker looks whether the task was cancelled.
constexpr int stop_check_ms = 250;

std::string fetch_program() { return platform::bmc_path("/usr/sbin/bmc-image-fetch"); }

}  // namespace

bool download_image(const image_source& source, const std::string& path,
                    const std::function<bool()>& stop, std::string& reason) {
    platform::child_program fetch({fetch_program(), path});
    // The input stays open while the download runs: its end stops the
    // program when this worker is gone.
    if (!fetch.started() ||
        !fetch.send(boost::json::serialize(boost::json::value_from(source)) + "\n")) {
        reason = "bmc-image-fetch cannot be started";
        return false;
    }
    std::string said;
    while (!fetch.read_output(said, stop_check_ms)) {
        if (stop()) {
            fetch.kill();
            fetch.wait();
            reason = "the download was cancelled";
            return false;
        }
    }
    if (fetch.wait() == 0) return true;
    reason = platform::last_line(said);
    if (reason.empty()) reason = "the download failed";
    return false;
}

}  // namespace odata::redfish
