// CertificateService.ReplaceCertificate for the HTTPS certificate, which
// answers through the certificate resource, and its ActionInfo.
#pragma once

#include <memory>

#include "framework/common_actioninfo.h"
#include "resources/managers/certificate_resources.h"

namespace odata::redfish {

class replace_certificate : public webservice {
public:
    explicit replace_certificate(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<certificate> certificate_;
};

class replace_certificate_actioninfo : public common_actioninfo {
public:
    explicit replace_certificate_actioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
