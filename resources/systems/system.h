// The computer system /redfish/v1/Systems/1.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class system : public redfish {
public:
    explicit system(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;

    // "Status: 200 OK" and the "Success" message, for the system's changes
    // and actions; send-response completes the answer.
    void answer_success();

private:
    void set_smbios_properties();
    void set_collection_links();
};

}  // namespace odata::redfish
