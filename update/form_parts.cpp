#include "update/form_parts.h"

#include <charconv>
#include <iostream>

#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "platform/libweb.h"
#include "update/multipart_reader.h"

namespace odata::redfish {
namespace {

// Part headers and delimiters around the content.
constexpr long long part_overhead = 2048;

long long content_length() {
    const std::string text = request_cgi_text("CONTENT_LENGTH");
    long long length = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    return error == std::errc() && end == text.data() + text.size() ? length : -1;
}

form_status read_parts(multipart_reader& reader, std::size_t max_part_bytes,
                       std::map<std::string, std::string>& parts) {
    while (reader.next_part()) {
        std::string content;
        bool too_large = false;
        const bool read = reader.read_content([&](const char* data, std::size_t length) {
            too_large = content.size() + length > max_part_bytes;
            if (!too_large) content.append(data, length);
            return !too_large;
        });
        if (too_large) return form_status::too_large;
        if (!read) return form_status::malformed;
        parts[reader.name()] = std::move(content);
    }
    return reader.failed() ? form_status::malformed : form_status::read;
}

}  // namespace

std::string request_cgi_text(const char* name) {
    char value[513] = {};
    return get_cgi_env(name, value, 512) < 0 ? std::string() : std::string(value);
}

form_parts read_form_parts(const request_context& context, std::size_t max_part_bytes,
                           std::size_t max_parts) {
    form_parts form;
    const std::string boundary = multipart_boundary(request_cgi_text("CONTENT_TYPE"));
    const long long length = content_length();
    if (boundary.empty() || boundary.size() > 128 || !context.upload) {
        form.status = form_status::not_a_form;
        return form;
    }
    const long long max_body = static_cast<long long>(max_parts) *
                               (static_cast<long long>(max_part_bytes) + part_overhead);
    if (length <= 0 || length > max_body) {
        form.status = length > max_body ? form_status::too_large : form_status::malformed;
        return form;
    }
    multipart_reader reader(*context.upload, boundary, length);
    form.status = read_parts(reader, max_part_bytes, form.parts);
    return form;
}

void answer_form_success(const char* message_id) {
    result_record result{"OemSuccess", "Successfully Completed Request.", {}};
    add_message(result, message_id);
    write_status_line(200);
    write_result(result);
}

}  // namespace odata::redfish
