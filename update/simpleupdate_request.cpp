#include "update/simpleupdate_request.h"

#include <algorithm>
#include <cctype>

#include "platform/libfwupdate.h"
#include "platform/libweb.h"
#include "platform/outbound_destinations.h"
#include "update/lower_case.h"
#include "update/push_parameters.h"

namespace odata::redfish {
namespace {

constexpr size_t max_file_name_length = 127;
constexpr size_t max_location_length = 236;

struct transfer_protocol {
    const char* name;
    const char* scheme;
};

constexpr transfer_protocol transfer_protocols[] = {
    {"HTTP", "http"}, {"HTTPS", "https"}, {"FTP", "ftp"}};

void add_error(result_record& result, const char* text) {
    add_message(result, "TWR.1.0.OemSimpleupdateErrorMessage", {text});
}

enum class parameter { absent, text, wrong_type };

parameter text_parameter(const boost::json::object& body, const char* name, std::string& text) {
    const boost::json::value* value = body.if_contains(name);
    if (!value) return parameter::absent;
    if (!value->is_string()) return parameter::wrong_type;
    text = value->as_string();
    return parameter::text;
}

const transfer_protocol* protocol_by_scheme(const std::string& scheme) {
    for (const transfer_protocol& each : transfer_protocols)
        if (lower(scheme) == each.scheme) return &each;
    return nullptr;
}

const transfer_protocol* protocol_by_name(const std::string& name) {
    for (const transfer_protocol& each : transfer_protocols)
        if (name == each.name) return &each;
    return nullptr;
}

bool printable(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](unsigned char c) { return c > ' ' && c < 0x7f; });
}

// Splits "[scheme://]host/path"; false when the location breaks a rule.
bool split_location(std::string location, std::string& scheme, simple_update_request& request) {
    const size_t scheme_end = location.find("://");
    if (scheme_end != std::string::npos) {
        scheme = location.substr(0, scheme_end);
        location.erase(0, scheme_end + 3);
        if (!protocol_by_scheme(scheme)) return false;
    }
    const size_t path_start = location.find('/');
    if (location.find(';') != std::string::npos || !printable(location) ||
        path_start == std::string::npos || path_start == 0 ||
        location.size() - location.rfind('/') - 1 > max_file_name_length)
        return false;
    request.host = location.substr(0, path_start);
    request.path = location.substr(path_start);
    return true;
}

bool plain_user_name(const std::string& name) {
    return std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '.' || c == '_' || c == '-';
    });
}

void read_location(const boost::json::object& body, std::string& scheme,
                   simple_update_request& request, result_record& result) {
    std::string location;
    if (text_parameter(body, "ImageURI", location) != parameter::text ||
        !split_location(location, scheme, request)) {
        console_log("[ERROR] SimpleUpdate.ImageURI\n");
        add_error(result, "Input ImageURI format error.");
        return;
    }
    const size_t user_part =
        request.username.empty() ? 0 : request.username.size() + request.password.size() + 2;
    if (user_part + request.host.size() + request.path.size() > max_location_length) {
        console_log("[ERROR] SimpleUpdate.ImageURI\n");
        add_error(result, "Input ImageURI length error.");
    } else if (platform::refused_host(platform::destination_host(request.host))) {
        console_log("[ERROR] SimpleUpdate.ImageURI host\n");
        add_error(result, "Input ImageURI host is not allowed.");
    }
}

void check_credentials(const boost::json::object& body, const simple_update_request& request,
                       result_record& result) {
    std::string ignored;
    if (text_parameter(body, "Username", ignored) == parameter::wrong_type ||
        !plain_user_name(request.username)) {
        console_log("[ERROR] SimpleUpdate.Username\n");
        add_error(result, "Not support special character.");
    }
    if (text_parameter(body, "Password", ignored) == parameter::wrong_type)
        add_message(result, "Base.1.10.ActionParameterValueTypeError",
                    {"******", "Password", "UpdateService.SimpleUpdate"});
}

void read_protocol(const boost::json::object& body, const std::string& scheme,
                   simple_update_request& request, result_record& result) {
    std::string name;
    const parameter given = text_parameter(body, "TransferProtocol", name);
    const transfer_protocol* protocol = given == parameter::text     ? protocol_by_name(name)
                                        : given == parameter::absent ? protocol_by_scheme(scheme)
                                                                     : nullptr;
    if (!protocol || (!scheme.empty() && protocol != protocol_by_scheme(scheme))) {
        console_log("[ERROR] SimpleUpdate.TransferProtocol\n");
        add_error(result, "Input TransferProtocol format error.");
        return;
    }
    request.protocol = protocol->name;
}

// Without Targets the BMC is updated.
// A pull updates the BMC or the host BIOS only.
int pull_target_device(const boost::json::value& target) {
    const int device = push_target_device(target);
    return device == FW_DEVICE_BMC || device == FW_DEVICE_BIOS ? device : 0;
}

void read_targets(const boost::json::object& body, simple_update_request& request,
                  result_record& result) {
    const boost::json::value* targets = body.if_contains("Targets");
    if (!targets) {
        request.device = FW_DEVICE_BMC;
        return;
    }
    const boost::json::array* list = targets->if_array();
    const bool known =
        list && !list->empty() &&
        std::all_of(list->begin(), list->end(), [](const boost::json::value& target) {
            return pull_target_device(target) != 0;
        });
    if (!known) {
        console_log("[ERROR] SimpleUpdate.Targets\n");
        add_error(result, "Input Targets format error.");
    } else if (list->size() > 1) {
        console_log("[ERROR] SimpleUpdate.Targets\n");
        add_error(result, "Input Targets parameter error, only support one target each time.");
    } else {
        request.device = pull_target_device(list->front());
    }
}

}  // namespace

std::string simple_update_request::url() const {
    const transfer_protocol* found = protocol_by_name(protocol);
    return std::string(found ? found->scheme : "") + "://" + host + path;
}

void read_simple_update(const boost::json::object& body, simple_update_request& request,
                        result_record& result) {
    std::string scheme;
    text_parameter(body, "Username", request.username);
    text_parameter(body, "Password", request.password);
    read_location(body, scheme, request, result);
    check_credentials(body, request, result);
    read_protocol(body, scheme, request, result);
    read_targets(body, request, result);
}

result_record simple_update_errors() { return {"OemSimpleUpdateErrors", general_error_text, {}}; }

}  // namespace odata::redfish
