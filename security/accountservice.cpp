#include "security/accountservice.h"

#include <iostream>
#include <string_view>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libipmi_users.h"
#include "security/account_policy.h"
#include "security/account_slots.h"
#include "security/external_account_provider.h"
#include "security/role_resources.h"

namespace odata::redfish {
namespace {

constexpr const char* account_service_uri = "/redfish/v1/AccountService";

// Refused as read-only. The middle entry is one literal as it always was, so
// ServiceEnabled and MinPasswordLength on their own are not refused here.
constexpr std::string_view account_service_read_only[] = {
    "Status", "ServiceEnabledMinPasswordLength", "MaxPasswordLength"};

// Properties of the resource that a PATCH may name without effect.
constexpr std::string_view unchanged_properties[] = {
    "@odata.context", "@odata.etag",    "@odata.id",         "@odata.type", "Id",
    "Name",           "ServiceEnabled", "MinPasswordLength", "Accounts",    "Roles"};

struct lockout_property {
    std::string_view name;
    long max;
    long account_policy::*field;
};

constexpr lockout_property lockout_properties[] = {
    {"AccountLockoutThreshold", max_lockout_threshold, &account_policy::lockout_threshold},
    {"AccountLockoutDuration", max_lockout_seconds, &account_policy::lockout_duration},
    {"AccountLockoutCounterResetAfter", max_lockout_seconds, &account_policy::counter_reset_after},
};

const lockout_property* lockout_property_named(std::string_view name) {
    for (const lockout_property& property : lockout_properties)
        if (property.name == name) return &property;
    return nullptr;
}

// What a PATCH changes, read from the stored settings and then the request.
// The settings files stay locked from that read to the write, in one order.
struct account_service_patch {
    const settings_lock hold{&account_policy_file(),
                             &directory_settings_file(directory_service::ldap),
                             &directory_settings_file(directory_service::active_directory)};
    account_policy policy = read_account_policy();
    bool policy_changed = false;
    external_account_provider ldap{directory_service::ldap};
    external_account_provider active_directory{directory_service::active_directory};
    result_record result = general_error();

    void read(const std::string& name, const boost::json::value& value) {
        if (listed_in(account_service_read_only, name)) {
            add_property_message(result, "Base.1.10.PropertyNotWritable", name);
        } else if (const lockout_property* property = lockout_property_named(name)) {
            std::optional<long> accepted =
                require_integer_up_to(value, property->max, name, result);
            if (accepted) policy.*(property->field) = *accepted;
            policy_changed = true;
        } else if (name == "LDAP") {
            ldap.read_request(value, result);
        } else if (name == "ActiveDirectory") {
            active_directory.read_request(value, result);
        } else if (!listed_in(unchanged_properties, name)) {
            add_property_message(result, "Base.1.10.PropertyUnknown", name);
        }
    }

    // Every file is written or none.
    bool store() const {
        settings_batch batch;
        bool staged = hold.held() && (!policy_changed || stage_account_policy(policy, batch));
        for (const external_account_provider* provider : {&ldap, &active_directory})
            staged = staged && (!provider->requested() || provider->stage(batch));
        return staged && batch.commit();
    }
};

}  // namespace

accountservice::accountservice(request_context& context)
    : redfish(context, "AccountService", std::string(schema_file_of("AccountService").version),
              "Account Service", account_service_uri) {}

int accountservice::get(request_context&) {
    const account_policy policy = read_account_policy();
    set_common_properties();
    set("Status", {{"State", "Enabled"}, {"Health", "OK"}});
    set("ServiceEnabled", true);
    set("MinPasswordLength", min_password_length);
    set("MaxPasswordLength", max_password_length);
    set("AccountLockoutThreshold", policy.lockout_threshold);
    set("AccountLockoutDuration", policy.lockout_duration);
    set("AccountLockoutCounterResetAfter", policy.counter_reset_after);
    set("Accounts", link(accounts_uri));
    set("Roles", link(roles_uri));
    set("LDAP", external_account_provider(directory_service::ldap).to_json());
    set("ActiveDirectory",
        external_account_provider(directory_service::active_directory).to_json());
    return 0;
}

int accountservice::patch(request_context& context) {
    const boost::json::value body = context.body_json();
    account_service_patch patch;
    for (const auto& [name, value] : request_object(body)) patch.read(name, value);
    check_provider_switches(patch.ldap, patch.active_directory, patch.result);
    if (!patch.result.entries.empty()) throw_http_result(400, patch.result);
    if (!patch.store()) throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
