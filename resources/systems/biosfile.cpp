#include "resources/systems/biosfile.h"

#include <iostream>

#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/bios_attributes.h"
#include "update/form_parts.h"

namespace odata::redfish {
namespace {

constexpr const char* file_part = "BiosFile";
constexpr const char* bios_file_name = "bios_config.json";
// With the form around it, the upload stays within the 64 KiB that the web
// server takes of a request.
constexpr std::size_t max_file_bytes = 48 * 1024;

[[noreturn]] void refuse(const char* reason) {
    console_log("[BiosFile] upload refused: %s\n", reason);
    throw_http_error(400, "TWR.1.0.OemFileoperationErrorMessage", {reason});
}

boost::json::object writable_attributes() {
    const St_BiosAttribute* table = nullptr;
    int count = 0;
    boost::json::object attributes;
    if (UtilGetBiosAttributeTable(&table, &count) != PLT_OK) return attributes;
    for (int i = 0; i < count; ++i) {
        if (table[i].read_only) continue;
        const std::optional<boost::json::value> value = reported_or_default(table[i].name);
        if (value) attributes[table[i].name] = *value;
    }
    return attributes;
}

const std::string& uploaded_file(const form_parts& form) {
    if (form.status == form_status::too_large) refuse("the file is larger than 48 KiB");
    const auto part = form.parts.find(file_part);
    if (form.status != form_status::read || part == form.parts.end())
        refuse("the form has no part BiosFile");
    return part->second;
}

}  // namespace

// Every attribute is checked before any is handed over.
std::optional<boost::json::object> bios_file_changes(std::string_view file, result_record& result) {
    boost::system::error_code error;
    const boost::json::value document = boost::json::parse(file, error);
    const boost::json::object* object = error ? nullptr : document.if_object();
    const boost::json::value* attributes = object ? object->if_contains("Attributes") : nullptr;
    if (!attributes || object->size() != 1) {
        add_message(result, "TWR.1.0.OemFileoperationErrorMessage",
                    {"the file is no object of Attributes alone"});
        return std::nullopt;
    }
    result_record refusals;
    boost::json::object changes;
    read_bios_attribute_changes({"Attributes", *attributes, "Attributes"}, changes, refusals);
    if (refusals.entries.empty()) return changes;
    add_message(result, "TWR.1.0.OemFileoperationErrorMessage",
                {"the file has attributes the BIOS does not take"});
    for (boost::json::value& entry : refusals.entries) result.entries.push_back(std::move(entry));
    return std::nullopt;
}

// Never cached: the values change with each start of the BIOS.
int biosfile_download::post(request_context& context) {
    check_no_parameters(context, "BiosFile.Download");
    const std::string text =
        boost::json::serialize(boost::json::object{{"Attributes", writable_attributes()}});
    write_status_line(200);
    set_response_header(response_header::content_disposition,
                        std::string("attachment; filename=\"") + bios_file_name + "\"");
    write_header_block(text.size(), body_kind::attachment);
    std::cout << text;
    return 0;
}

int biosfile_upload::post(request_context& context) {
    const form_parts form = read_form_parts(context, max_file_bytes, 1);
    result_record result = general_error();
    const std::optional<boost::json::object> changes =
        bios_file_changes(uploaded_file(form), result);
    if (!changes) {
        console_log("[BiosFile] upload refused: the file is not one the BIOS takes\n");
        throw_http_result(400, result);
    }
    if (!changes->empty() && !add_pending_bios_attributes(*changes)) {
        console_log("[ERROR] BiosFile: the attributes were not handed to the BIOS\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    answer_form_success("Base.1.10.Success");
    return 0;
}

}  // namespace odata::redfish
