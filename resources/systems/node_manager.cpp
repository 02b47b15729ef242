#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libnodemanager.h"
#include "platform/libweb.h"
#include "resources/managers/action_parameters.h"
#include "resources/systems/twrnodemanager.h"

namespace odata::redfish {
namespace {

constexpr const char* node_manager_uri = "/redfish/v1/Systems/1/Oem/Tarnwright/NodeManager";
constexpr const char* clear_target_uri =
    "/redfish/v1/Systems/1/Oem/Tarnwright/NodeManager/Actions/TwrNodeManager.ClearAllPolicies";

void require_node_manager() {
    if (!at_p_St_GlobalVar->node_manager_present)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"TwrNodeManager", "NodeManager"});
}

boost::json::object policy_object(const St_NmPolicy& policy) {
    return {{"PolicyId", policy.policy_id},
            {"PolicyEnabled", policy.enabled != 0},
            {"PowerLimitWatts", policy.power_limit_watts},
            {"CorrectionTimeMs", policy.correction_time_ms},
            {"ReportingPeriodSeconds", policy.reporting_period_s}};
}

}  // namespace

twrnodemanager::twrnodemanager(request_context& context)
    : redfish(context, "TwrNodeManager", std::string(schema_file_of("TwrNodeManager").version),
              "Node Manager", node_manager_uri) {}

int twrnodemanager::get(request_context&) {
    require_node_manager();
    St_NmPolicy policies[NM_MAX_POLICIES];
    const int count = NmGetPolicies(policies);
    if (count < 0) throw_http_error(500, "Base.1.10.InternalError");
    boost::json::array listed;
    for (int i = 0; i < count; ++i) listed.push_back(policy_object(policies[i]));
    set_common_properties();
    set("Description", "Power policies of the host's node manager");
    set("MaxPolicies", static_cast<int>(NM_MAX_POLICIES));
    set("Policies", std::move(listed));
    set("Actions", {{"#TwrNodeManager.ClearAllPolicies", {{"target", clear_target_uri}}}});
    return 0;
}

twrnodemanager_clearallpolicies::twrnodemanager_clearallpolicies(request_context& context)
    : webservice(context), node_manager_(std::make_shared<twrnodemanager>(context)) {}

int twrnodemanager_clearallpolicies::post(request_context& context) {
    require_node_manager();
    check_no_parameters(context, "ClearAllPolicies");
    if (NmClearAllPolicies() != PLT_OK) {
        console_log("[ERROR] NodeManager.ClearAllPolicies: the policies were not cleared\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    node_manager_->answer_success();
    return 0;
}

void twrnodemanager_clearallpolicies::send_response() { node_manager_->send_response(); }

}  // namespace odata::redfish
