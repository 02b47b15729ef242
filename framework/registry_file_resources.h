// /redfish/v1/Registries and its members, one per registry of the registry
// table.
#pragma once

#include "framework/published_file.h"

namespace odata::redfish {

class messageregistryfilecollection : public redfish {
public:
    explicit messageregistryfilecollection(request_context& context);
    int get(request_context& context) override;
};

class messageregisteryfile : public published_file {
public:
    explicit messageregisteryfile(request_context& context);
    int get(request_context& context) override;
};

}  // namespace odata::redfish
