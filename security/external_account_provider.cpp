#include "security/external_account_provider.h"

#include "framework/property_checks.h"
#include "frontend/answer_storage.h"
#include "platform/libdirectory.h"
#include "security/directory_validation.h"
#include "security/session_store.h"

namespace odata::redfish {
namespace {

constexpr const char* radius_name = "Radius";

template <class T>
void assign_if(std::optional<T> accepted, T& target) {
    if (accepted) target = std::move(*accepted);
}

boost::json::array to_array(const std::vector<std::string>& texts) {
    return boost::json::array(texts.begin(), texts.end(), answer_storage());
}

boost::json::array mappings_json(const std::vector<role_mapping>& mappings) {
    boost::json::array array(answer_storage());
    for (const role_mapping& mapping : mappings) {
        boost::json::object entry(answer_storage());
        if (!mapping.remote_user.empty()) entry["RemoteUser"] = mapping.remote_user;
        if (!mapping.remote_group.empty()) entry["RemoteGroup"] = mapping.remote_group;
        entry["LocalRole"] = mapping.local_role;
        array.push_back(std::move(entry));
    }
    return array;
}

bool enabled_now(directory_service service) {
    return (service == directory_service::ldap ? UtilGetLdapEnable() : UtilGetNewADEnable()) != 0;
}

bool user_logged_in_through(directory_service service) {
    const uint8_t source =
        service == directory_service::ldap ? SESSION_SOURCE_LDAP : SESSION_SOURCE_AD;
    for (int id : session_ids()) {
        std::optional<St_RedfishSession> session = find_session(id);
        if (session && session->source == source) return true;
    }
    return false;
}

void check_switch(const external_account_provider& provider, const external_account_provider& other,
                  result_record& result) {
    const std::string name(directory_name(provider.service()));
    const std::string related = "/" + name + "/ServiceEnabled";
    if (provider.requested_enabled() == true) {
        const std::string running = other.stays_enabled()
                                        ? std::string(directory_name(other.service()))
                                    : UtilGetRadiusEnable() ? radius_name
                                                            : "";
        if (!running.empty())
            add_message(result, "TWR.1.0.OemOtherAuthenticationServiceIsRunning", {running, name},
                        {related});
    } else if (provider.requested_enabled() == false && enabled_now(provider.service()) &&
               user_logged_in_through(provider.service())) {
        add_message(result, "TWR.1.0.OemUserNotToDisabledServiceWhenUserLogined", {name},
                    {related});
    }
}

}  // namespace

external_account_provider::external_account_provider(directory_service service)
    : service_(service), settings_(read_directory_settings(service)) {}

boost::json::object external_account_provider::to_json() const {
    boost::json::object provider(answer_storage());
    provider["ServiceEnabled"] = settings_.enabled;
    provider["ServiceAddresses"] = to_array(settings_.service_addresses);
    provider["Authentication"] = {{"Username", settings_.username},
                                  {"Password", nullptr},
                                  {"Token", nullptr},
                                  {"KerberosKeytab", nullptr}};
    provider["RemoteRoleMapping"] = mappings_json(settings_.role_mappings);
    if (service_ == directory_service::ldap) {
        provider["LDAPService"] = {
            {"SearchSettings",
             {{"BaseDistinguishedNames", to_array(settings_.base_distinguished_names)},
              {"UsernameAttribute", settings_.username_attribute},
              {"GroupNameAttribute", settings_.groupname_attribute},
              {"GroupsAttribute", settings_.groups_attribute}}}};
    }
    return provider;
}

void external_account_provider::read_request(const boost::json::value& value,
                                             result_record& result) {
    requested_ = true;
    for_each_member(value, std::string(directory_name(service_)), result,
                    [&](const request_member& member) { read_member(member, result); });
}

void external_account_provider::read_member(const request_member& member, result_record& result) {
    if (member.name == "ServiceEnabled") {
        requested_enabled_ = require_boolean(member.value, member.path, result);
        assign_if(requested_enabled_, settings_.enabled);
    } else if (member.name == "ServiceAddresses") {
        assign_if(validate_service_addresses(member.value, member.path, result),
                  settings_.service_addresses);
    } else if (member.name == "Authentication") {
        for_each_member(member.value, member.path, result,
                        [&](const request_member& inner) { read_authentication(inner, result); });
    } else if (member.name == "RemoteRoleMapping") {
        assign_if(
            validate_role_mappings(member.value, settings_.role_mappings, member.path, result),
            settings_.role_mappings);
    } else if (member.name == "LDAPService" && service_ == directory_service::ldap) {
        for_each_member(member.value, member.path, result, [&](const request_member& inner) {
            if (inner.name == "SearchSettings") {
                for_each_member(
                    inner.value, inner.path, result,
                    [&](const request_member& setting) { read_search_settings(setting, result); });
            } else {
                unknown_property::in_patch().report(result, inner.path);
            }
        });
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

void external_account_provider::read_authentication(const request_member& member,
                                                    result_record& result) {
    if (member.name == "Username") {
        assign_if(validate_directory_text(member.value, member.path, result), settings_.username);
    } else if (member.name == "Password") {
        assign_if(validate_directory_text(member.value, member.path, result, true),
                  settings_.password);
    } else if (member.name == "Token" || member.name == "KerberosKeytab") {
        validate_directory_text(member.value, member.path, result, true);
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

void external_account_provider::read_search_settings(const request_member& member,
                                                     result_record& result) {
    if (member.name == "BaseDistinguishedNames") {
        assign_if(validate_directory_texts(member.value, member.path, result),
                  settings_.base_distinguished_names);
    } else if (member.name == "UsernameAttribute") {
        assign_if(validate_directory_text(member.value, member.path, result),
                  settings_.username_attribute);
    } else if (member.name == "GroupNameAttribute") {
        assign_if(validate_directory_text(member.value, member.path, result),
                  settings_.groupname_attribute);
    } else if (member.name == "GroupsAttribute") {
        assign_if(validate_directory_text(member.value, member.path, result),
                  settings_.groups_attribute);
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

bool external_account_provider::stays_enabled() const {
    return enabled_now(service_) && requested_enabled_ != false;
}

bool external_account_provider::stage(settings_batch& batch) const {
    return stage_directory_settings(service_, settings_, batch);
}

void check_provider_switches(const external_account_provider& ldap,
                             const external_account_provider& active_directory,
                             result_record& result) {
    if (ldap.requested_enabled() == true && active_directory.requested_enabled() == true) {
        add_message(result, "TWR.1.0.OemOnlyOneAuthenticationServiceCanBeEnabled");
        return;
    }
    check_switch(ldap, active_directory, result);
    check_switch(active_directory, ldap, result);
}

}  // namespace odata::redfish
