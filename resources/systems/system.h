// The computer system /redfish/v1/Systems/1.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class system : public redfish {
public:
    explicit system(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;

private:
    void set_smbios_properties();
    void set_collection_links();
};

}  // namespace odata::redfish
