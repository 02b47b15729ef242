#include "update/staged_update_request.h"

#include <algorithm>
#include <string_view>

#include "platform/libweb.h"
#include "update/push_parameters.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

// The simulated flash keeps the BMC's and the BIOS's settings; no option
// asks for anything else.
constexpr std::string_view preserve_options[] = {"PreserveConfiguration"};

bool valid_options(const boost::json::value* options) {
    if (!options) return true;
    const boost::json::array* list = options->if_array();
    return list && std::all_of(list->begin(), list->end(), [](const boost::json::value& option) {
               return option.is_string() &&
                      std::find(std::begin(preserve_options), std::end(preserve_options),
                                std::string_view(option.as_string())) != std::end(preserve_options);
           });
}

void report_unknown_members(const boost::json::object& body, const char* action,
                            std::initializer_list<std::string_view> known, result_record& result) {
    for (const auto& member : body) {
        if (std::find(known.begin(), known.end(), std::string_view(member.key())) == known.end())
            add_message(result, "Base.1.10.ActionParameterUnknown",
                        {action, std::string(member.key())});
    }
}

// The one target of Targets; 0 with unsupported_text reported otherwise.
int only_target(const boost::json::array& targets, const char* unsupported_text,
                result_record& result) {
    const int device = targets.size() == 1 ? push_target_device(targets.front()) : 0;
    if (device == 0) add_push_error(result, unsupported_text);
    return device;
}

constexpr const char* start_update_unsupported =
    "Target value is not supported, please refer to HttpPushUriTargets.";
constexpr const char* install_unsupported =
    "Target value is not supported, please refer to Install_Targets.";
constexpr const char* options_error = "Input option parameter error, please check the value.";

}  // namespace

void read_start_update(const boost::json::object& body, staged_update_request& request,
                       result_record& result) {
    report_unknown_members(body, "StartUpdate", {"Targets", "PreserveOptions"}, result);
    if (!valid_options(body.if_contains("PreserveOptions"))) {
        console_log("[ERROR] StartUpdate.PreserveOptions\n");
        add_push_error(result, options_error);
    }
    const boost::json::value* targets = body.if_contains("Targets");
    if (!targets) return;
    const boost::json::array* list = targets->if_array();
    if (!list) {
        add_push_error(result, start_update_unsupported);
        return;
    }
    request.device = only_target(*list, start_update_unsupported, result);
}

void read_install(const boost::json::object& body, staged_update_request& request,
                  result_record& result) {
    report_unknown_members(body, "TwrUpdateService.Install", {"Targets", "InstallOptions"}, result);
    const boost::json::value* targets = body.if_contains("Targets");
    const boost::json::array* list = targets ? targets->if_array() : nullptr;
    if (!list || list->size() != 1) {
        console_log("[ERROR] Install.Targets\n");
        add_push_error(result, "Input Targets parameter error, only support one target each time.");
    }
    if (!valid_options(body.if_contains("InstallOptions"))) {
        console_log("[ERROR] Install.InstallOptions\n");
        add_push_error(result, options_error);
    }
    if (list && list->size() == 1) request.device = only_target(*list, install_unsupported, result);
}

result_record install_errors() { return {"OemInstallErrors", general_error_text, {}}; }

}  // namespace odata::redfish
