// The manager's Oem settings resources under
// /redfish/v1/Managers/1/Oem/Tarnwright: each reads and changes one area of
// the BMC's settings through the platform.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

// A resource <manager_oem_uri>/<segment> of the Oem type "Twr<segment>".
class oem_setting : public redfish {
protected:
    oem_setting(request_context& context, std::string_view type, std::string name,
                std::string_view segment);
    ~oem_setting() = default;
    // The common properties and the description.
    void set_heading(const char* description);
};

// Power restore policy and power capping.
class smartpower : public oem_setting {
public:
    explicit smartpower(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

// The RADIUS client: a directory of logins while enabled. Its shared secret
// is write-only.
class radius : public oem_setting {
public:
    explicit radius(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

// How the remote console moves the host's pointer.
class mousemode : public oem_setting {
public:
    explicit mousemode(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

// The remote console's session settings.
class ikvm : public oem_setting {
public:
    explicit ikvm(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

// Whether IPMI over LAN sessions must authenticate through RAKP.
class rakp : public oem_setting {
public:
    explicit rakp(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

// The BIOS POST codes the BMC snooped: read-only.
class snooping : public oem_setting {
public:
    explicit snooping(request_context& context);
    int get(request_context& context) override;
};

// The fan control mode, and the duty it sets.
class fanmode : public oem_setting {
public:
    explicit fanmode(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
