// bmcsim serial: the BMC's serial console port.
#include <ostream>

#include "platform/libserial.h"
#include "platform/sim/serial_port.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace serial_commands {

bool read_config(St_SerialConfig& config, std::ostream& err) {
    if (PltSERIAL_GetConfig(1, &config) == PLT_OK) return true;
    err << "bmcsim: " << platform::serial_settings_file() << " is malformed\n";
    return false;
}

int show(std::ostream& out, std::ostream& err) {
    St_SerialConfig config;
    if (!read_config(config, err)) return exit_failed;
    out << "enabled=" << (config.enabled ? "on" : "off") << '\n'
        << "bitrate=" << config.bit_rate << '\n'
        << "format=" << static_cast<int>(config.data_bits) << config.parity
        << static_cast<int>(config.stop_bits) << '\n'
        << "flow_control=" << (config.hardware_flow_control ? "hardware" : "none") << '\n';
    return exit_ok;
}

// on | off | bitrate N: one change to the current settings.
int change(const arguments& words, std::ostream& err) {
    St_SerialConfig config;
    if (!read_config(config, err)) return exit_failed;
    long long rate = config.bit_rate;
    if (words[0] == "bitrate" && !parse_number(words[1], 1, 115200, rate)) return exit_usage;
    if (words[0] != "bitrate") config.enabled = words[0] == "on";
    config.bit_rate = static_cast<uint32_t>(rate);
    if (PltSERIAL_SetConfig(1, &config) == PLT_OK) return exit_ok;
    err << "bmcsim: cannot set " << words[0] << '\n';
    return exit_failed;
}

int run_serial(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out, err);
    const bool valid = ((command == "on" || command == "off") && words.size() == 1) ||
                       (command == "bitrate" && words.size() == 2);
    if (!valid) return usage(self, err);
    const int status = change(words, err);
    return status == exit_usage ? usage(self, err) : status;
}

}  // namespace serial_commands

const area serial_area = {"serial", "show | on | off | bitrate 9600|19200|38400|57600|115200",
                          serial_commands::run_serial};

}  // namespace bmcsim
