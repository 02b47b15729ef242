// The simulated BMC's stores behind the manager's Oem settings.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <string>

#include "platform/libdirectory.h"
#include "platform/libfan.h"
#include "platform/libipmi_chassis.h"
#include "platform/libipmi_power.h"
#include "platform/libipmi_sensors.h"
#include "platform/libkvm.h"
#include "platform/liblan.h"
#include "platform/libsnoop.h"
#include "platform/sim/post_codes.h"
#include "platform/sim/radius_client.h"
#include "platform/sim/sdr_repository.h"
#include "sim_root_fixture.h"

namespace {

using ManagerDeviceSettingsStore = sim_testing::sim_root;

St_RadiusConfig radius_with(const char* server, bool enabled) {
    St_RadiusConfig config{};
    std::strcpy(config.server, server);
    config.enabled = enabled;
    config.port = 1812;
    config.timeout_seconds = 5;
    return config;
}

int store_radius(const char* server, bool enabled, const char* secret) {
    const St_RadiusConfig config = radius_with(server, enabled);
    return PltRADIUS_SetConfig(&config, secret);
}

TEST_F(ManagerDeviceSettingsStore, RadiusSecretIsStoredOwnerOnlyAndNeverReadBack) {
    const char* secret = "Shared-S3cret";
    EXPECT_EQ(store_radius("", true, secret), PLT_ERR_ARGUMENT);
    EXPECT_EQ(store_radius("radius.example.com", true, nullptr), PLT_ERR_ARGUMENT);
    for (const char* bad : {"", "two words", "line\nbreak", "0123456789012345678901234567890123"})
        EXPECT_EQ(store_radius("radius.example.com", false, bad), PLT_ERR_ARGUMENT) << bad;
    St_RadiusConfig out_of_range = radius_with("radius.example.com", false);
    out_of_range.timeout_seconds = RADIUS_TIMEOUT_MAX + 1;
    EXPECT_EQ(PltRADIUS_SetConfig(&out_of_range, nullptr), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilGetRadiusEnable(), 0);

    ASSERT_EQ(store_radius("radius.example.com", true, secret), PLT_OK);
    EXPECT_EQ(UtilGetRadiusEnable(), 1);
    struct stat status {};
    ASSERT_EQ(::stat(platform::radius_settings_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    // A change without a secret keeps the stored one.
    ASSERT_EQ(store_radius("192.0.2.10", true, nullptr), PLT_OK);
    St_RadiusConfig read{};
    ASSERT_EQ(PltRADIUS_GetConfig(&read), PLT_OK);
    EXPECT_EQ(std::string(read.server), "192.0.2.10");
    EXPECT_EQ(read.secret_set, 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&read), sizeof read).find(secret),
              std::string::npos);
    EXPECT_NE(sim_testing::file_text(platform::radius_settings_file()).find(secret),
              std::string::npos);
}

TEST_F(ManagerDeviceSettingsStore, ChoicesOutsideTheirRangeAreRefusedAndReadAsShipped) {
    EXPECT_EQ(PltCHASSIS_SetRestorePolicy(POWER_RESTORE_ALWAYS_ON + 1), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PltKVM_SetMouseMode(-1), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PltFAN_SetMode(FAN_MODE_COUNT), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PltIPMI_SetRakpRequired(2), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PltPSU_SetPowerLimit(100000, POWER_LIMIT_NO_ACTION), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PltPSU_SetPowerLimit(500, 7), PLT_ERR_ARGUMENT);
    St_KvmConfig kvm{0, KVM_KEYBOARD_US, 0};
    EXPECT_EQ(PltKVM_SetConfig(&kvm), PLT_ERR_ARGUMENT);

    ASSERT_EQ(PltCHASSIS_SetRestorePolicy(POWER_RESTORE_LAST_STATE), PLT_OK);
    EXPECT_EQ(PltCHASSIS_GetRestorePolicy(), POWER_RESTORE_LAST_STATE);
    // A value no program of the BMC writes reads as the BMC shipped.
    sim_testing::write_text(path("/nv/bmc/power_restore.ini"), "[Power]\nRestorePolicy=9\n");
    sim_testing::write_text(path("/nv/bmc/mouse.ini"), "[Mouse]\nMode=junk\n");
    sim_testing::write_text(path("/nv/bmc/kvm.ini"), "[KVM]\nTimeoutMinutes=100000\n");
    EXPECT_EQ(PltCHASSIS_GetRestorePolicy(), POWER_RESTORE_ALWAYS_OFF);
    EXPECT_EQ(PltKVM_GetMouseMode(), MOUSE_MODE_ABSOLUTE);
    ASSERT_EQ(PltKVM_GetConfig(&kvm), PLT_OK);
    EXPECT_EQ(kvm.timeout_minutes, 30);
}

uint8_t fan_raw() {
    uint8_t raw = 0;
    UtilGetSensorReading(platform::find_sensor_by_name("FAN1")->sensor_number, &raw);
    return raw;
}

TEST_F(ManagerDeviceSettingsStore, TheFanModeSettlesTheFans) {
    const uint8_t standard = fan_raw();
    ASSERT_EQ(PltFAN_SetMode(FAN_MODE_FULL_SPEED), PLT_OK);
    EXPECT_EQ(PltFAN_GetTargetDuty(), 100);
    EXPECT_GT(fan_raw(), standard);
    ASSERT_EQ(PltFAN_SetMode(FAN_MODE_OPTIMAL), PLT_OK);
    EXPECT_LT(fan_raw(), standard);
    ASSERT_EQ(PltFAN_SetMode(FAN_MODE_STANDARD), PLT_OK);
    EXPECT_EQ(fan_raw(), standard);
}

TEST_F(ManagerDeviceSettingsStore, PostCodesKeepTheNewestAndSkipDamage) {
    std::vector<uint8_t> many;
    for (int code = 0; code < POST_CODE_HISTORY + 10; ++code)
        many.push_back(static_cast<uint8_t>(code));
    ASSERT_TRUE(platform::add_post_codes(many));
    St_PostCodes codes{};
    ASSERT_EQ(PltSNOOP_GetPostCodes(&codes), PLT_OK);
    ASSERT_EQ(codes.count, POST_CODE_HISTORY);
    EXPECT_EQ(codes.codes[0], 10);
    EXPECT_EQ(codes.codes[POST_CODE_HISTORY - 1], POST_CODE_HISTORY + 9);

    sim_testing::write_text(platform::post_codes_file(), "[PostCodes]\nCodes=01 XYZ 1FF A2 0g\n");
    ASSERT_EQ(PltSNOOP_GetPostCodes(&codes), PLT_OK);
    ASSERT_EQ(codes.count, 2);
    EXPECT_EQ(codes.codes[1], 0xA2);
}

}  // namespace
