// BIOS configuration hand-over, storage controller counts and the bios,
// boot and storage tool areas.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hardware_root_fixture.h"
#include "platform/libbios.h"
#include "platform/libstorage.h"
#include "platform/sim/bios_config.h"

namespace {

using HostConfig = sim_testing::hardware_root;

TEST_F(HostConfig, BootOrderGoesToTheHiiDaemonWhenSupported) {
    const char* order[] = {"Boot0003", "Boot0001"};
    EXPECT_EQ(isNewHIISupport(), 1);
    ASSERT_EQ(UtilHiiSetBootOrder(order, 2), PLT_OK);
    EXPECT_EQ(platform::pending_boot_order(), (std::vector<std::string>{"Boot0003", "Boot0001"}));

    const char* bad[] = {"Boot,0003"};
    EXPECT_EQ(UtilHiiSetBootOrder(bad, 1), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilHiiSetBootOrder(nullptr, 1), PLT_ERR_ARGUMENT);
    ASSERT_EQ(run({"bios", "hii", "off"}), bmcsim::exit_ok);
    EXPECT_EQ(isNewHIISupport(), 0);
    EXPECT_EQ(UtilHiiSetBootOrder(order, 1), PLT_ERR_STATE);
    EXPECT_EQ(platform::pending_boot_order().size(), 2u);
}

TEST_F(HostConfig, ConfigFilesAreWrittenUnderTheRootOnly) {
    ASSERT_EQ(WriteConfigFile("/tmp/user_save_to_bios.json", "{\"BootURI\":\"\"}"), PLT_OK);
    EXPECT_EQ(sim_testing::file_text(path("/tmp/user_save_to_bios.json")), "{\"BootURI\":\"\"}");
    EXPECT_EQ(WriteConfigFile("tmp/relative.json", "x"), PLT_ERR_ARGUMENT);
    EXPECT_EQ(WriteConfigFile("/tmp/../../escape.json", "x"), PLT_ERR_ARGUMENT);
    EXPECT_EQ(WriteConfigFile("/tmp/a..b.json", "x"), PLT_OK);
}

TEST_F(HostConfig, BiosUpdateModeIsFlagValue2) {
    ASSERT_EQ(run({"bios", "update-mode", "on"}), bmcsim::exit_ok);
    EXPECT_EQ(at_p_St_GlobalVar->fw_update_flags, 2u);
    ASSERT_EQ(run({"bios", "show"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str(),
              "version=2.1.0\nupdate_mode=on\nhii=on\nboot_order=\nadmin_password=none\n"
              "secure_boot_keys=PK:1,KEK:1,db:2,dbx:1\nsecure_boot_mode=UserMode\n");
    ASSERT_EQ(run({"bios", "update-mode", "off"}), bmcsim::exit_ok);
    EXPECT_EQ(at_p_St_GlobalVar->fw_update_flags, 0u);
    EXPECT_EQ(run({"bios", "update-mode", "maybe"}), bmcsim::exit_usage);
}

TEST_F(HostConfig, BootShowDecodesTheOverride) {
    at_p_St_GlobalVar->boot_flags[0] = 0xE0;
    at_p_St_GlobalVar->boot_flags[1] = 0x04;
    ASSERT_EQ(run({"boot", "show"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str().rfind("override=continuous\nmode=uefi\ntarget=Pxe\n", 0), 0u);
}

TEST_F(HostConfig, StorageCountsAndLoading) {
    EXPECT_EQ(GetBRCMDeviceNum(), 0);
    EXPECT_EQ(UtilGetMRVLCtrlNum(), 0);
    EXPECT_EQ(GetNVMeSSDMaxNumSupport(), 0);
    EXPECT_EQ(UtilIsStorageInventoryLoading(), 0);
    ASSERT_EQ(run({"storage", "set", "broadcom", "2"}), bmcsim::exit_ok);
    ASSERT_EQ(run({"storage", "set", "nvme", "8"}), bmcsim::exit_ok);
    ASSERT_EQ(run({"storage", "loading", "on"}), bmcsim::exit_ok);
    EXPECT_EQ(GetBRCMDeviceNum(), 2);
    EXPECT_EQ(GetNVMeSSDMaxNumSupport(), 8);
    EXPECT_EQ(UtilIsStorageInventoryLoading(), 1);
    EXPECT_EQ(run({"storage", "set", "broadcom", "65"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"storage", "set", "scsi", "1"}), bmcsim::exit_usage);
}

// A hand-edited or damaged file counts no controllers rather than a wrong
// number of them.
TEST_F(HostConfig, StorageCountsOutOfShapeReadAsNone) {
    for (const char* value : {"3x", "x3", "-1", "65", "", "99999999999"}) {
        sim_testing::write_text(path("/var/bmc/storage.ini"),
                                std::string("[Controllers]\nBroadcom=") + value + "\nMarvell=4\n");
        EXPECT_EQ(GetBRCMDeviceNum(), 0) << value;
        EXPECT_EQ(UtilGetMRVLCtrlNum(), 4) << value;
    }
}

}  // namespace
