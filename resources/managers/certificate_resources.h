// The certificate service and the one certificate it manages: the HTTPS
// certificate that the web server serves.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

// The certificate chain that the web server serves, as PEM; answers 500
// when it cannot be read.
std::string served_certificate();

// The served chain and the properties of its first certificate; parsed
// again only when the served text changes. Answers 500 when it cannot be
// read or holds no certificate.
struct shown_certificate {
    std::string pem;
    boost::json::object properties;
};
const shown_certificate& served_certificate_shown();

class certificateservice : public redfish {
public:
    explicit certificateservice(request_context& context);
    int get(request_context& context) override;
};

class certificatelocations : public redfish {
public:
    explicit certificatelocations(request_context& context);
    int get(request_context& context) override;
};

class certificatecollection : public redfish {
public:
    explicit certificatecollection(request_context& context);
    int get(request_context& context) override;
};

class certificate : public redfish {
public:
    explicit certificate(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
