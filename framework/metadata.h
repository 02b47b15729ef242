// The OData CSDL metadata document at /redfish/v1/$metadata: a reference to
// the CSDL file of every schema the service uses, and the service container.
#pragma once

#include <string>

#include "framework/plain_document.h"

namespace odata::redfish {

class metadata : public plain_document {
public:
    using plain_document::plain_document;
    int write_headers(unsigned length, const std::string& body) override;
    int get(request_context& context) override;
};

// The XML text, built once per process.
const std::string& metadata_text();

}  // namespace odata::redfish
