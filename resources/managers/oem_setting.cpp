#include "framework/schema_files.h"
#include "resources/managers/manager_uris.h"
#include "resources/managers/oem_settings.h"

namespace odata::redfish {

oem_setting::oem_setting(request_context& context, std::string_view type, std::string name,
                         std::string_view segment)
    : redfish(context, std::string(type), std::string(schema_file_of(type).version),
              std::move(name), std::string(manager_oem_uri) + "/" + std::string(segment)) {}

void oem_setting::set_heading(const char* description) {
    set_common_properties();
    set("Description", description);
}

}  // namespace odata::redfish
