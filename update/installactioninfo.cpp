#include "update/installactioninfo.h"

#include "update/update_uris.h"

namespace odata::redfish {

installactioninfo::installactioninfo(request_context& context)
    : common_actioninfo(context, "Install Action Info", install_actioninfo_uri) {}

// Install flashes one image that a push left waiting, kept for a later start.
const actioninfo_parameters* installactioninfo::parameters() const {
    static const actioninfo_parameters install = {
        {"Targets", true, "StringArray", {bmc_target_uri, bios_target_uri}, {}, {}, {}},
        {"InstallOptions", false, "StringArray", {"PreserveConfiguration"}, {}, {}, {}},
    };
    return &install;
}

}  // namespace odata::redfish
