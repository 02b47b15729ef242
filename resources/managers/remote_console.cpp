// MouseMode and IKVM: the remote console's pointer and its sessions.
#include "frontend/response_headers.h"
#include "platform/libkvm.h"
#include "resources/managers/oem_settings.h"
#include "resources/managers/setting_readers.h"

namespace odata::redfish {
namespace {

// By MOUSE_MODE_* and KVM_KEYBOARD_*.
constexpr std::string_view mouse_modes[] = {"Absolute", "Relative", "Single"};
constexpr std::string_view keyboard_layouts[] = {"English", "German", "French", "Japanese"};

struct mouse_changes {
    std::optional<int> mode;
};

constexpr patch_property<mouse_changes> mouse_properties[] = {
    {"Mode", read_choice<&mouse_changes::mode, mouse_modes>},
};

struct kvm_changes {
    std::optional<bool> local_monitor_off;
    std::optional<int> keyboard_layout;
    std::optional<int> timeout_minutes;
};

constexpr patch_property<kvm_changes> kvm_properties[] = {
    {"LocalMonitorOff", read_flag<&kvm_changes::local_monitor_off>},
    {"KeyboardLayout", read_choice<&kvm_changes::keyboard_layout, keyboard_layouts>},
    {"SessionTimeoutMinutes",
     read_integer<&kvm_changes::timeout_minutes, 1, KVM_TIMEOUT_MINUTES_MAX>},
};

St_KvmConfig kvm_config() {
    St_KvmConfig config{};
    require_platform_ok(PltKVM_GetConfig(&config), "IKVM");
    return config;
}

}  // namespace

mousemode::mousemode(request_context& context)
    : oem_setting(context, "TwrMouseMode", "Mouse Mode", "MouseMode") {}

int mousemode::get(request_context&) {
    const int mode = PltKVM_GetMouseMode();
    if (mode < 0 || mode >= MOUSE_MODE_COUNT) require_platform_ok(PLT_ERR_IO, "MouseMode");
    set_heading("How the remote console moves the host's pointer");
    set("Mode", mouse_modes[mode]);
    return 0;
}

int mousemode::patch(request_context& context) {
    const mouse_changes changes = read_settings_patch(mouse_properties, context.body_json());
    require_platform_ok(PltKVM_SetMouseMode(*changes.mode), "MouseMode");
    write_status_line(204);
    return 0;
}

ikvm::ikvm(request_context& context) : oem_setting(context, "TwrIKVM", "IKVM", "IKVM") {}

int ikvm::get(request_context&) {
    const St_KvmConfig config = kvm_config();
    set_heading("Sessions of the remote console (KVM over IP)");
    set("LocalMonitorOff", config.local_monitor_off != 0);
    set("KeyboardLayout", keyboard_layouts[config.keyboard_layout]);
    set("SessionTimeoutMinutes", config.timeout_minutes);
    return 0;
}

int ikvm::patch(request_context& context) {
    const kvm_changes changes = read_settings_patch(kvm_properties, context.body_json());
    St_KvmConfig config = kvm_config();
    if (changes.local_monitor_off) config.local_monitor_off = *changes.local_monitor_off;
    if (changes.keyboard_layout)
        config.keyboard_layout = static_cast<uint8_t>(*changes.keyboard_layout);
    if (changes.timeout_minutes)
        config.timeout_minutes = static_cast<uint16_t>(*changes.timeout_minutes);
    require_platform_ok(PltKVM_SetConfig(&config), "IKVM");
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
