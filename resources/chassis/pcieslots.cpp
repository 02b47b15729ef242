#include "resources/chassis/pcieslots.h"

#include "framework/schema_files.h"
#include "framework/status_object.h"
#include "frontend/answer_storage.h"
#include "platform/libipmi_sensors.h"
#include "resources/chassis/pcie_inventory.h"

namespace odata::redfish {
namespace {

constexpr const char* pcie_slots_uri = "/redfish/v1/Chassis/1/PCIeSlots";
// The other slots of the board are riser slots for full-length cards.
constexpr const char* riser_slot_type = "FullLength";

boost::json::object slot_member(const St_PcieSlot& slot) {
    boost::json::object member({{"PCIeType", pcie_type(slot.generation)},
                                {"Lanes", slot.lanes},
                                {"SlotType", slot.ocp ? "OCP3Small" : riser_slot_type}},
                               answer_storage());
    const std::optional<St_PcieDevice> device = pcie_device_in_slot(slot.slot);
    if (!device) {
        member["Status"] = {{"State", "Absent"}};
        return member;
    }
    member["Status"] = status_object(SENSOR_HEALTH_OK);
    member["Links"] = {{"PCIeDevice", link_array(pcie_device_uri(*device))}};
    return member;
}

}  // namespace

pcieslots::pcieslots(request_context& context)
    : redfish(context, "PCIeSlots", std::string(schema_file_of("PCIeSlots").version), "PCIe Slots",
              pcie_slots_uri) {}

int pcieslots::get(request_context&) {
    set_common_properties();
    boost::json::array slots(answer_storage());
    for (int index = 0; index < PcieGetSlotCount(); ++index) {
        St_PcieSlot slot{};
        if (PcieGetSlot(index, &slot) == PLT_OK) slots.push_back(slot_member(slot));
    }
    set("Slots", std::move(slots));
    return 0;
}

}  // namespace odata::redfish
