#include "tasks/dumpservice.h"

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "platform/libdump.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"
#include "resources/managers/action_parameters.h"
#include "tasks/dump_job.h"
#include "tasks/dump_kinds.h"
#include "tasks/dump_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* create_action = "TwrDumpService.CreateDump";
constexpr const char* delete_all_action = "TwrDumpService.DeleteAll";
constexpr const char* dump_type = "DumpType";

const dump_kind* requested_kind(const request_context& context) {
    const dump_kind* found = nullptr;
    bool given = false;
    read_optional_parameters(
        context, create_action,
        [&](const std::string& name, const boost::json::value& value, result_record& result) {
            if (name != dump_type) return false;
            given = true;
            if (!value.is_string())
                add_parameter_message(result, "Base.1.10.ActionParameterValueTypeError",
                                      shown_value(value), name, create_action);
            else if (!(found = find_dump_kind(value.get_string())))
                add_parameter_message(result, "Base.1.10.ActionParameterValueNotInList",
                                      std::string(value.get_string()), name, create_action);
            return true;
        });
    if (!given) {
        result_record result = general_error();
        add_message(result, "Base.1.10.ActionParameterMissing", {create_action, dump_type});
        throw_http_result(400, result);
    }
    return found;
}

}  // namespace

dumpservice::dumpservice(request_context& context)
    : redfish(context, "TwrDumpService", std::string(schema_file_of("TwrDumpService").version),
              "Dump Service", dump_service_uri) {}

int dumpservice::get(request_context&) {
    set_common_properties();
    set("Description", "Crash, evidence and SMART dumps of the BMC and the host");
    set("Dumps", link(dumps_uri));
    set("StoreLimitBytes", DumpStoreLimit());
    set("Actions",
        {{"#TwrDumpService.CreateDump",
          {{"target", create_dump_uri}, {"@Redfish.ActionInfo", create_dump_actioninfo_uri}}},
         {"#TwrDumpService.DeleteAll", {{"target", delete_all_dumps_uri}}}});
    return 0;
}

dumpscollection::dumpscollection(request_context& context)
    : redfish(context, "TwrDumpCollection", "", "Dump Collection", dumps_uri) {}

int dumpscollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (const dump_kind& dump : dump_kinds()) members.push_back(dump_uri(dump));
    set_members(members);
    return 0;
}

int dumpservice_createdump::post(request_context& context) {
    const dump_kind* dump = requested_kind(context);
    start_dump_task(dump->kind, "Create Dump", "CreateDump");
    return 0;
}

dumpservice_deleteall::dumpservice_deleteall(request_context& context)
    : webservice(context), service_(std::make_shared<dumpservice>(context)) {}

int dumpservice_deleteall::post(request_context& context) {
    check_no_parameters(context, delete_all_action);
    if (DumpDeleteAll() != PLT_OK) {
        console_log("[ERROR] DumpService.DeleteAll: the dumps were not all removed\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    service_->answer_success();
    return 0;
}

void dumpservice_deleteall::send_response() { service_->send_response(); }

create_dump_actioninfo::create_dump_actioninfo(request_context& context)
    : common_actioninfo(context, "Create Dump Action Info", create_dump_actioninfo_uri) {}

const actioninfo_parameters* create_dump_actioninfo::parameters() const {
    static const actioninfo_parameters parameters = [] {
        std::vector<std::string_view> types;
        for (const dump_kind& dump : dump_kinds()) types.push_back(dump.id);
        return actioninfo_parameters{{dump_type, true, "String", types, {}, {}, {}}};
    }();
    return &parameters;
}

}  // namespace odata::redfish
