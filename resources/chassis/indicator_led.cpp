#include "resources/chassis/indicator_led.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"

namespace odata::redfish {
namespace {

constexpr const char* lit = "Lit";
constexpr const char* blinking = "Blinking";
constexpr const char* off = "Off";

struct indicator_led_entry {
    const char* value;
    uint8_t identify_state;  // 1 only while this service makes it blink
    int (*apply)();
};

const indicator_led_entry indicator_led_table[] = {
    {lit, 0, [] { return board->SetIdentifyLight(IDENTIFY_LIGHT_ON); }},
    {blinking, 1, [] { return PltCHASSIS_Identify(IDENTIFY_LIGHT_BLINK); }},
    {off, 0, [] { return PltCHASSIS_Identify(IDENTIFY_LIGHT_OFF); }},
};

const indicator_led_entry* find_entry(const std::string& value) {
    auto found =
        std::find_if(std::begin(indicator_led_table), std::end(indicator_led_table),
                     [&value](const indicator_led_entry& entry) { return value == entry.value; });
    return found == std::end(indicator_led_table) ? nullptr : found;
}

}  // namespace

const std::vector<std::string>& indicator_led_values() {
    static const std::vector<std::string> values = [] {
        std::vector<std::string> names;
        for (const auto& entry : indicator_led_table) names.emplace_back(entry.value);
        return names;
    }();
    return values;
}

bool is_indicator_led_value(const std::string& value) { return find_entry(value) != nullptr; }

const char* indicator_led_state() {
    const St_GlobalVar* state = at_p_St_GlobalVar;
    if (!state) return off;
    if (state->identify_state == 1 || state->identify_blink != 0) return blinking;
    return state->identify_lit != 0 ? lit : off;
}

int set_indicator_led(const std::string& value) {
    const indicator_led_entry* entry = find_entry(value);
    if (!entry) return PLT_ERR_ARGUMENT;
    if (!at_p_St_GlobalVar) return PLT_ERR_STATE;
    int result = entry->apply();
    if (result == PLT_OK) at_p_St_GlobalVar->identify_state = entry->identify_state;
    return result;
}

}  // namespace odata::redfish
