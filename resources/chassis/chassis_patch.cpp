#include "resources/chassis/chassis_patch.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "framework/property_checks.h"
#include "platform/libipmi.h"
#include "platform/plt_result.h"
#include "resources/chassis/chassis_fru.h"
#include "resources/chassis/indicator_led.h"
#include "resources/chassis/physical_security.h"

namespace odata::redfish {
namespace {

constexpr int event_chassis_change = 149;
// The longest text a FRU field holds, in Latin-1 characters.
constexpr size_t fru_text_max = 63;

using chassis_property = odata::redfish::patch_property<chassis_changes>;

constexpr std::string_view chassis_lockdown_patchable[] = {"IndicatorLED"};

// The FRU stores Latin-1: UTF-8 lead bytes 0xC2 and 0xC3 carry all of it
// above ASCII. Control characters are not stored.
bool is_fru_text(std::string_view text) {
    size_t characters = 0;
    for (size_t at = 0; at < text.size(); ++at, ++characters) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte == 0xC2 || byte == 0xC3) {
            if (++at == text.size()) return false;
            const auto continuation = static_cast<unsigned char>(text[at]);
            if (byte == 0xC2 && continuation < 0xA0) return false;  // C1 controls
        } else if (byte < 0x20 || byte >= 0x7F) {
            return false;
        }
    }
    return characters <= fru_text_max;
}

void report_type_error(const request_member& member, result_record& result) {
    add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(member.value),
                      member.path);
}

// A string of the value set, exactly; PropertyValueNotInList otherwise.
std::optional<std::string> read_listed(const request_member& member,
                                       const std::vector<std::string>& values,
                                       result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (!text) {
        report_type_error(member, result);
        return std::nullopt;
    }
    if (std::find(values.begin(), values.end(), std::string_view(*text)) == values.end()) {
        add_value_message(result, "Base.1.10.PropertyValueNotInList", std::string(*text),
                          member.path);
        return std::nullopt;
    }
    return std::string(*text);
}

// An empty tag clears it.
void read_asset_tag(const request_member& member, chassis_changes& changes, result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (!text) return report_type_error(member, result);
    if (!is_fru_text(*text))
        return add_value_message(result, "Base.1.10.PropertyValueFormatError", std::string(*text),
                                 member.path);
    changes.asset_tag = std::string(*text);
}

void read_indicator_led(const request_member& member, chassis_changes& changes,
                        result_record& result) {
    changes.indicator_led = read_listed(member, indicator_led_values(), result);
}

void read_intrusion_sensor(const request_member& member, chassis_changes& changes,
                           result_record& result) {
    if (read_listed(member, settable_intrusion_states(), result)) changes.rearm_intrusion = true;
}

// The policy is fixed: naming it changes nothing.
void read_rearm_policy(const request_member& member, chassis_changes&, result_record& result) {
    read_listed(member, settable_rearm_policies(), result);
}

const chassis_property physical_security_properties[] = {
    {"IntrusionSensor", read_intrusion_sensor},
    {"IntrusionSensorReArm", read_rearm_policy},
};

void read_physical_security(const request_member& member, chassis_changes& changes,
                            result_record& result) {
    for_each_member(member.value, member.path, result, [&](const request_member& security_member) {
        read_patch_property(physical_security_properties, security_member, changes, result);
    });
}

const chassis_property chassis_properties[] = {
    {"AssetTag", read_asset_tag},
    {"IndicatorLED", read_indicator_led},
    {"PhysicalSecurity", read_physical_security},
};

void record_change(const std::string& what) {
    const std::string text = "Chassis " + what;
    LibSaveSysEvtLog(event_chassis_change, 0, text.c_str());
}

}  // namespace

chassis_changes read_chassis_changes(const boost::json::object& body, bool lockdown,
                                     result_record& result) {
    chassis_changes changes;
    for (const auto& [name, value] : body) {
        const request_member member{std::string(name), value, std::string(name)};
        if (lockdown && has_patch_property(chassis_properties, member.name) &&
            !listed_in(chassis_lockdown_patchable, member.name)) {
            add_message(result, "TWR.1.0.OemSystemLockdownEnabledPatchValid",
                        {std::string(chassis_lockdown_patchable[0])}, {"/" + member.path});
            continue;
        }
        read_patch_property(chassis_properties, member, changes, result);
    }
    return changes;
}

std::string apply_chassis_changes(const chassis_changes& changes) {
    if (changes.asset_tag) {
        if (!write_asset_tag(*changes.asset_tag)) return "AssetTag";
        record_change("AssetTag set to '" + *changes.asset_tag + "'");
    }
    if (changes.rearm_intrusion) {
        if (!rearm_intrusion_sensor()) return "PhysicalSecurity/IntrusionSensor";
        record_change("intrusion sensor re-armed");
    }
    if (changes.indicator_led) {
        if (set_indicator_led(*changes.indicator_led) != PLT_OK) return "IndicatorLED";
        record_change("IndicatorLED set to " + *changes.indicator_led);
    }
    return {};
}

}  // namespace odata::redfish
