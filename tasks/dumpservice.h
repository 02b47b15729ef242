// The Oem dump service: its resource, its dump collection, and the actions
// that create a dump of a given type and remove them all.
#pragma once

#include <memory>

#include "framework/common_actioninfo.h"
#include "framework/redfish.h"

namespace odata::redfish {

class dumpservice : public redfish {
public:
    explicit dumpservice(request_context& context);
    int get(request_context& context) override;
};

class dumpscollection : public redfish {
public:
    explicit dumpscollection(request_context& context);
    int get(request_context& context) override;
};

// {"DumpType": "<a dump's Id>"}: generates that dump as a task.
class dumpservice_createdump : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

class dumpservice_deleteall : public webservice {
public:
    explicit dumpservice_deleteall(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<dumpservice> service_;
};

class create_dump_actioninfo : public common_actioninfo {
public:
    explicit create_dump_actioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
