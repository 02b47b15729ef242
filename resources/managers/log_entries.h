// The entries of the SEL under a log service's Log1/Entries.
#pragma once

#include "framework/redfish.h"
#include "resources/managers/sel_entries.h"

namespace odata::redfish {

class sel_entry_collection : public redfish {
public:
    sel_entry_collection(request_context& context, const sel_log_place& place);
    int get(request_context& context) override;

private:
    const sel_log_place& place_;
};

class sel_entry_resource : public redfish {
public:
    sel_entry_resource(request_context& context, const sel_log_place& place);
    int get(request_context& context) override;

private:
    const sel_log_place& place_;
};

using managers_logentrycollection = sel_handler_at<sel_entry_collection, manager_sel_log>;
using managers_logentry = sel_handler_at<sel_entry_resource, manager_sel_log>;
using systems_logentrycollection = sel_handler_at<sel_entry_collection, system_sel_log>;
using systems_logentry = sel_handler_at<sel_entry_resource, system_sel_log>;

}  // namespace odata::redfish
