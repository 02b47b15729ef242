#include "resources/managers/ip_access_control.h"

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "platform/libweb.h"
#include "resources/managers/filter_rule_request.h"
#include "resources/managers/manager_settings_audit.h"
#include "resources/managers/manager_settings_uris.h"
#include "security/address_filter.h"

namespace odata::redfish {
namespace {

std::string rule_uri(int id) {
    return std::string(manager_filter_rules_uri) + "/" + std::to_string(id);
}

St_IpFilterConfig current_config() {
    St_IpFilterConfig config;
    if (PltIPFILTER_GetConfig(&config) == PLT_OK) return config;
    console_log("[ERROR] IPAccessControl: rules unreadable\n");
    throw_http_error(500, "Base.1.10.InternalError");
}

// A change that would refuse the caller's own next request is refused:
// nobody shuts themselves out by mistake.
void refuse_self_lockout(const St_IpFilterConfig& changed, const std::string& property,
                         const std::string& value) {
    if (client_passes(changed)) return;
    console_log("[IPAccessControl] change refused: it would refuse the caller's address\n");
    result_record result = general_error();
    add_message(result, "Base.1.10.PropertyValueIncorrect", {property, value}, {"/" + property});
    throw_http_result(400, result);
}

// The stored rules, or 404 when rule id is not one of them.
St_IpFilterConfig config_with_rule(int id) {
    St_IpFilterConfig config = current_config();
    if (id < 1 || id > IP_FILTER_RULE_COUNT || !config.rules[id - 1].used) throw_http(404);
    return config;
}

const char* action_name(const St_IpFilterRule& rule) {
    return rule.action == IP_FILTER_DENY ? "Deny" : "Allow";
}

std::string rule_text(const St_IpFilterRule& rule) {
    return std::string(action_name(rule)) + " " + ipv4_text(rule.first) + "-" +
           ipv4_text(rule.last);
}

void store_rule(int index, const St_IpFilterRule& rule) {
    if (PltIPFILTER_SetRule(index, &rule) != PLT_OK)
        throw_http_error(500, "Base.1.10.InternalError");
}

struct control_changes {
    std::optional<bool> enabled;
};

void read_enabled(const request_member& member, control_changes& changes, result_record& result) {
    changes.enabled = require_boolean(member.value, member.path, result);
}

constexpr patch_property<control_changes> control_properties[] = {
    {"IPAccessControlEnabled", read_enabled},
};

}  // namespace

ipaccesscontrol::ipaccesscontrol(request_context& context)
    : redfish(context, "TwrIPAccessControl",
              std::string(schema_file_of("TwrIPAccessControl").version), "IP Access Control",
              manager_ip_access_control_uri) {}

int ipaccesscontrol::get(request_context&) {
    const St_IpFilterConfig config = current_config();
    set_common_properties();
    set("Description", "Which client addresses may reach the BMC's web service");
    set("IPAccessControlEnabled", config.enabled != 0);
    set("MaxFilterRules", IP_FILTER_RULE_COUNT);
    set("FilterRules", link(manager_filter_rules_uri));
    return 0;
}

int ipaccesscontrol::patch(request_context& context) {
    const control_changes changes = read_patch_body(control_properties, context.body_json());
    St_IpFilterConfig config = current_config();
    config.enabled = *changes.enabled;
    refuse_self_lockout(config, "IPAccessControlEnabled", *changes.enabled ? "true" : "false");
    if (PltIPFILTER_SetEnabled(config.enabled) != PLT_OK)
        throw_http_error(500, "Base.1.10.InternalError");
    log_manager_setting_change(context.user_name,
                               config.enabled ? "IP access control on" : "IP access control off");
    write_status_line(204);
    return 0;
}

filterrulecollection::filterrulecollection(request_context& context)
    : redfish(context, "TwrFilterRuleCollection", "", "Filter Rule Collection",
              manager_filter_rules_uri) {}

int filterrulecollection::get(request_context&) {
    const St_IpFilterConfig config = current_config();
    set_common_properties();
    std::vector<std::string> members;
    for (int index = 0; index < IP_FILTER_RULE_COUNT; ++index)
        if (config.rules[index].used) members.push_back(rule_uri(index + 1));
    set_members(members);
    return 0;
}

int filterrulecollection::post(request_context& context) {
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const std::optional<St_IpFilterRule> rule =
        read_filter_rule(request_object(body), nullptr, result);
    refuse_if_reported(result);
    St_IpFilterConfig config = current_config();
    int free_slot = 0;
    while (free_slot < IP_FILTER_RULE_COUNT && config.rules[free_slot].used) ++free_slot;
    if (free_slot == IP_FILTER_RULE_COUNT)
        throw_http_error(400, "Base.1.10.CreateLimitReachedForResource");
    config.rules[free_slot] = *rule;
    refuse_self_lockout(config, "Action", action_name(*rule));
    const int index = PltIPFILTER_AddRule(&*rule);
    if (index == PLT_ERR_STATE) throw_http_error(400, "Base.1.10.CreateLimitReachedForResource");
    if (index < 0) throw_http_error(500, "Base.1.10.InternalError");
    log_manager_setting_change(context.user_name, "IP access rule " + std::to_string(index + 1) +
                                                      " added: " + rule_text(*rule));
    filterrule answer(context, index + 1);
    answer.get(context);
    for (const auto& property : answer.value()) set(property.key(), property.value());
    write_status_line(201);
    set_response_header(response_header::location, rule_uri(index + 1));
    return 0;
}

filterrule::filterrule(request_context& context) : filterrule(context, context.capture_number(0)) {}

filterrule::filterrule(request_context& context, int id)
    : redfish(context, "TwrFilterRule", std::string(schema_file_of("TwrFilterRule").version),
              "Filter Rule", rule_uri(id)),
      id_(id) {}

int filterrule::get(request_context&) {
    const St_IpFilterConfig config = config_with_rule(id_);
    const St_IpFilterRule& rule = config.rules[id_ - 1];
    set_common_properties();
    set("StartAddress", ipv4_text(rule.first));
    set("EndAddress", ipv4_text(rule.last));
    set("Action", action_name(rule));
    return 0;
}

int filterrule::patch(request_context& context) {
    St_IpFilterConfig config = config_with_rule(id_);
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const std::optional<St_IpFilterRule> rule =
        read_filter_rule(request_object(body), &config.rules[id_ - 1], result);
    refuse_if_reported(result);
    config.rules[id_ - 1] = *rule;
    refuse_self_lockout(config, "Action", action_name(*rule));
    store_rule(id_ - 1, *rule);
    log_manager_setting_change(
        context.user_name, "IP access rule " + std::to_string(id_) + " set: " + rule_text(*rule));
    write_status_line(204);
    return 0;
}

int filterrule::del(request_context& context) {
    St_IpFilterConfig config = config_with_rule(id_);
    config.rules[id_ - 1] = St_IpFilterRule{};
    refuse_self_lockout(config, "Id", std::to_string(id_));
    store_rule(id_ - 1, config.rules[id_ - 1]);
    log_manager_setting_change(context.user_name,
                               "IP access rule " + std::to_string(id_) + " deleted");
    write_status_line(200);
    set_body(render_result({"Success", "Successfully Completed Request.", {}}));
    return 0;
}

}  // namespace odata::redfish
