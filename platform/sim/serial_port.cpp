#include "platform/sim/serial_port.h"

#include "base/bmc_root.h"
#include "platform/libserial.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr uint32_t bit_rates[] = {9600, 19200, 38400, 57600, 115200};

St_SerialConfig stored_config(const pt::ptree& state) {
    St_SerialConfig config{};
    config.enabled = state.get("Port1.Enabled", 1) != 0;
    config.bit_rate = state.get("Port1.BitRate", 115200u);
    config.data_bits = static_cast<uint8_t>(state.get("Port1.DataBits", 8));
    config.parity = state.get("Port1.Parity", 'N');
    config.stop_bits = static_cast<uint8_t>(state.get("Port1.StopBits", 1));
    config.hardware_flow_control = state.get("Port1.FlowControl", 0) != 0;
    return config;
}

}  // namespace

namespace platform {

const std::string& serial_settings_file() {
    static fixed_bmc_path path("/nv/bmc/serial.ini");
    return path.get();
}

bool valid_serial_config(const St_SerialConfig& config) {
    bool known_rate = false;
    for (uint32_t rate : bit_rates) known_rate |= rate == config.bit_rate;
    return known_rate && (config.data_bits == 7 || config.data_bits == 8) &&
           (config.parity == 'N' || config.parity == 'E' || config.parity == 'O') &&
           (config.stop_bits == 1 || config.stop_bits == 2);
}

void put_serial_config(pt::ptree& state, const St_SerialConfig& config) {
    state.put("Port1.Enabled", config.enabled ? 1 : 0);
    state.put("Port1.BitRate", config.bit_rate);
    state.put("Port1.DataBits", static_cast<int>(config.data_bits));
    state.put("Port1.Parity", config.parity);
    state.put("Port1.StopBits", static_cast<int>(config.stop_bits));
    state.put("Port1.FlowControl", config.hardware_flow_control ? 1 : 0);
}

}  // namespace platform

extern "C" int PltSERIAL_GetConfig(int port, St_SerialConfig* config) {
    if (!config) return PLT_ERR_ARGUMENT;
    if (port < 1 || port > SERIAL_PORT_COUNT) return PLT_ERR_NOT_FOUND;
    *config = stored_config(*platform::sim::stored_state_ini(platform::serial_settings_file()));
    return platform::valid_serial_config(*config) ? PLT_OK : PLT_ERR_FORMAT;
}

extern "C" int PltSERIAL_SetConfig(int port, const St_SerialConfig* config) {
    if (!config || !platform::valid_serial_config(*config)) return PLT_ERR_ARGUMENT;
    if (port < 1 || port > SERIAL_PORT_COUNT) return PLT_ERR_NOT_FOUND;
    const bool written =
        platform::sim::update_state_ini(platform::serial_settings_file(), [&](pt::ptree& state) {
            platform::put_serial_config(state, *config);
            return true;
        });
    return written ? PLT_OK : PLT_ERR_IO;
}
