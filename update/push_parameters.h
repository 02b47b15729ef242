// The UpdateParameters part of an HTTP push: the target and when to apply.
#pragma once

#include <string>

#include "frontend/message.h"

namespace odata::redfish {

struct push_parameters {
    int device = 0;         // FW_DEVICE_BMC or FW_DEVICE_BIOS
    bool on_reset = false;  // staged for the next host reset (BIOS only)
};

// Reads the JSON text of the part; each failure adds one message to result
// and logs its console line.
void read_push_parameters(const std::string& text, push_parameters& parameters,
                          result_record& result);

// Adds an OemHttppushuriErrorMessage with text to result.
void add_push_error(result_record& result, const char* text);

// The result that upload failures are gathered in.
result_record push_errors();

}  // namespace odata::redfish
