// The version documents at /redfish and /restapi.
#pragma once

#include "framework/plain_document.h"

namespace odata::redfish {

// A one-member JSON object, written with the standard headers.
class version_document : public plain_document {
public:
    version_document(request_context& context, const char* member, const char* uri)
        : plain_document(context), member_(member), uri_(uri) {}
    int get(request_context& context) override;

protected:
    ~version_document() = default;

private:
    const char* member_;
    const char* uri_;
};

class redfish_ver : public version_document {
public:
    explicit redfish_ver(request_context& context)
        : version_document(context, "v1", "/redfish/v1/") {}
};

class restapi_ver : public version_document {
public:
    explicit restapi_ver(request_context& context)
        : version_document(context, "twri", "/restapi/twri/") {}
};

}  // namespace odata::redfish
