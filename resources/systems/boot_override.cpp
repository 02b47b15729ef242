#include "resources/systems/boot_override.h"

#include <algorithm>

#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr uint8_t efi_boot_bit = 0x20;

// The rows of both tables up to their sizes or their first nameless row.
const std::vector<const St_BootFlagEntry*>& boot_rows() {
    static const std::vector<const St_BootFlagEntry*> rows = [] {
        std::vector<const St_BootFlagEntry*> list;
        for (int i = 0; i < ChassisBootTableSize && boot_flags[i].name; ++i)
            list.push_back(&boot_flags[i]);
        for (int i = 0; i < ChassisBootTableExtSize && boot_flags_ext[i].name; ++i)
            list.push_back(&boot_flags_ext[i]);
        return list;
    }();
    return rows;
}

bool is_no_override_row(const St_BootFlagEntry& row) { return &row == &boot_flags[0]; }

}  // namespace

const std::vector<byte1_setting>& override_enabled_settings() {
    static const std::vector<byte1_setting> settings = {
        {"Disabled", 0x7F, 0x00},
        {"Once", 0xBF, 0x80},
        {"Continuous", 0xFF, 0xC0},
    };
    return settings;
}

const std::vector<byte1_setting>& override_mode_settings() {
    static const std::vector<byte1_setting> settings = {
        {"Legacy", static_cast<uint8_t>(~efi_boot_bit), 0x00},
        {"UEFI", 0xFF, efi_boot_bit},
    };
    return settings;
}

const byte1_setting* find_setting(const std::vector<byte1_setting>& settings,
                                  std::string_view name) {
    auto found =
        std::find_if(settings.begin(), settings.end(),
                     [name](const byte1_setting& setting) { return setting.name == name; });
    return found == settings.end() ? nullptr : &*found;
}

std::string_view setting_name(const std::vector<byte1_setting>& settings, uint8_t byte1) {
    auto held = std::find_if(
        settings.begin(), settings.end(),
        [byte1](const byte1_setting& setting) { return apply_setting(setting, byte1) == byte1; });
    return held == settings.end() ? std::string_view() : held->name;
}

uint8_t apply_setting(const byte1_setting& setting, uint8_t byte1) {
    return static_cast<uint8_t>((byte1 & setting.keep_mask) | setting.set_bits);
}

const std::vector<std::string_view>& boot_source_names() {
    static const std::vector<std::string_view> names = [] {
        std::vector<std::string_view> list;
        for (const St_BootFlagEntry* row : boot_rows()) list.emplace_back(row->name);
        return list;
    }();
    return names;
}

const St_BootFlagEntry* find_boot_source(std::string_view name) {
    const auto& rows = boot_rows();
    auto found = std::find_if(rows.begin(), rows.end(),
                              [name](const St_BootFlagEntry* row) { return row->name == name; });
    return found == rows.end() ? nullptr : *found;
}

std::string_view boot_source_name(uint8_t byte2) {
    const uint8_t selector = byte2 & BOOT_DEVICE_SELECTOR_MASK;
    const auto& rows = boot_rows();
    if (selector == 0) return rows.empty() ? std::string_view() : rows.front()->name;
    auto found = std::find_if(rows.begin(), rows.end(), [selector](const St_BootFlagEntry* row) {
        return !is_no_override_row(*row) && (row->byte2 & BOOT_DEVICE_SELECTOR_MASK) == selector;
    });
    return found == rows.end() ? std::string_view() : (*found)->name;
}

void apply_boot_source(const St_BootFlagEntry& row, uint8_t (&bytes)[2]) {
    if (is_no_override_row(row)) {
        bytes[0] &= row.byte1;
        bytes[1] &= row.byte2;
    } else {
        bytes[0] = row.byte1;
        bytes[1] = row.byte2;
    }
}

std::string shown_override_target(const uint8_t (&bytes)[2], bool boot_next_pending,
                                  bool has_http_boot_uri) {
    std::string target(boot_source_name(bytes[1]));
    if (boot_next_pending) target = uefi_boot_next_target;
    if ((bytes[0] & efi_boot_bit) && has_http_boot_uri) target = uefi_http_target;
    if (target.empty()) console_log("[ERROR] ComputerSystem.BootSource::%s\n", target.c_str());
    return target;
}

}  // namespace odata::redfish
