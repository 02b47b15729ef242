// The log services of the manager and of the system: the collection, the
// SEL service Log1, its ClearLog action and the system's acknowledgement of
// its alerts.
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

// An action of the log service, answered through the service.
class sel_log_action : public webservice {
public:
    void send_response() override;

protected:
    sel_log_action(request_context& context, const sel_log_place& place);
    std::shared_ptr<sel_log_service> service_;
};

class sel_log_clear : public sel_log_action {
public:
    using sel_log_action::sel_log_action;
    int post(request_context& context) override;
};

// Acknowledges the log's alerts: its health is OK again until the next one.
class sel_alerts_acknowledge : public sel_log_action {
public:
    using sel_log_action::sel_log_action;
    int post(request_context& context) override;
};

using managers_logservicecollection = sel_handler_at<sel_log_service_collection, manager_sel_log>;
using managers_logservices = sel_handler_at<sel_log_service, manager_sel_log>;
using managers_logservice_clearlog = sel_handler_at<sel_log_clear, manager_sel_log>;
using systems_logservicecollection = sel_handler_at<sel_log_service_collection, system_sel_log>;
using systems_logservices = sel_handler_at<sel_log_service, system_sel_log>;
using systems_logservice_clearlog = sel_handler_at<sel_log_clear, system_sel_log>;
using systems_logservice_clearack = sel_handler_at<sel_alerts_acknowledge, system_sel_log>;

}  // namespace odata::redfish
