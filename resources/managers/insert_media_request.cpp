#include "resources/managers/insert_media_request.h"

#include <algorithm>
#include <cctype>

#include "framework/property_checks.h"
#include "platform/libvmedia.h"
#include "resources/managers/action_parameters.h"

namespace odata::redfish {
namespace {

constexpr const char* insert_media_action = "VirtualMedia.InsertMedia";
constexpr std::size_t max_image_length = VMEDIA_IMAGE_SIZE - 1;
constexpr std::size_t max_user_name_length = VMEDIA_USER_SIZE - 1;
constexpr std::size_t max_password_length = VMEDIA_PASSWORD_SIZE - 1;

struct uri_scheme {
    std::string_view scheme;
    std::string_view protocol;
};

constexpr uri_scheme schemes[] = {
    {"http", "HTTP"}, {"https", "HTTPS"}, {"nfs", "NFS"}, {"cifs", "CIFS"}, {"smb", "CIFS"}};

bool equal_ignoring_case(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), [](char a, char b) {
               return std::tolower(static_cast<unsigned char>(a)) ==
                      std::tolower(static_cast<unsigned char>(b));
           });
}

bool is_printable(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) > 0x20 && c != 0x7F; });
}

void report_value(result_record& result, const char* message_id, const std::string& value,
                  const std::string& name) {
    add_parameter_message(result, message_id, value, name, insert_media_action);
}

const boost::json::string* read_text(const boost::json::value& value, const std::string& name,
                                     result_record& result, bool secret = false) {
    const boost::json::string* text = value.if_string();
    if (!text)
        report_value(result, "Base.1.10.ActionParameterValueTypeError",
                     secret ? hidden_value : shown_value(value), name);
    return text;
}

bool read_flag(const boost::json::value& value, const std::string& name, result_record& result) {
    if (!value.is_bool())
        report_value(result, "Base.1.10.ActionParameterValueTypeError", shown_value(value), name);
    return value.is_bool() && value.get_bool();
}

// A text that the BMC stores for the mount: no blanks or control
// characters, at most max_length bytes.
void read_credential(const boost::json::value& value, const std::string& name,
                     std::size_t max_length, std::string& target, result_record& result,
                     bool secret) {
    const boost::json::string* text = read_text(value, name, result, secret);
    if (!text) return;
    if (text->size() > max_length || !is_printable(*text))
        return report_value(result, "Base.1.10.ActionParameterValueFormatError",
                            secret ? hidden_value : std::string(*text), name);
    target = std::string(*text);
}

void read_choice(const boost::json::value& value, const std::string& name,
                 const std::vector<std::string_view>& allowed, std::string& target,
                 result_record& result) {
    const boost::json::string* text = read_text(value, name, result);
    if (!text) return;
    if (std::find(allowed.begin(), allowed.end(), std::string_view(*text)) == allowed.end())
        return report_value(result, "Base.1.10.ActionParameterValueNotInList", std::string(*text),
                            name);
    target = std::string(*text);
}

// The members read one by one; the checks between them come after.
struct insert_media_fields {
    insert_media_request request;
    bool has_image = false;
    std::string protocol;
};

void read_member(const std::string& name, const boost::json::value& value,
                 insert_media_fields& fields, result_record& result) {
    insert_media_request& request = fields.request;
    static const std::vector<std::string_view> transfer_methods = {"Stream"};
    std::string ignored;
    if (name == "Image") {
        const boost::json::string* text = read_text(value, name, result);
        fields.has_image = text != nullptr;
        if (text) request.image = std::string(*text);
    } else if (name == "Inserted") {
        // Only inserting is supported: "Inserted": false would leave the
        // image attached but absent.
        if (value.is_bool() && !value.get_bool())
            report_value(result, "Base.1.10.ActionParameterValueNotInList", "false", name);
        else
            read_flag(value, name, result);
    } else if (name == "WriteProtected") {
        request.write_protected = read_flag(value, name, result);
    } else if (name == "UserName") {
        read_credential(value, name, max_user_name_length, request.user_name, result, false);
    } else if (name == "Password") {
        read_credential(value, name, max_password_length, request.password, result, true);
    } else if (name == "TransferProtocolType") {
        read_choice(value, name, transfer_protocol_types(), fields.protocol, result);
    } else if (name == "TransferMethod") {
        read_choice(value, name, transfer_methods, ignored, result);
    } else {
        unknown_property::in_post(insert_media_action).report(result, name);
    }
}

// The host part of an image URI ("user:password@host"), empty when the URI
// has none.
std::string_view image_authority(std::string_view image) {
    const std::size_t separator = image.find("://");
    if (separator == std::string_view::npos) return {};
    const std::string_view rest = image.substr(separator + 3);
    return rest.substr(0, rest.find('/'));
}

// Credentials go in UserName and Password: one inside the image URI would be
// shown to every reader of the drive.
bool has_user_info(std::string_view image) {
    return image_authority(image).find('@') != std::string_view::npos;
}

void check_image(const insert_media_fields& fields, result_record& result) {
    if (!fields.has_image) return;
    const std::string_view protocol = image_transfer_protocol(fields.request.image);
    const bool matches = fields.protocol.empty() || fields.protocol == protocol;
    if (protocol.empty() || !matches)
        report_value(result, "Base.1.10.ActionParameterValueFormatError",
                     has_user_info(fields.request.image) ? hidden_value : fields.request.image,
                     "Image");
}

}  // namespace

const std::vector<std::string_view>& transfer_protocol_types() {
    static const std::vector<std::string_view> types = {"HTTP", "HTTPS", "NFS", "CIFS"};
    return types;
}

std::string_view image_transfer_protocol(std::string_view image) {
    if (image.size() > max_image_length || !is_printable(image) || has_user_info(image)) return {};
    const std::size_t separator = image.find("://");
    if (separator == std::string_view::npos) return {};
    const std::string_view rest = image.substr(separator + 3);
    const std::size_t path = rest.find('/');
    if (path == 0 || path == std::string_view::npos || path + 1 == rest.size()) return {};
    for (const uri_scheme& known : schemes)
        if (equal_ignoring_case(image.substr(0, separator), known.scheme)) return known.protocol;
    return {};
}

insert_media_request read_insert_media(const boost::json::object& parameters,
                                       result_record& result) {
    insert_media_fields fields;
    for (const auto& [name, value] : parameters)
        read_member(std::string(name), value, fields, result);
    if (!parameters.contains("Image"))
        add_message(result, "Base.1.10.ActionParameterMissing", {insert_media_action, "Image"});
    check_image(fields, result);
    return fields.request;
}

}  // namespace odata::redfish
