#include "update/firmwareinventory.h"

#include "frontend/exception_http.h"
#include "update/firmware_components.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

std::string member_uri(const std::string& id) {
    return std::string(firmware_inventory_uri) + "/" + id;
}

std::string member_id(const request_context& context) { return context.segments.back(); }

}  // namespace

firmwareinventorycollection::firmwareinventorycollection(request_context& context)
    : redfish(context, "SoftwareInventoryCollection", "", "Firmware Inventory Collection",
              firmware_inventory_uri) {}

int firmwareinventorycollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (const firmware_component& component : firmware_components())
        members.push_back(member_uri(component.id));
    set_members(members);
    return 0;
}

firmwareinventory::firmwareinventory(request_context& context)
    : redfish(context, "SoftwareInventory", "v1_2_3", "", member_uri(member_id(context))) {}

int firmwareinventory::get(request_context& context) {
    const std::optional<firmware_component> component = find_firmware_component(member_id(context));
    if (!component) throw_http(404);
    name_ = component->id + " Firmware";
    set_common_properties(component->id);
    set("Status",
        {{"State", component->updateable ? "Enabled" : "StandbyOffline"}, {"Health", "OK"}});
    set("Updateable", component->updateable);
    set("Version", component->version);
    return 0;
}

}  // namespace odata::redfish
