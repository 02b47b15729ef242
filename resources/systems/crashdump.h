// The system's crash-dump log service: the host's on-demand and telemetry
// crash dumps as log entries whose AdditionalDataURI answers the file,
// collected as tasks, and cleared together. Served while the host supports
// crash dumps.
#pragma once

#include <memory>

#include "framework/redfish.h"
#include "platform/libdump.h"

namespace odata::redfish {

class crashdump_logservice : public redfish {
public:
    explicit crashdump_logservice(request_context& context);
    int get(request_context& context) override;
};

class crashdump_logservice_clearlog : public webservice {
public:
    explicit crashdump_logservice_clearlog(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<crashdump_logservice> service_;
};

class crashdumpcollection : public redfish {
public:
    explicit crashdumpcollection(request_context& context);
    int get(request_context& context) override;
};

// Entries/OnDemand and Entries/Telemetry; 404 while there is no such dump.
class crashdump_logentry : public redfish {
public:
    explicit crashdump_logentry(request_context& context);
    int get(request_context& context) override;
};

// The file of an entry, at its AdditionalDataURI.
class crashdump_attachment : public webservice {
public:
    using webservice::webservice;
    int get(request_context& context) override;
};

class crashdump_collect : public webservice {
public:
    crashdump_collect(request_context& context, int kind) : webservice(context), kind_(kind) {}
    int post(request_context& context) override;

private:
    int kind_;
};

template <int kind>
class crashdump_collect_at : public crashdump_collect {
public:
    explicit crashdump_collect_at(request_context& context) : crashdump_collect(context, kind) {}
};

using crashdump_ondemand = crashdump_collect_at<DUMP_CRASHDUMP_ON_DEMAND>;
using crashdump_telemetry = crashdump_collect_at<DUMP_CRASHDUMP_TELEMETRY>;

}  // namespace odata::redfish
