#include "update/push_parameters.h"

#include <boost/json.hpp>

#include "platform/libfwupdate.h"
#include "platform/libweb.h"
#include "update/staged_components.h"

namespace odata::redfish {
namespace {

// Only the BIOS agent takes an image at the host's reset.
bool may_wait_for_reset(const staged_component& component) {
    return component.device == FW_DEVICE_BIOS;
}

const staged_component* find_target(const boost::json::value& target) {
    if (!target.is_string()) return nullptr;
    for (const staged_component& each : staged_components())
        if (each.target_uri && target.as_string() == each.target_uri) return &each;
    return nullptr;
}

const staged_component* find_only_target(const boost::json::value* targets) {
    const boost::json::array* list = targets ? targets->if_array() : nullptr;
    if (!list || list->size() != 1) return nullptr;
    return find_target(list->front());
}

struct apply_time_name {
    const char* name;
    push_apply_time apply_time;
};

constexpr apply_time_name apply_time_names[] = {
    {"Immediate", push_apply_time::immediate},
    {"OnReset", push_apply_time::on_reset},
    {"OnStartUpdateRequest", push_apply_time::on_start_update},
};

// Without an apply time the image is applied at once.
bool read_apply_time(const boost::json::object& parameters, push_apply_time& apply_time) {
    const boost::json::value* given = parameters.if_contains("@Redfish.OperationApplyTime");
    if (!given) return true;
    if (!given->is_string()) return false;
    for (const apply_time_name& each : apply_time_names) {
        if (given->as_string() != each.name) continue;
        apply_time = each.apply_time;
        return true;
    }
    return false;
}

}  // namespace

int push_target_device(const boost::json::value& target) {
    const staged_component* found = find_target(target);
    return found ? found->device : 0;
}

void add_push_error(result_record& result, const char* text) {
    add_message(result, "TWR.1.0.OemHttppushuriErrorMessage", {text});
}

result_record push_errors() { return {"OemHttpPushUriErrors", general_error_text, {}}; }

void read_push_parameters(const std::string& text, push_parameters& parameters,
                          result_record& result) {
    boost::system::error_code error;
    const boost::json::value parsed = boost::json::parse(text, error);
    if (error || !parsed.is_object()) {
        console_log("[ERROR] HttpPushUri can not find the OEM parameters.\n");
        add_push_error(result,
                       "The OEM parameter is not supported, please check the OEM parameters.");
        return;
    }
    const boost::json::object& object = parsed.as_object();
    if (!read_apply_time(object, parameters.apply_time)) {
        console_log("[ERROR] HttpPushUri can not find apply time.\n");
        add_push_error(result,
                       "ApplyTime value is not supported, please refer to HttpPushUriApplyTime.");
    }
    const staged_component* target = find_only_target(object.if_contains("Targets"));
    if (!target) {
        console_log("[ERROR] HttpPushUri Can not find Targets Value.\n");
        add_push_error(result,
                       "Target value is not supported, please refer to HttpPushUriTargets.");
        return;
    }
    parameters.device = target->device;
    if (parameters.apply_time == push_apply_time::on_reset && !may_wait_for_reset(*target)) {
        console_log("[ERROR] HttpPushUri can not find apply time.\n");
        add_push_error(result,
                       "ApplyTime value is not supported, please refer to HttpPushUriApplyTime.");
    }
}

}  // namespace odata::redfish
