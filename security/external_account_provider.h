// One external account provider of the AccountService, LDAP or
// ActiveDirectory: its object in the resource, and a PATCH of that object
// over the stored settings.
#pragma once

#include <boost/json.hpp>
#include <optional>

#include "framework/property_checks.h"
#include "frontend/message.h"
#include "security/directory_settings.h"

namespace odata::redfish {

class external_account_provider {
public:
    // Reads the stored settings.
    explicit external_account_provider(directory_service service);

    boost::json::object to_json() const;

    // Validates the request's object and applies it to the settings held
    // here; result collects the messages of refused properties.
    void read_request(const boost::json::value& value, result_record& result);

    directory_service service() const { return service_; }
    bool requested() const { return requested_; }
    // ServiceEnabled as the request sets it, if it does.
    std::optional<bool> requested_enabled() const { return requested_enabled_; }
    // Enabled now, and the request does not disable it.
    bool stays_enabled() const;

    // Puts the settings held here into batch; false when they cannot be written.
    bool stage(settings_batch& batch) const;

private:
    void read_member(const request_member& member, result_record& result);
    void read_authentication(const request_member& member, result_record& result);
    void read_search_settings(const request_member& member, result_record& result);

    directory_service service_;
    directory_settings settings_;
    bool requested_ = false;
    std::optional<bool> requested_enabled_;
};

// Only one external authentication service (LDAP, ActiveDirectory, RADIUS)
// may be enabled, and none may be disabled while a user it authenticated
// holds a session.
void check_provider_switches(const external_account_provider& ldap,
                             const external_account_provider& active_directory,
                             result_record& result);

}  // namespace odata::redfish
