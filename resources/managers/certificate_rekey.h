// Certificate.Rekey and Certificate.Renew of the HTTPS certificate: a
// signing request for the same subject, with a new key pair (kept by the
// BMC until ReplaceCertificate brings its certificate) or with the key the
// web server serves with; and the Rekey ActionInfo.
#pragma once

#include "framework/common_actioninfo.h"
#include "framework/webservice.h"

namespace odata::redfish {

class certificate_rekey : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

class certificate_renew : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

class rekeyactioninfo : public common_actioninfo {
public:
    explicit rekeyactioninfo(request_context& context);

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
