// Renders result records into Redfish JSON bodies and writes them.
#pragma once

#include <boost/json.hpp>
#include <cstddef>
#include <string>

#include "frontend/message.h"

namespace odata::redfish {

// The JSON of a result record ("Success", "Accepted", "error" or Oem
// shape; empty for any other code), and its compact text.
boost::json::object result_object(const result_record& result);
std::string render_result(const result_record& result);

// After a "204 No Content" status line, ends the headers (a 204 answer has
// neither body nor content headers) and answers true; otherwise false.
bool end_if_no_content();

// Content-Length, OData-Version, Content-Type, empty line, body; the
// handler has already written its status line.
void write_result(const result_record& result);

}  // namespace odata::redfish
