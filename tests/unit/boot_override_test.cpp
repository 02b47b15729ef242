#include "resources/systems/boot_override.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace odata::redfish;

namespace {

std::string enabled_of(uint8_t byte1) {
    return std::string(setting_name(override_enabled_settings(), byte1));
}
std::string mode_of(uint8_t byte1) {
    return std::string(setting_name(override_mode_settings(), byte1));
}

uint8_t with_setting(const std::vector<byte1_setting>& settings, const char* name, uint8_t byte1) {
    const byte1_setting* setting = find_setting(settings, name);
    EXPECT_NE(setting, nullptr) << name;
    return setting ? apply_setting(*setting, byte1) : byte1;
}

// The name shown for bytes, and what was logged while finding it.
std::pair<std::string, std::string> shown_and_logged(const uint8_t (&bytes)[2], bool boot_next,
                                                     bool http) {
    testing::internal::CaptureStderr();
    std::string shown = shown_override_target(bytes, boot_next, http);
    return {shown, testing::internal::GetCapturedStderr()};
}

}  // namespace

TEST(BootOverrideDecoding, Byte1GivesEnabledAndMode) {
    EXPECT_EQ(enabled_of(0x7F), "Disabled");
    EXPECT_EQ(enabled_of(0x00), "Disabled");
    EXPECT_EQ(enabled_of(0xE0), "Continuous");
    EXPECT_EQ(mode_of(0xE0), "UEFI");
    EXPECT_EQ(enabled_of(0xA0), "Once");
    EXPECT_EQ(mode_of(0xA0), "UEFI");
    EXPECT_EQ(enabled_of(0xC0), "Continuous");
    EXPECT_EQ(mode_of(0xC0), "Legacy");
    EXPECT_EQ(enabled_of(0x80), "Once");
    EXPECT_EQ(mode_of(0x80), "Legacy");
}

TEST(BootOverrideDecoding, SelectorGivesTheTableName) {
    EXPECT_EQ(boot_source_name(0x00), "None");
    EXPECT_EQ(boot_source_name(0xC3), "None");  // bits outside the selector are ignored
    EXPECT_EQ(boot_source_name(0x04), "Pxe");
    EXPECT_EQ(boot_source_name(0x3C), "Usb");
    EXPECT_EQ(boot_source_name(0x2C), "RemoteDrive");  // extension table
    for (std::string_view name : boot_source_names()) {
        uint8_t bytes[2] = {0x00, 0x00};
        apply_boot_source(*find_boot_source(name), bytes);
        EXPECT_EQ(boot_source_name(bytes[1]), name);
    }
}

TEST(BootOverrideDecoding, UnknownSelectorIsEmptyAndLogged) {
    EXPECT_EQ(boot_source_name(0x0C), "");
    const uint8_t bytes[2] = {0xA0, 0x0C};
    auto [shown, logged] = shown_and_logged(bytes, false, false);
    EXPECT_EQ(shown, "");
    EXPECT_EQ(logged, "[ERROR] ComputerSystem.BootSource::\n");
}

TEST(BootOverrideDecoding, PendingBootNextAndUefiHttpBootOverrideTheTable) {
    const uint8_t uefi_pxe[2] = {0xA0, 0x04};
    const uint8_t legacy_pxe[2] = {0x80, 0x04};
    const uint8_t uefi_unknown[2] = {0xA0, 0x0C};
    EXPECT_EQ(shown_and_logged(uefi_pxe, false, false).first, "Pxe");
    EXPECT_EQ(shown_and_logged(uefi_pxe, true, false).first, "UefiBootNext");
    EXPECT_EQ(shown_and_logged(uefi_pxe, true, true).first, "UefiHttp");
    EXPECT_EQ(shown_and_logged(legacy_pxe, false, true).first, "Pxe");
    EXPECT_EQ(shown_and_logged(legacy_pxe, true, true).first, "UefiBootNext");
    auto [shown, logged] = shown_and_logged(uefi_unknown, false, true);
    EXPECT_EQ(shown, "UefiHttp");
    EXPECT_EQ(logged, "");
}

TEST(BootOverrideEncoding, FirstRowClearsTheSelectorOnly) {
    uint8_t bytes[2] = {0xE0, 0xC7};
    apply_boot_source(*find_boot_source("None"), bytes);
    EXPECT_EQ(bytes[0], 0xE0);
    EXPECT_EQ(bytes[1], 0xC3);
}

TEST(BootOverrideEncoding, OtherRowsSetBothBytes) {
    uint8_t bytes[2] = {0x40, 0xC3};
    apply_boot_source(*find_boot_source("Pxe"), bytes);
    EXPECT_EQ(bytes[0], 0xA0);
    EXPECT_EQ(bytes[1], 0x04);
    apply_boot_source(*find_boot_source("RemoteDrive"), bytes);
    EXPECT_EQ(bytes[0], 0xA0);
    EXPECT_EQ(bytes[1], 0x2C);
}

TEST(BootOverrideEncoding, ModeAndEnabledChangeOnlyTheirBits) {
    EXPECT_EQ(with_setting(override_mode_settings(), "Legacy", 0xE0), 0xC0);
    EXPECT_EQ(with_setting(override_mode_settings(), "UEFI", 0x80), 0xA0);
    EXPECT_EQ(with_setting(override_mode_settings(), "UEFI", 0x1F), 0x3F);
    EXPECT_EQ(with_setting(override_enabled_settings(), "Disabled", 0xE0), 0x60);
    EXPECT_EQ(with_setting(override_enabled_settings(), "Once", 0xE0), 0xA0);
    EXPECT_EQ(with_setting(override_enabled_settings(), "Continuous", 0x20), 0xE0);
    for (uint8_t byte1 : std::initializer_list<uint8_t>{0x00, 0x5F, 0xA0, 0xFF}) {
        for (const byte1_setting& setting : override_enabled_settings())
            EXPECT_EQ(enabled_of(apply_setting(setting, byte1)), setting.name);
    }
}

TEST(BootOverrideVocabulary, NamesAreExactAndCoverBothTablesInOrder) {
    EXPECT_EQ(boot_source_names(),
              (std::vector<std::string_view>{"None", "Pxe", "Hdd", "Diags", "Cd", "BiosSetup",
                                             "Usb", "RemoteDrive"}));
    EXPECT_EQ(find_boot_source("pxe"), nullptr);
    EXPECT_EQ(find_boot_source("Pxe "), nullptr);
    EXPECT_EQ(find_boot_source("UefiHttp"), nullptr);
    EXPECT_EQ(find_setting(override_enabled_settings(), "once"), nullptr);
    EXPECT_EQ(find_setting(override_mode_settings(), "Uefi"), nullptr);
}
