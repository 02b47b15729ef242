#include "update/push_form.h"

#include <charconv>
#include <cstdio>

#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "platform/libweb.h"
#include "update/firmware_components.h"
#include "update/form_parts.h"
#include "update/image_download.h"
#include "update/image_file.h"
#include "update/push_parameters.h"

namespace odata::redfish {
namespace {

// An image and the form around it.
constexpr long long max_content_length = max_image_bytes + (1LL << 20);
constexpr size_t max_boundary_length = 128;
constexpr const char* parsing_content_text = "Please check the parsing content.";

long long checked_content_length() {
    const std::string text = request_cgi_text("CONTENT_LENGTH");
    long long length = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || length <= 0)
        throw_push_error("[ERROR] HttpPushUri Http content length.\n", parsing_content_text);
    if (length > max_content_length)
        throw_push_error("[ERROR] HttpPushUri Content length is too long.\n", parsing_content_text);
    return length;
}

std::string checked_boundary() {
    const std::string type = request_cgi_text("CONTENT_TYPE");
    if (type.rfind("multipart/form-data", 0) != 0)
        throw_push_error("[ERROR] HttpPushUri Incorrect http content type.\n",
                         parsing_content_text);
    const std::string boundary = multipart_boundary(type);
    if (boundary.empty())
        throw_push_error("[ERROR] HttpPushUri Http boundary.\n", parsing_content_text);
    if (boundary.size() > max_boundary_length)
        throw_push_error("[ERROR] HttpPushUri Http boundary out of length.\n",
                         parsing_content_text);
    return boundary;
}

}  // namespace

void throw_push_error(const char* console_line, const char* text, int status) {
    console_log("%s", console_line);
    result_record result = push_errors();
    add_push_error(result, text);
    throw_http_result(status, result);
}

multipart_reader open_push_form(const request_context& context) {
    const long long length = checked_content_length();
    const std::string boundary = checked_boundary();
    if (!context.upload) throw_http_error(500, "Base.1.10.InternalError");
    return multipart_reader(*context.upload, boundary, length);
}

bool next_part_is(multipart_reader& reader, const char* name) {
    return reader.next_part() && reader.name() == name;
}

bool receive_image(multipart_reader& reader, const staged_component& component,
                   const std::function<void()>& before_commit) {
    image_file file(firmware_staging_file(component.device));
    const bool received = file.valid() &&
                          reader.read_content([&file](const char* data, size_t length) {
                              return file.write(data, length);
                          }) &&
                          file.size() > 0;
    if (!received) return false;
    before_commit();
    return file.commit();
}

void record_staged_version(const staged_component& component) {
    char version[64] = {};
    if (GetFirmwareImageVersion(component.device, firmware_staging_file(component.device), version,
                                sizeof version) != 0)
        std::snprintf(version, sizeof version, "%s", "Unknown");
    store_staged_version(component.inventory_entry, version);
}

}  // namespace odata::redfish
