#include "platform/sim/remote_syslog.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <cstring>

#include "base/bmc_root.h"
#include "base/utc_time.h"
#include "platform/libsyslog.h"
#include "platform/outbound_destinations.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr int syslog_port = 514;
// Facility local0, severity informational (RFC 5424).
constexpr const char* priority = "<134>";

bool ipv4_address(const char* text, in_addr& address) {
    return inet_pton(AF_INET, text, &address) == 1;
}

bool valid_config(const St_SyslogConfig& config) {
    in_addr unused;
    const bool has_address = config.address[0] != '\0';
    const bool terminated = std::memchr(config.address, '\0', sizeof config.address) != nullptr;
    return terminated && config.port != 0 &&
           (has_address ? ipv4_address(config.address, unused) : !config.enabled);
}

// One event is one line: a newline in a logged name must not forge another.
std::string one_line(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
    return text;
}

}  // namespace

namespace platform {

const std::string& syslog_settings_file() {
    static fixed_bmc_path path("/nv/bmc/syslog.ini");
    return path.get();
}

}  // namespace platform

namespace platform::sim {

void forward_to_syslog(long long time, int event_code, const std::string& text) {
    St_SyslogConfig config;
    if (PltSYSLOG_GetConfig(&config) != PLT_OK || !config.enabled) return;
    sockaddr_in destination{};
    destination.sin_family = AF_INET;
    destination.sin_port = htons(config.port);
    if (!ipv4_address(config.address, destination.sin_addr)) return;
    const auto* address = reinterpret_cast<const sockaddr*>(&destination);
    unique_fd fd(allowed_socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, address));
    if (!fd.valid()) return;
    const std::string line = std::string(priority) + "1 " + platform::utc_timestamp(time) +
                             " bmc bmc-events - " + std::to_string(event_code) + " - " +
                             one_line(text);
    ::sendto(fd.get(), line.data(), line.size(), MSG_DONTWAIT | MSG_NOSIGNAL, address,
             sizeof destination);
}

}  // namespace platform::sim

extern "C" int PltSYSLOG_GetConfig(St_SyslogConfig* config) {
    if (!config) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::syslog_settings_file());
    *config = St_SyslogConfig{};
    config->enabled = state->get("Syslog.Enabled", 0) != 0;
    platform::sim::copy_text(config->address, state->get("Syslog.Address", ""));
    const int port = state->get("Syslog.Port", syslog_port);
    config->port = static_cast<uint16_t>(port);
    return port == config->port && valid_config(*config) ? PLT_OK : PLT_ERR_FORMAT;
}

extern "C" int PltSYSLOG_SetConfig(const St_SyslogConfig* config) {
    if (!config || !valid_config(*config)) return PLT_ERR_ARGUMENT;
    const bool written =
        platform::sim::update_state_ini(platform::syslog_settings_file(), [&](pt::ptree& state) {
            state.put("Syslog.Enabled", config->enabled ? 1 : 0);
            state.put("Syslog.Address", std::string(config->address));
            state.put("Syslog.Port", static_cast<int>(config->port));
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}
