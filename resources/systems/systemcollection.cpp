#include "resources/systems/systemcollection.h"

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {

systemcollection::systemcollection(request_context& context)
    : redfish(context, "ComputerSystemCollection", "", "Computer System Collection", systems_uri) {}

int systemcollection::get(request_context&) {
    if (!find_schema_file(entity_type_)) throw_http(503);
    set_common_properties();
    set("Description", "Computer System Collection");
    set_members({system_uri});
    return 0;
}

}  // namespace odata::redfish
