// bmcsim firmware: running versions, simulated images, and the conditions
// that hold updates back.
#include <unistd.h>

#include <cerrno>
#include <ostream>
#include <string>

#include "platform/libfwupdate.h"
#include "platform/sim/firmware_image.h"
#include "platform/sim/firmware_state.h"
#include "platform/sim/process_identity.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/tool/areas.h"
#include "platform/sim/update_mode.h"

namespace bmcsim {
namespace firmware_commands {

constexpr long long max_payload_bytes = 256LL << 20;

int show_firmware(std::ostream& out) {
    for (int device = FW_DEVICE_BMC; platform::sim::firmware_component(device); ++device)
        out << platform::sim::firmware_component(device) << '='
            << platform::sim::firmware_version(device) << '\n';
    char mode[64] = {};
    fw_update_mode_held(mode, sizeof mode, nullptr);
    out << "updating=" << fw_updating_in_progress() << '\n'
        << "update-mode=" << mode << '\n'
        << "evidence=" << evidence_dump_in_progress() << '\n';
    return exit_ok;
}

// A payload of size bytes that differs from version to version.
std::string payload_of(const std::string& version, long long size) {
    std::string payload(static_cast<size_t>(size), '\0');
    for (size_t at = 0; at < payload.size(); ++at)
        payload[at] = static_cast<char>((at * 31 + version.size() + version.back()) & 0xff);
    return payload;
}

int write_image(const arguments& words, std::ostream& err) {
    long long size = 4096;
    if (words.size() == 5 && !parse_number(words[4], 1, max_payload_bytes, size)) return -1;
    const std::string image =
        platform::sim::make_firmware_image(words[1], words[2], payload_of(words[2], size));
    if (platform::sim::replace_file(words[3], image, 0644)) return exit_ok;
    err << "bmcsim: cannot write " << words[3] << '\n';
    return exit_failed;
}

int remove_marker(const std::string& marker, std::ostream& err) {
    if (::unlink(marker.c_str()) == 0 || errno == ENOENT) return exit_ok;
    err << "bmcsim: cannot change " << marker << '\n';
    return exit_failed;
}

int set_evidence(const std::string& state, std::ostream& err) {
    const std::string marker = platform::sim::evidence_marker_file();
    if (state == "off") return remove_marker(marker, err);
    if (platform::sim::replace_file(marker, "", 0644)) return exit_ok;
    err << "bmcsim: cannot change " << marker << '\n';
    return exit_failed;
}

// Update mode held by another program, the process PID: void once it ends.
int set_update_mode(const arguments& words, std::ostream& err) {
    long long pid = 0;
    if (words.size() == 2)
        return words[1] == "off" ? remove_marker(platform::sim::update_mode_file(), err) : -1;
    if (!parse_number(words[1], 1, 4194304, pid) || platform::sim::firmware_device(words[2]) == 0)
        return -1;
    const platform::sim::process_identity holder =
        platform::sim::identify_process(static_cast<pid_t>(pid));
    if (holder.start == 0) {
        err << "bmcsim: no process " << pid << '\n';
        return exit_failed;
    }
    if (platform::sim::mark_update_mode(platform::sim::format_process(holder), words[2]) == 0)
        return exit_ok;
    err << "bmcsim: update mode is held, or cannot be marked\n";
    return exit_failed;
}

int run_firmware(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    int result = -1;
    if (command == "show" && words.size() == 1) {
        result = show_firmware(out);
    } else if (command == "image" && (words.size() == 4 || words.size() == 5) &&
               platform::sim::firmware_device(words[1]) != 0 && !words[2].empty()) {
        result = write_image(words, err);
    } else if (command == "evidence" && words.size() == 2 &&
               (words[1] == "on" || words[1] == "off")) {
        result = set_evidence(words[1], err);
    } else if (command == "update-mode" && (words.size() == 2 || words.size() == 3)) {
        result = set_update_mode(words, err);
    }
    return result < 0 ? usage(self, err) : result;
}

}  // namespace firmware_commands

const area firmware_area = {
    "firmware",
    "show | image COMPONENT VERSION FILE [PAYLOAD_BYTES] | evidence on|off | "
    "update-mode PID COMPONENT|off",
    firmware_commands::run_firmware};

}  // namespace bmcsim
