// The UpdateParameters part of an HTTP push: the target and when to apply.
#pragma once

#include <string>

#include <boost/json.hpp>

#include "frontend/message.h"

namespace odata::redfish {

// @Redfish.OperationApplyTime of the push.
enum class push_apply_time {
    immediate,        // flashed at once
    on_reset,         // staged for the next host reset (BIOS only)
    on_start_update,  // staged until UpdateService.StartUpdate
};

struct push_parameters {
    int device = 0;  // FW_DEVICE_*
    push_apply_time apply_time = push_apply_time::immediate;
};

// The device of a push target URI (the BMC, the BIOS, the inventory member
// of another component); 0 for another.
int push_target_device(const boost::json::value& target);

// Reads the JSON text of the part; each failure adds one message to result
// and logs its console line.
void read_push_parameters(const std::string& text, push_parameters& parameters,
                          result_record& result);

// Adds an OemHttppushuriErrorMessage with text to result.
void add_push_error(result_record& result, const char* text);

// The result that upload failures are gathered in.
result_record push_errors();

}  // namespace odata::redfish
