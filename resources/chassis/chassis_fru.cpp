#include "resources/chassis/chassis_fru.h"

#include <cstring>

#include "framework/fixed_text.h"
#include "platform/libfru.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/libweb.h"

namespace odata::redfish {
std::optional<chassis_fru> read_chassis_fru() {
    St_FRUInfo info{};
    if (ReadFRUInfo(FRU_BOARD_DEVICE, &info) != PLT_OK) {
        console_log("FRU parse fail\n");
        return std::nullopt;
    }
    chassis_fru fru;
    fru.chassis_type = info.chassis_type;
    fru.manufacturer = fixed_text(info.product_manufacturer);
    fru.model = fixed_text(info.product_name);
    fru.sku = fixed_text(info.product_sku);
    fru.serial_number = fixed_text(info.chassis_serial_number);
    fru.part_number = fixed_text(info.chassis_part_number);
    fru.asset_tag = fixed_text(info.product_asset_tag);
    fru.board_serial_number = fixed_text(info.board_serial_number);
    fru.board_id = info.board_id;
    // Twin nodes share the board's FRU; each node keeps its own numbers.
    if (GetQuillonType() != 0) {
        fru.serial_number = fixed_text(at_p_St_GlobalVar->node_serial_number);
        fru.part_number = fixed_text(at_p_St_GlobalVar->node_part_number);
    }
    return fru;
}

bool write_asset_tag(const std::string& asset_tag) {
    const int result = SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, asset_tag.c_str());
    if (result != PLT_OK) console_log("[Chassis] asset tag not written: %d\n", result);
    return result == PLT_OK;
}

}  // namespace odata::redfish
