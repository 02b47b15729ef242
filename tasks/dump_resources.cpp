#include "tasks/dump_resources.h"

#include "base/utc_time.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"
#include "resources/managers/action_parameters.h"
#include "tasks/dump_file.h"
#include "tasks/dump_job.h"
#include "tasks/dump_kinds.h"

namespace odata::redfish {
namespace {

boost::json::object actions(const dump_kind& dump) {
    const std::string type = std::string("#") + dump.action_type;
    boost::json::object found(answer_storage());
    if (dump.generated_by_itself)
        found[type + ".Generate"] = {{"target", dump_action_uri(dump, "Generate")}};
    found[type + ".Download"] = {{"target", dump_action_uri(dump, "Download")}};
    return found;
}

}  // namespace

dump_resource::dump_resource(request_context& context, int kind)
    : redfish(context, "TwrDump", std::string(schema_file_of("TwrDump").version),
              dump_kind_of(kind).id, dump_uri(dump_kind_of(kind))),
      kind_(kind) {}

int dump_resource::get(request_context&) {
    const dump_kind& dump = dump_kind_of(kind_);
    set_common_properties();
    DumpInfo info{};
    const bool present = DumpGetInfo(kind_, &info) == PLT_OK;
    set("Generating", DumpIsGenerating(kind_) != 0);
    set("FileName", present ? boost::json::value(info.file_name) : nullptr);
    set("SizeBytes", present ? boost::json::value(info.size) : nullptr);
    set("Created", present ? boost::json::value(platform::utc_timestamp(info.created)) : nullptr);
    set("Actions", actions(dump));
    return 0;
}

int dump_resource::del(request_context&) {
    const int removed = DumpDelete(kind_);
    if (removed == PLT_ERR_NOT_FOUND)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"TwrDump", dump_kind_of(kind_).id});
    if (removed != PLT_OK) {
        console_log("[ERROR] Dump: %s cannot be removed\n", dump_kind_of(kind_).id);
        throw_http_error(500, "Base.1.10.InternalError");
    }
    answer_success();
    return 0;
}

int dump_generate_action::post(request_context& context) {
    const dump_kind& dump = dump_kind_of(kind_);
    check_no_parameters(context, std::string(dump.action_type) + ".Generate");
    start_dump_task(kind_, dump.task_name, dump.operation);
    return 0;
}

int dump_download_action::post(request_context& context) {
    const dump_kind& dump = dump_kind_of(kind_);
    check_no_parameters(context, std::string(dump.action_type) + ".Download");
    answer_dump_file(kind_, "TwrDump", dump.id);
    return 0;
}

}  // namespace odata::redfish
