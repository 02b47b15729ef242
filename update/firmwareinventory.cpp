#include "update/firmwareinventory.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "update/firmware_components.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

std::string member_uri(const std::string& base, const std::string& id) { return base + "/" + id; }

std::string inventory_of(const request_context& context) {
    return context.uri.substr(0, context.uri.find_last_of('/'));
}

// The update-mode actions of a member of the OEM inventory.
boost::json::object oem_actions(const std::string& uri) {
    boost::json::object actions(answer_storage());
    for (const char* action : {"EnterUpdateMode", "Upload", "Update", "Cancel"}) {
        boost::json::object target({{"target", uri + "/Actions/TwrFirmwareInventory." + action}},
                                   answer_storage());
        if (std::string_view(action) == "Update")
            target["@Redfish.ActionInfo"] = uri + "/UpdateActionInfo";
        actions[std::string("#TwrFirmwareInventory.") + action] = std::move(target);
    }
    return actions;
}

}  // namespace

firmwareinventorycollection::firmwareinventorycollection(request_context& context)
    : firmwareinventorycollection(context, "Firmware Inventory Collection", firmware_inventory_uri,
                                  false) {}

firmwareinventorycollection::firmwareinventorycollection(request_context& context, std::string name,
                                                         std::string uri, bool oem)
    : redfish(context, "SoftwareInventoryCollection", "", std::move(name), std::move(uri)),
      oem_(oem) {}

int firmwareinventorycollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (const firmware_component& component : firmware_components()) {
        const std::string& id = oem_ ? component.oem_id : component.id;
        if (!id.empty()) members.push_back(member_uri(uri_, id));
    }
    set_members(members);
    return 0;
}

firmwareinventory::firmwareinventory(request_context& context)
    : firmwareinventory(context, context.uri, false) {}

firmwareinventory::firmwareinventory(request_context& context, std::string uri, bool oem)
    : redfish(context, "SoftwareInventory",
              std::string(schema_file_of("SoftwareInventory").version), "", std::move(uri)),
      oem_(oem) {}

int firmwareinventory::get(request_context& context) {
    const std::string id(context.segment_from_end(0).value_or(""));
    const std::optional<firmware_component> component =
        oem_ ? find_oem_firmware_component(id) : find_firmware_component(id);
    if (!component) throw_http(404);
    uri_ = member_uri(inventory_of(context), id);
    name_ = id + " Firmware";
    set_common_properties(id);
    set("Status",
        {{"State", component->updateable ? "Enabled" : "StandbyOffline"}, {"Health", "OK"}});
    set("Updateable", component->updateable);
    set("Version", component->version);
    if (oem_) set("Actions", {{"Oem", oem_actions(uri_)}});
    return 0;
}

twrfirmwareinventorycollection::twrfirmwareinventorycollection(request_context& context)
    : firmwareinventorycollection(context, "Firmware Inventory Collection",
                                  twr_firmware_inventory_uri, true) {}

twrfirmwareinventory::twrfirmwareinventory(request_context& context)
    : firmwareinventory(context, context.uri, true) {}

}  // namespace odata::redfish
