// The identify light: its state lives in the shared BMC state record.
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"

namespace {

int set_identify_light(uint8_t mode) {
    if (!at_p_St_GlobalVar) return PLT_ERR_STATE;
    if (mode != IDENTIFY_LIGHT_OFF && mode != IDENTIFY_LIGHT_BLINK && mode != IDENTIFY_LIGHT_ON)
        return PLT_ERR_ARGUMENT;
    at_p_St_GlobalVar->identify_blink = mode == IDENTIFY_LIGHT_BLINK ? 1 : 0;
    at_p_St_GlobalVar->identify_lit = mode == IDENTIFY_LIGHT_ON ? 1 : 0;
    return PLT_OK;
}

const St_BoardOperations board_operations = {set_identify_light};

}  // namespace

const St_BoardOperations* const board = &board_operations;

extern "C" int PltCHASSIS_Identify(uint8_t mode) {
    if (mode == IDENTIFY_LIGHT_ON) return PLT_ERR_ARGUMENT;
    return set_identify_light(mode);
}
