#include "resources/managers/managercollection.h"

#include "resources/managers/manager_uris.h"

namespace odata::redfish {

managercollection::managercollection(request_context& context)
    : redfish(context, "ManagerCollection", "", "Manager Collection", managers_uri) {}

int managercollection::get(request_context&) {
    set_common_properties();
    set_members({manager_uri});
    return 0;
}

}  // namespace odata::redfish
