#include "resources/systems/bios_changepassword.h"

#include <algorithm>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libbios.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* change_password_action = "Bios.ChangePassword";
constexpr const char* administrator_password = "AdminPassword";

struct password_change {
    std::string name;
    std::string old_password;
    std::string new_password;
};

bool bios_password_text(const boost::json::string& text, bool may_be_empty) {
    return (may_be_empty || !text.empty()) && text.size() <= BIOS_PASSWORD_MAX_LENGTH &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7f; });
}

void report(result_record& result, const char* message_id, const std::string& value,
            const std::string& name) {
    add_parameter_message(result, message_id, value, name, change_password_action);
}

// Passwords never appear in messages.
void read_password(const std::string& name, const boost::json::value& value, std::string& target,
                   result_record& result) {
    const boost::json::string* text = value.if_string();
    if (!text) return report(result, "Base.1.10.ActionParameterValueTypeError", hidden_value, name);
    if (!bios_password_text(*text, name == "OldPassword"))
        return report(result, "Base.1.10.ActionParameterValueFormatError", hidden_value, name);
    target = std::string(*text);
}

void read_parameter(const std::string& name, const boost::json::value& value,
                    password_change& change, result_record& result) {
    if (name == "OldPassword") return read_password(name, value, change.old_password, result);
    if (name == "NewPassword") return read_password(name, value, change.new_password, result);
    if (name != "PasswordName")
        return unknown_property::in_post(change_password_action).report(result, name);
    const boost::json::string* text = value.if_string();
    if (!text)
        report(result, "Base.1.10.ActionParameterValueTypeError", shown_value(value), name);
    else if (*text != administrator_password)
        report(result, "Base.1.10.ActionParameterValueNotInList", std::string(*text), name);
}

password_change read_request(const boost::json::object& parameters) {
    result_record result = general_error();
    password_change change;
    for (const auto& [name, value] : parameters)
        read_parameter(std::string(name), value, change, result);
    for (const char* required : {"PasswordName", "OldPassword", "NewPassword"})
        if (!parameters.contains(required))
            add_message(result, "Base.1.10.ActionParameterMissing",
                        {change_password_action, required});
    if (!result.entries.empty()) throw_http_result(400, result);
    return change;
}

}  // namespace

bios_changepassword::bios_changepassword(request_context& context)
    : webservice(context), bios_(std::make_shared<bios>(context)) {}

int bios_changepassword::post(request_context& context) {
    const boost::json::value body = context.body_json();
    const password_change change = read_request(request_object(body));
    const int changed = UtilBiosChangePassword(
        BIOS_PASSWORD_ADMINISTRATOR, change.old_password.c_str(), change.new_password.c_str());
    if (changed == PLT_ERR_STATE) {
        console_log("[Bios.ChangePassword] refused: the old password is wrong\n");
        result_record result = general_error();
        report(result, "Base.1.10.ActionParameterValueFormatError", hidden_value, "OldPassword");
        throw_http_result(400, result);
    }
    if (changed != PLT_OK) {
        console_log("[ERROR] Bios.ChangePassword: the password was not handed over (%d)\n",
                    changed);
        throw_http_error(500, "Base.1.10.InternalError");
    }
    bios_->answer_success();
    return 0;
}

void bios_changepassword::send_response() { bios_->send_response(); }

changepasswordactioninfo::changepasswordactioninfo(request_context& context)
    : common_actioninfo(context, "Change Password Action Info",
                        bios_change_password_actioninfo_uri) {}

const actioninfo_parameters* changepasswordactioninfo::parameters() const {
    static const actioninfo_parameters change = {
        {"PasswordName", true, "String", {administrator_password}, {}, {}, {}},
        {"OldPassword", true, "String", {}, {}, {}, {}},
        {"NewPassword", true, "String", {}, {}, {}, {}},
    };
    return &change;
}

}  // namespace odata::redfish
