#include "resources/systems/system_patch.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include "framework/property_checks.h"
#include "platform/libbios.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "resources/chassis/indicator_led.h"
#include "resources/systems/bios_boot_settings.h"

namespace odata::redfish {
namespace {

using system_property = odata::redfish::patch_property<system_changes>;

constexpr std::string_view system_lockdown_patchable[] = {"IndicatorLED"};

// Messages about a value name the property itself; the related property
// gives its path.
void report_value(result_record& result, const char* message_id, const request_member& member) {
    add_message(result, message_id, {shown_value(member.value), member.name}, {"/" + member.path});
}

const boost::json::string* require_nonempty_text(const request_member& member,
                                                 result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (!text || text->empty()) {
        report_value(result, "Base.1.10.PropertyValueTypeError", member);
        return nullptr;
    }
    return text;
}

// The member of a value set that a non-empty string names exactly.
template <class find_function>
auto read_choice(const request_member& member, result_record& result, find_function find) {
    const boost::json::string* text = require_nonempty_text(member, result);
    auto found = text ? find(std::string_view(*text)) : nullptr;
    if (text && !found) report_value(result, "Base.1.10.PropertyValueFormatError", member);
    return found;
}

bool is_listed(const std::vector<std::string>& options, const std::string& name) {
    return std::find(options.begin(), options.end(), name) != options.end();
}

void read_indicator_led(const request_member& member, system_changes& changes,
                        result_record& result) {
    const std::string* value = read_choice(member, result, [](std::string_view text) {
        const auto& values = indicator_led_values();
        auto found = std::find(values.begin(), values.end(), text);
        return found == values.end() ? nullptr : &*found;
    });
    if (value) changes.indicator_led = *value;
}

void read_target(const request_member& member, system_changes& changes, result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (text && *text == uefi_boot_next_target) {
        changes.uefi_boot_next = true;
        return;
    }
    changes.boot_source = read_choice(member, result, find_boot_source);
}

void read_mode(const request_member& member, system_changes& changes, result_record& result) {
    changes.override_mode = read_choice(member, result, [](std::string_view text) {
        return find_setting(override_mode_settings(), text);
    });
}

void read_enabled(const request_member& member, system_changes& changes, result_record& result) {
    changes.override_enabled = read_choice(member, result, [](std::string_view text) {
        return find_setting(override_enabled_settings(), text);
    });
}

// An empty URI is allowed: it stops HTTP boot.
void read_http_boot_uri(const request_member& member, system_changes& changes,
                        result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (!text) return report_value(result, "Base.1.10.PropertyValueTypeError", member);
    if (!text->empty() && !is_http_boot_uri(*text))
        return report_value(result, "Base.1.10.PropertyValueFormatError", member);
    changes.http_boot_uri = std::string(*text);
}

void read_boot_next(const request_member& member, system_changes& changes, result_record& result) {
    const boost::json::string* text = require_nonempty_text(member, result);
    if (!text) return;
    if (!is_listed(read_bios_boot_options().order, std::string(*text)))
        return report_value(result, "Base.1.10.PropertyValueFormatError", member);
    changes.boot_next = std::string(*text);
}

// The options the BIOS reported, each at most once; only the HII daemon
// takes a boot order.
void read_boot_order(const request_member& member, system_changes& changes, result_record& result) {
    const boost::json::array* array = member.value.if_array();
    const bool all_text =
        array && std::all_of(array->begin(), array->end(),
                             [](const boost::json::value& item) { return item.is_string(); });
    if (!all_text) return report_value(result, "Base.1.10.PropertyValueTypeError", member);
    const std::vector<std::string> options = read_bios_boot_options().order;
    std::vector<std::string> order;
    std::set<std::string> seen;
    for (const boost::json::value& item : *array) {
        order.emplace_back(item.get_string());
        if (!is_listed(options, order.back()) || !seen.insert(order.back()).second)
            return report_value(result, "Base.1.10.PropertyValueFormatError", member);
    }
    if (order.empty()) return report_value(result, "Base.1.10.PropertyValueFormatError", member);
    if (!isNewHIISupport())
        return add_message(result, "Base.1.10.PropertyNotWritable", {member.name},
                           {"/" + member.path});
    changes.boot_order = std::move(order);
}

const system_property boot_properties[] = {
    {"BootSourceOverrideTarget", read_target},
    {"BootSourceOverrideEnabled", read_enabled},
    {"BootSourceOverrideMode", read_mode},
    {"HttpBootUri", read_http_boot_uri},
    {"BootNext", read_boot_next},
    {"BootOrder", read_boot_order},
};

void read_boot(const request_member& member, system_changes& changes, result_record& result) {
    for_each_member(member.value, member.path, result, [&](const request_member& boot_member) {
        read_patch_property(boot_properties, boot_member, changes, result);
    });
}

const system_property system_properties[] = {
    {"IndicatorLED", read_indicator_led},
    {"Boot", read_boot},
};

bool push_boot_order(const std::vector<std::string>& order) {
    std::vector<const char*> names;
    for (const std::string& name : order) names.push_back(name.c_str());
    return UtilHiiSetBootOrder(names.data(), static_cast<int>(names.size())) == PLT_OK;
}

// The HII daemon takes a BootNext as the head of the next boot's order.
bool apply_boot_next(const std::string& option) {
    if (!write_boot_next_request(option)) return false;
    if (!isNewHIISupport()) return true;
    std::vector<std::string> order{option};
    for (std::string& name : read_bios_boot_options().order)
        if (name != option) order.push_back(std::move(name));
    return push_boot_order(order);
}

bool applied(bool done, const char* property) {
    if (!done) console_log("[ComputerSystem] %s not applied\n", property);
    return done;
}

// Stops at the first change that the platform refuses.
bool apply_in_order(const system_changes& changes) {
    if (changes.indicator_led &&
        !applied(set_indicator_led(*changes.indicator_led) == PLT_OK, "IndicatorLED"))
        return false;
    uint8_t(&bytes)[2] = at_p_St_GlobalVar->boot_flags;
    if (changes.boot_source) apply_boot_source(*changes.boot_source, bytes);
    if (changes.override_mode) bytes[0] = apply_setting(*changes.override_mode, bytes[0]);
    if (changes.override_enabled) bytes[0] = apply_setting(*changes.override_enabled, bytes[0]);
    if (changes.http_boot_uri && !write_http_boot_request(*changes.http_boot_uri)) {
        console_log("write config failed\n");
        return false;
    }
    if (changes.boot_next && !applied(apply_boot_next(*changes.boot_next), "BootNext"))
        return false;
    return !changes.boot_order || applied(push_boot_order(*changes.boot_order), "BootOrder");
}

}  // namespace

system_changes read_system_changes(const boost::json::object& body, bool lockdown,
                                   result_record& result) {
    system_changes changes;
    for (const auto& [name, value] : body) {
        const request_member member{std::string(name), value, std::string(name)};
        const bool locked = lockdown && !listed_in(system_lockdown_patchable, member.name);
        if (locked && has_patch_property(system_properties, member.name)) {
            add_message(result, "TWR.1.0.OemSystemLockdownEnabledPatchValid",
                        {std::string(system_lockdown_patchable[0])}, {"/" + member.path});
            continue;
        }
        read_patch_property(system_properties, member, changes, result);
    }
    if (changes.uefi_boot_next && !changes.boot_next)
        add_message(result, "Base.1.10.PropertyMissing", {"BootNext"}, {"/Boot/BootNext"});
    return changes;
}

bool apply_system_changes(const system_changes& changes) {
    const std::string led_before = indicator_led_state();
    uint8_t(&bytes)[2] = at_p_St_GlobalVar->boot_flags;
    const uint8_t flags_before[2] = {bytes[0], bytes[1]};
    const bios_requests requests_before = read_bios_requests();
    const bool order_pushed = changes.boot_order || (changes.boot_next && isNewHIISupport());
    const std::vector<std::string> order_before =
        order_pushed ? read_bios_boot_options().order : std::vector<std::string>();
    if (apply_in_order(changes)) return true;
    // A change that fails leaves nothing of the PATCH behind.
    if (changes.indicator_led) set_indicator_led(led_before);
    std::copy(std::begin(flags_before), std::end(flags_before), std::begin(bytes));
    restore_bios_requests(requests_before);
    if (order_pushed && !order_before.empty()) push_boot_order(order_before);
    return false;
}

}  // namespace odata::redfish
