#include "update/image_download.h"

#include <boost/json.hpp>

#include "base/bmc_root.h"
#include "base/child_program.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

// How often the worker looks whether the task was cancelled.
constexpr int stop_check_ms = 250;

const std::string& fetch_program() {
    static platform::fixed_bmc_path path("/usr/sbin/bmc-image-fetch");
    return path.get();
}

// Task messages are read by every user: what the server or the network
// answered (refused, silent, an HTTP status) would tell them which ports are
// open where, so only what concerns the image is passed on; the rest goes to
// the log.
std::string shown_reason(const std::string& said) {
    static const std::string about_the_image[] = {
        "the image is too large", "the image is empty", "the download was cancelled",
        "the image file cannot be created", "the image file cannot be written"};
    for (const std::string& known : about_the_image)
        if (said == known) return said;
    console_log("[FirmwareUpdate] download failed: %s\n", said.c_str());
    return "the image could not be downloaded";
}

}  // namespace

bool download_image(const image_source& source, const std::string& path,
                    const std::function<bool()>& stop, std::string& reason) {
    platform::child_program fetch({fetch_program(), path},
                                  platform::child_program::lifetime::caller);
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
    reason = shown_reason(platform::last_line(said));
    return false;
}

}  // namespace odata::redfish
