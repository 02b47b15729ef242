// The log services of the manager and of the system: the collection, the
// SEL service Log1 and its ClearLog action.
#pragma once

#include <memory>

#include "framework/redfish.h"
#include "resources/managers/sel_entries.h"

namespace odata::redfish {

class sel_log_service_collection : public redfish {
public:
    sel_log_service_collection(request_context& context, const sel_log_place& place);
    int get(request_context& context) override;

private:
    const sel_log_place& place_;
};

class sel_log_service : public redfish {
public:
    sel_log_service(request_context& context, const sel_log_place& place);
    int get(request_context& context) override;

private:
    const sel_log_place& place_;
};

class sel_log_clear : public webservice {
public:
    sel_log_clear(request_context& context, const sel_log_place& place);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<sel_log_service> service_;
};

using managers_logservicecollection = sel_handler_at<sel_log_service_collection, manager_sel_log>;
using managers_logservices = sel_handler_at<sel_log_service, manager_sel_log>;
using managers_logservice_clearlog = sel_handler_at<sel_log_clear, manager_sel_log>;
using systems_logservicecollection = sel_handler_at<sel_log_service_collection, system_sel_log>;
using systems_logservices = sel_handler_at<sel_log_service, system_sel_log>;
using systems_logservice_clearlog = sel_handler_at<sel_log_clear, system_sel_log>;

}  // namespace odata::redfish
