// The simulated BMC's serial console port, <root>/nv/bmc/serial.ini:
//
//   [Port1] Enabled=0|1, BitRate, DataBits, Parity=N|E|O, StopBits,
//           FlowControl=0|1   (defaults: on, 115200 8N1, no flow control)
#pragma once

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "platform/libserial.h"

namespace platform {

const std::string& serial_settings_file();

// The ranges PltSERIAL_SetConfig checks.
bool valid_serial_config(const St_SerialConfig& config);

// Puts the settings PltSERIAL_SetConfig stores into the file's tree.
void put_serial_config(boost::property_tree::ptree& state, const St_SerialConfig& config);

}  // namespace platform
