// The EventService.SubmitTestEvent action: the event goes to every enabled
// subscription; answers through the event service.
#pragma once

#include <memory>

#include "framework/webservice.h"
#include "tasks/eventservice.h"

namespace odata::redfish {

class eventservice_submittestevent : public webservice {
public:
    explicit eventservice_submittestevent(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<eventservice> service_;
};

}  // namespace odata::redfish
