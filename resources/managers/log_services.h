// The BMC's log services: the collection, the SEL service Log1 and its
// ClearLog action.
#pragma once

#include <memory>

#include "framework/redfish.h"

namespace odata::redfish {

class managers_logservicecollection : public redfish {
public:
    explicit managers_logservicecollection(request_context& context);
    int get(request_context& context) override;
};

class managers_logservices : public redfish {
public:
    explicit managers_logservices(request_context& context);
    int get(request_context& context) override;
};

class managers_logservice_clearlog : public webservice {
public:
    explicit managers_logservice_clearlog(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<managers_logservices> service_;
};

}  // namespace odata::redfish
