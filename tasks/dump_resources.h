// The dumps of the dump service, one resource per type, with their Generate
// and Download actions; DELETE removes a dump.
#pragma once

#include "framework/redfish.h"
#include "platform/libdump.h"

namespace odata::redfish {

class dump_resource : public redfish {
public:
    dump_resource(request_context& context, int kind);
    int get(request_context& context) override;
    int del(request_context& context) override;

private:
    int kind_;
};

class dump_generate_action : public webservice {
public:
    dump_generate_action(request_context& context, int kind) : webservice(context), kind_(kind) {}
    int post(request_context& context) override;

private:
    int kind_;
};

class dump_download_action : public webservice {
public:
    dump_download_action(request_context& context, int kind) : webservice(context), kind_(kind) {}
    int post(request_context& context) override;

private:
    int kind_;
};

// A dump handler bound to one type, as the route table names it.
template <class Handler, int kind>
class dump_handler_at : public Handler {
public:
    explicit dump_handler_at(request_context& context) : Handler(context, kind) {}
};

using dump = dump_handler_at<dump_resource, DUMP_HOST_CRASH>;
using bmcevidencedump = dump_handler_at<dump_resource, DUMP_BMC_EVIDENCE>;
using biosevidencedump = dump_handler_at<dump_resource, DUMP_BIOS_EVIDENCE>;
using drivesmartdump = dump_handler_at<dump_resource, DUMP_DRIVE_SMART>;
using dump_download = dump_handler_at<dump_download_action, DUMP_HOST_CRASH>;
using bmcevidencedump_generate = dump_handler_at<dump_generate_action, DUMP_BMC_EVIDENCE>;
using bmcevidencedump_download = dump_handler_at<dump_download_action, DUMP_BMC_EVIDENCE>;
using biosevidencedump_generate = dump_handler_at<dump_generate_action, DUMP_BIOS_EVIDENCE>;
using biosevidencedump_download = dump_handler_at<dump_download_action, DUMP_BIOS_EVIDENCE>;
using drivesmart_generate = dump_handler_at<dump_generate_action, DUMP_DRIVE_SMART>;
using drivesmart_download = dump_handler_at<dump_download_action, DUMP_DRIVE_SMART>;

}  // namespace odata::redfish
