// The web server's HTTPS certificate as the update service's Oem SSLCert
// resource, and its upload of a new certificate and key.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class sslcert : public redfish {
public:
    explicit sslcert(request_context& context);
    int get(request_context& context) override;
};

// A multipart form with the parts "Certificate" (PEM, the server's
// certificate first, then its chain) and "PrivateKey" (PEM, unencrypted).
class sslcert_upload : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
