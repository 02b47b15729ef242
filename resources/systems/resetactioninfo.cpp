#include "resources/systems/resetactioninfo.h"

#include <string_view>

#include "frontend/exception_http.h"
#include "resources/systems/reset_types.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

bool is_under_system(std::string_view path) {
    const std::string_view prefix = system_uri;
    return path.substr(0, prefix.size()) == prefix && path.size() > prefix.size() &&
           path[prefix.size()] == '/';
}

}  // namespace

resetactioninfo::resetactioninfo(request_context& context)
    : common_actioninfo(context, "Reset Action Info", system_reset_actioninfo_uri),
      for_system_(is_under_system(context.uri)) {}

int resetactioninfo::get(request_context& context) {
    if (!for_system_) throw_http(404);
    return common_actioninfo::get(context);
}

const actioninfo_parameters* resetactioninfo::parameters() const {
    static const actioninfo_parameters system_reset = {
        {"ResetType", true, "String", reset_type_names(), {}, {}, {}},
    };
    return &system_reset;
}

}  // namespace odata::redfish
