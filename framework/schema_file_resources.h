// /redfish/v1/JsonSchemas and its members, one per schema of the schema
// table that is published as JSON.
#pragma once

#include "framework/published_file.h"

namespace odata::redfish {

class jsonschemafilecollection : public redfish {
public:
    explicit jsonschemafilecollection(request_context& context);
    int get(request_context& context) override;
};

class json_file_common : public published_file {
public:
    explicit json_file_common(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
