#include "update/firmwareinventory.h"

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "update/firmware_components.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

std::string member_uri(const std::string& base, const std::string& id) { return base + "/" + id; }

std::string inventory_of(const request_context& context) {
    return context.uri.substr(0, context.uri.find_last_of('/'));
}

}  // namespace

firmwareinventorycollection::firmwareinventorycollection(request_context& context)
    : firmwareinventorycollection(context, "Firmware Inventory Collection", firmware_inventory_uri,
                                  false) {}

firmwareinventorycollection::firmwareinventorycollection(request_context& context, std::string name,
                                                         std::string uri, bool updateable_only)
    : redfish(context, "SoftwareInventoryCollection", "", std::move(name), std::move(uri)),
      updateable_only_(updateable_only) {}

int firmwareinventorycollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (const firmware_component& component : firmware_components())
        if (component.updateable || !updateable_only_)
            members.push_back(member_uri(uri_, component.id));
    set_members(members);
    return 0;
}

firmwareinventory::firmwareinventory(request_context& context)
    : firmwareinventory(context, context.uri, false) {}

firmwareinventory::firmwareinventory(request_context& context, std::string uri,
                                     bool updateable_only)
    : redfish(context, "SoftwareInventory",
              std::string(schema_file_of("SoftwareInventory").version), "", std::move(uri)),
      updateable_only_(updateable_only) {}

int firmwareinventory::get(request_context& context) {
    const std::optional<firmware_component> component =
        find_firmware_component(context.segments.back());
    if (!component || (updateable_only_ && !component->updateable)) throw_http(404);
    uri_ = member_uri(inventory_of(context), component->id);
    name_ = component->id + " Firmware";
    set_common_properties(component->id);
    set("Status",
        {{"State", component->updateable ? "Enabled" : "StandbyOffline"}, {"Health", "OK"}});
    set("Updateable", component->updateable);
    set("Version", component->version);
    return 0;
}

twrfirmwareinventorycollection::twrfirmwareinventorycollection(request_context& context)
    : firmwareinventorycollection(context, "Firmware Inventory Collection",
                                  twr_firmware_inventory_uri, true) {}

twrfirmwareinventory::twrfirmwareinventory(request_context& context)
    : firmwareinventory(context, context.uri, true) {}

}  // namespace odata::redfish
