// Renders result records into Redfish JSON bodies and writes them.
#pragma once

#include <string>

#include "frontend/message.h"

namespace odata::redfish {

// The compact JSON text of a result record ("Success", "Accepted",
// "error" or Oem shape; "{}" for any other code).
std::string render_result(const result_record& result);

// After a "204 No Content" status line, ends the headers (a 204 answer has
// neither body nor content headers) and answers true; otherwise false.
bool end_if_no_content();

// Content-Length, OData-Version, Content-Type, empty line, body; the
// handler has already written its status line.
void write_result(const result_record& result);

}  // namespace odata::redfish
