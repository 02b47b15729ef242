// The EventService: delivery retries, the SMTP server of e-mail alerts,
// the subscriptions and the test-event action.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class eventservice : public redfish {
public:
    explicit eventservice(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;

    // "Success" as the answer of an action on the service.
    void answer_success();
};

}  // namespace odata::redfish
