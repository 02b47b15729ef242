#include "update/simpleupdateactioninfo.h"

#include "update/update_uris.h"

namespace odata::redfish {

simpleupdateactioninfo::simpleupdateactioninfo(request_context& context)
    : common_actioninfo(context, "Simple Update Action Info", simple_update_actioninfo_uri) {}

const actioninfo_parameters* simpleupdateactioninfo::parameters() const {
    static const actioninfo_parameters simple_update = {
        {"ImageURI", true, "String", {}, {}, {}, {}},
        {"TransferProtocol", false, "String", {"HTTP", "HTTPS", "FTP"}, {}, {}, {}},
        {"Targets", false, "StringArray", {bmc_target_uri, bios_target_uri}, {}, {}, {}},
        {"Username", false, "String", {}, {}, {}, {}},
        {"Password", false, "String", {}, {}, {}, {}},
    };
    return &simple_update;
}

}  // namespace odata::redfish
