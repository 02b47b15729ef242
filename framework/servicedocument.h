// The OData service document at /redfish/v1/odata.
#pragma once

#include <string>

#include "framework/plain_document.h"

namespace odata::redfish {

class servicedocument : public plain_document {
public:
    using plain_document::plain_document;
    int get(request_context& context) override;
};

// {"@odata.context": ..., "value": [{"name", "kind", "url"}, ...]}, built
// once per process.
const std::string& service_document_text();

}  // namespace odata::redfish
