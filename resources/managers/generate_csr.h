// CertificateService.GenerateCSR for the HTTPS certificate: a new key pair,
// kept by the BMC until ReplaceCertificate brings its signed certificate,
// and the signing request for it; and the action's ActionInfo.
#pragma once

#include "framework/common_actioninfo.h"
#include "framework/webservice.h"

namespace odata::redfish {

class generate_csr : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

class generate_csr_actioninfo : public common_actioninfo {
public:
    explicit generate_csr_actioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
