#include "resources/systems/resetactioninfo.h"

#include <string_view>

#include "resources/managers/manager_reset.h"
#include "resources/managers/manager_uris.h"
#include "resources/systems/reset_types.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

bool is_under_manager(std::string_view path) {
    const std::string_view prefix = manager_uri;
    return path.substr(0, prefix.size()) == prefix && path.size() > prefix.size() &&
           path[prefix.size()] == '/';
}

}  // namespace

resetactioninfo::resetactioninfo(request_context& context)
    : common_actioninfo(context, "Reset Action Info",
                        is_under_manager(context.uri) ? manager_reset_actioninfo_uri
                                                      : system_reset_actioninfo_uri),
      for_manager_(is_under_manager(context.uri)) {}

const actioninfo_parameters* resetactioninfo::parameters() const {
    static const actioninfo_parameters system_reset = {
        {"ResetType", true, "String", reset_type_names(), {}, {}, {}},
    };
    static const actioninfo_parameters manager_reset = {
        {"ResetType", true, "String", manager_reset_type_names(), {}, {}, {}},
    };
    return for_manager_ ? &manager_reset : &system_reset;
}

}  // namespace odata::redfish
