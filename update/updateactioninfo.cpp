#include "update/updateactioninfo.h"

#include "update/update_mode_actions.h"

namespace odata::redfish {

updateactioninfo::updateactioninfo(request_context& context)
    : common_actioninfo(context, "Update Action Info", context.uri) {}

int updateactioninfo::get(request_context& context) {
    // The member must exist: "<member>/UpdateActionInfo".
    inventory_component(context, 1);
    return common_actioninfo::get(context);
}

const actioninfo_parameters* updateactioninfo::parameters() const {
    static const actioninfo_parameters none;
    return &none;
}

}  // namespace odata::redfish
