// The simulated BMC's serial console port, <root>/nv/bmc/serial.ini:
//
//   [Port1] Enabled=0|1, BitRate, DataBits, Parity=N|E|O, StopBits,
//           FlowControl=0|1   (defaults: on, 115200 8N1, no flow control)
#pragma once

#include <string>

namespace platform {

std::string serial_settings_file();

}  // namespace platform
