#include "resources/systems/secureboot_resetkeys.h"

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libbios.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* reset_keys_action = "SecureBoot.ResetKeys";
constexpr const char* reset_parameter = "ResetKeysType";

struct reset_type {
    std::string_view name;
    int reset;
};

constexpr reset_type reset_types[] = {
    {"ResetAllKeysToDefault", SECURE_BOOT_RESET_ALL_KEYS_TO_DEFAULT},
    {"DeleteAllKeys", SECURE_BOOT_DELETE_ALL_KEYS},
    {"DeletePK", SECURE_BOOT_DELETE_PK},
};

std::optional<int> read_reset(const boost::json::value& value, result_record& result) {
    const boost::json::string* text = value.if_string();
    if (!text) {
        add_parameter_message(result, "Base.1.10.ActionParameterValueTypeError", shown_value(value),
                              reset_parameter, reset_keys_action);
        return std::nullopt;
    }
    for (const reset_type& type : reset_types)
        if (type.name == *text) return type.reset;
    add_parameter_message(result, "Base.1.10.ActionParameterValueNotInList", std::string(*text),
                          reset_parameter, reset_keys_action);
    return std::nullopt;
}

int requested_reset(const boost::json::object& parameters) {
    result_record result = general_error();
    std::optional<int> reset;
    for (const auto& [name, value] : parameters) {
        if (name == reset_parameter)
            reset = read_reset(value, result);
        else
            unknown_property::in_post(reset_keys_action).report(result, std::string(name));
    }
    if (!parameters.contains(reset_parameter))
        add_message(result, "Base.1.10.ActionParameterMissing",
                    {reset_keys_action, reset_parameter});
    if (!result.entries.empty()) throw_http_result(400, result);
    return *reset;
}

}  // namespace

secureboot_resetkeys::secureboot_resetkeys(request_context& context)
    : webservice(context), secureboot_(std::make_shared<secureboot>(context)) {}

int secureboot_resetkeys::post(request_context& context) {
    const boost::json::value body = context.body_json();
    const int reset = requested_reset(request_object(body));
    if (UtilSecureBootResetKeys(reset) != PLT_OK) {
        console_log("[ERROR] SecureBoot.ResetKeys: the key databases were not changed\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    secureboot_->answer_success();
    return 0;
}

void secureboot_resetkeys::send_response() { secureboot_->send_response(); }

secureboot_resetkeysactioninfo::secureboot_resetkeysactioninfo(request_context& context)
    : common_actioninfo(context, "Reset Keys Action Info", secure_boot_reset_keys_actioninfo_uri) {}

const actioninfo_parameters* secureboot_resetkeysactioninfo::parameters() const {
    static const actioninfo_parameters reset = {
        {reset_parameter,
         true,
         "String",
         {"ResetAllKeysToDefault", "DeleteAllKeys", "DeletePK"},
         {},
         {},
         {}},
    };
    return &reset;
}

}  // namespace odata::redfish
