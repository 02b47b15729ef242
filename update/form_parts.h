// The small parts of a multipart/form-data upload (a certificate, a key, a
// configuration file), each read whole into memory within a bound.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "frontend/request_context.h"

namespace odata::redfish {

// A CGI variable of the request; "" when it is not set.
std::string request_cgi_text(const char* name);

enum class form_status { read, not_a_form, too_large, malformed };

struct form_parts {
    form_status status = form_status::malformed;
    std::map<std::string, std::string> parts;  // content by form field name
};

// Reads every part of the request's form. A part larger than
// max_part_bytes, or a body larger than room for max_parts of them, is
// too_large; the body is never read beyond its Content-Length.
form_parts read_form_parts(const request_context& context, std::size_t max_part_bytes,
                           std::size_t max_parts);

// "200 OK" with the Success body and the message of message_id.
void answer_form_success(const char* message_id);

}  // namespace odata::redfish
