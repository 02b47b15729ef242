#include "update/twrupdateservice_install.h"

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libfwupdate.h"
#include "platform/libweb.h"
#include "update/firmware_update_checks.h"
#include "update/pushed_update_start.h"
#include "update/staged_update_request.h"
#include "update/update_uris.h"

namespace odata::redfish {

twrupdateservice_install::twrupdateservice_install(request_context& context)
    : webservice(context), service_(std::make_shared<updateservice>(context)) {}

int twrupdateservice_install::post(request_context& context) {
    check_no_evidence_dump();
    const boost::json::value body = context.body_json();
    staged_update_request request;
    result_record result = install_errors();
    read_install(request_object(body), request, result);
    if (!result.entries.empty()) throw_http_result(400, result);
    if (request.device == FW_DEVICE_BMC && fw_updating_in_progress())
        console_log("[FC80] Another BMC_FW request is in progress.\n");
    start_pushed_update(request.device, install_uri, install_errors());
    service_->answer_success();
    return 0;
}

void twrupdateservice_install::send_response() { service_->send_response(); }

}  // namespace odata::redfish
