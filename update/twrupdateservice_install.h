// TwrUpdateService.Install: flashes the waiting pushed image of one named
// target; answers Success through the update service once its task has
// started.
#pragma once

#include <memory>

#include "framework/webservice.h"
#include "update/updateservice.h"

namespace odata::redfish {

class twrupdateservice_install : public webservice {
public:
    explicit twrupdateservice_install(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<updateservice> service_;
};

}  // namespace odata::redfish
