// The RoleCollection and its three predefined Roles.
#pragma once

#include <string>
#include <string_view>

#include "framework/redfish.h"

namespace odata::redfish {

constexpr const char* roles_uri = "/redfish/v1/AccountService/Roles";

// "/redfish/v1/AccountService/Roles/<RoleId>"
std::string role_uri(std::string_view role_id);

class rolecollection : public redfish {
public:
    explicit rolecollection(request_context& context);
    int get(request_context& context) override;
};

class role : public redfish {
public:
    explicit role(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
