// The simulated RAID controllers and the check of a volume's creation, on a
// fresh simulated BMC with one controller of each family.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "frontend/exception_http.h"
#include "hardware_root_fixture.h"
#include "platform/libraid.h"
#include "platform/sim/raid_controllers.h"
#include "platform/sim/raid_store.h"
#include "platform/sim/storage_inventory.h"
#include "resources/systems/raid_paths.h"
#include "resources/systems/volume_request.h"

using namespace odata::redfish;

namespace {

constexpr int broadcom = RAID_FAMILY_BROADCOM;

class RaidStorage : public sim_testing::hardware_root {
protected:
    void SetUp() override {
        hardware_root::SetUp();
        ASSERT_TRUE(platform::set_storage_count(platform::storage_count::broadcom, 1));
        ASSERT_TRUE(platform::set_storage_count(platform::storage_count::marvell, 1));
    }

    int create(int level, std::vector<uint8_t> bays) {
        int id = -1;
        return UtilRaidCreateVolume(broadcom, 0, level, bays.data(), static_cast<int>(bays.size()),
                                    "v", &id);
    }

    std::string stored() const {
        std::ifstream file(platform::sim::raid_store_file());
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    St_RaidDrive drive(int bay) const {
        St_RaidDrive info{};
        EXPECT_EQ(UtilRaidGetDrive(broadcom, 0, bay, &info), PLT_OK);
        return info;
    }

    St_RaidVolume volume(int id) const {
        St_RaidVolume info{};
        EXPECT_EQ(UtilRaidGetVolume(broadcom, 0, id, &info), PLT_OK);
        return info;
    }

    // The message ids with which a CreateVolume body is refused; none when
    // it is taken.
    std::vector<std::string> refusals(const std::string& body) const {
        try {
            read_volume_request(boost::json::parse(body), raid_families()[0], "CreateVolume");
        } catch (const exception_http& error) {
            std::vector<std::string> ids;
            const auto entries =
                boost::json::parse(error.body()).at("error").at("@Message.ExtendedInfo").as_array();
            for (const auto& entry : entries) ids.emplace_back(entry.at("MessageId").as_string());
            return ids;
        }
        return {};
    }
};

std::string drives_json(std::initializer_list<int> bays,
                        const char* enclosure = "HA-RAID.0.StorageEnclosure.0") {
    std::string text;
    for (int bay : bays)
        text += std::string(text.empty() ? "" : ",") + "{\"@odata.id\":\"/redfish/v1/Chassis/" +
                enclosure + "/Drives/Disk.Bay." + std::to_string(bay) + "\"}";
    return "[" + text + "]";
}

}  // namespace

TEST_F(RaidStorage, LevelsTakeTheirDriveCounts) {
    EXPECT_EQ(UtilRaidCheckLevel(RAID_LEVEL_0, 1), PLT_OK);
    EXPECT_EQ(UtilRaidCheckLevel(RAID_LEVEL_1, 2), PLT_OK);
    EXPECT_EQ(UtilRaidCheckLevel(RAID_LEVEL_1, 3), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilRaidCheckLevel(RAID_LEVEL_5, 2), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilRaidCheckLevel(RAID_LEVEL_10, 6), PLT_OK);
    EXPECT_EQ(UtilRaidCheckLevel(RAID_LEVEL_10, 5), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilRaidCheckLevel(RAID_LEVEL_0, RAID_BAYS + 1), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilRaidCheckLevel(6, 4), PLT_ERR_ARGUMENT);
}

TEST_F(RaidStorage, ARefusedVolumeStoresNothing) {
    ASSERT_EQ(create(RAID_LEVEL_1, {0, 1}), PLT_OK);
    const std::string before = stored();
    EXPECT_EQ(create(RAID_LEVEL_1, {1, 2}), PLT_ERR_STATE);     // drive 1 is in a volume
    EXPECT_EQ(create(RAID_LEVEL_1, {2, 2}), PLT_ERR_ARGUMENT);  // one drive twice
    EXPECT_EQ(create(RAID_LEVEL_1, {2, 9}), PLT_ERR_ARGUMENT);  // no such bay
    EXPECT_EQ(create(RAID_LEVEL_5, {2, 3}), PLT_ERR_ARGUMENT);
    int id = -1;
    const uint8_t bays[] = {2};
    EXPECT_EQ(UtilRaidCreateVolume(broadcom, 1, RAID_LEVEL_0, bays, 1, "", &id), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(drive(1).volume, 0);
    EXPECT_EQ(volume(0).capacity_bytes, drive(0).capacity_bytes);
}

TEST_F(RaidStorage, ADegradedVolumeRebuildsOnlyOntoReplacedDrives) {
    ASSERT_EQ(create(RAID_LEVEL_1, {0, 1}), PLT_OK);
    EXPECT_EQ(UtilRaidRebuildVolume(broadcom, 0, 0), PLT_ERR_STATE);
    ASSERT_TRUE(platform::set_raid_drive(broadcom, 0, 1, platform::raid_drive_change::fail));
    EXPECT_EQ(volume(0).state, RAID_VOLUME_DEGRADED);
    EXPECT_EQ(UtilRaidRebuildVolume(broadcom, 0, 0), PLT_ERR_STATE);
    ASSERT_TRUE(platform::set_raid_drive(broadcom, 0, 1, platform::raid_drive_change::replace));
    EXPECT_EQ(drive(1).state, RAID_DRIVE_REPLACED);
    EXPECT_EQ(UtilRaidRebuildVolume(broadcom, 0, 0), PLT_OK);
    EXPECT_EQ(volume(0).state, RAID_VOLUME_OPTIMAL);
    // A new drive outside any volume is ready at once.
    ASSERT_TRUE(platform::set_raid_drive(broadcom, 0, 4, platform::raid_drive_change::replace));
    EXPECT_EQ(drive(4).state, RAID_DRIVE_OK);
}

TEST_F(RaidStorage, AForeignVolumeIsImportedOnce) {
    ASSERT_EQ(platform::add_foreign_volume(broadcom, 0, RAID_LEVEL_0, {3}), PLT_OK);
    EXPECT_EQ(volume(0).state, RAID_VOLUME_FOREIGN);
    EXPECT_EQ(UtilRaidImportVolume(broadcom, 0, 0), PLT_OK);
    EXPECT_EQ(volume(0).state, RAID_VOLUME_OPTIMAL);
    EXPECT_EQ(UtilRaidImportVolume(broadcom, 0, 0), PLT_ERR_STATE);
}

TEST_F(RaidStorage, SecureEraseSparesVolumesAndStopsOnAbort) {
    ASSERT_TRUE(platform::sim::set_raid_seconds(platform::sim::raid_duration::erase, 3600));
    ASSERT_EQ(create(RAID_LEVEL_0, {0}), PLT_OK);
    EXPECT_EQ(UtilRaidStartSecureErase(broadcom, 0, 0), PLT_ERR_STATE);
    EXPECT_EQ(UtilRaidAbortSecureErase(broadcom, 0, 2), PLT_ERR_STATE);
    ASSERT_EQ(UtilRaidStartSecureErase(broadcom, 0, 2), PLT_OK);
    EXPECT_EQ(drive(2).erase_percent, 0);
    EXPECT_EQ(UtilRaidStartSecureErase(broadcom, 0, 2), PLT_ERR_STATE);
    EXPECT_EQ(create(RAID_LEVEL_1, {2, 3}), PLT_ERR_STATE);  // an erasing drive takes no volume
    EXPECT_EQ(UtilRaidAbortSecureErase(broadcom, 0, 2), PLT_OK);
    EXPECT_EQ(drive(2).erase_percent, RAID_NO_OPERATION);
}

TEST_F(RaidStorage, AChangedConfigurationIsNoLongerSaved) {
    St_RaidController info{};
    ASSERT_EQ(UtilRaidSaveConfig(broadcom, 0), PLT_OK);
    ASSERT_EQ(UtilRaidGetController(broadcom, 0, &info), PLT_OK);
    EXPECT_EQ(info.saved, 1);
    ASSERT_EQ(create(RAID_LEVEL_0, {5}), PLT_OK);
    ASSERT_EQ(UtilRaidGetController(broadcom, 0, &info), PLT_OK);
    EXPECT_EQ((std::pair{info.saved, info.volume_count}), (std::pair<uint8_t, uint8_t>{0, 1}));
}

TEST_F(RaidStorage, TheRequestNamesDrivesOfOneControllerOfItsFamily) {
    ASSERT_EQ(create(RAID_LEVEL_0, {5}), PLT_OK);
    const auto body = [](const char* type, const std::string& drives) {
        return std::string("{\"RAIDType\":\"") + type + "\",\"Drives\":" + drives + "}";
    };
    EXPECT_EQ(refusals(body("RAID10", drives_json({0, 1, 2, 3}))), std::vector<std::string>{});
    EXPECT_EQ(refusals(body("RAID0", drives_json({0}, "MRVL.HA-RAID.0.StorageModule"))),
              std::vector<std::string>{"Base.1.10.ActionParameterValueNotInList"});
    EXPECT_EQ(refusals(body("RAID0", drives_json({0}, "HA-RAID.1.StorageEnclosure.0"))),
              std::vector<std::string>{"Base.1.10.ActionParameterValueNotInList"});
    EXPECT_EQ(refusals(body("RAID0", drives_json({6}))),
              std::vector<std::string>{"Base.1.10.ActionParameterValueNotInList"});
    EXPECT_EQ(refusals(body("RAID1", drives_json({4, 5}))),
              std::vector<std::string>{"Base.1.10.ResourceInUse"});
    EXPECT_EQ(refusals(body("RAID5", drives_json({0, 1}))),
              std::vector<std::string>{"Base.1.10.PropertyValueConflict"});
    EXPECT_EQ(refusals("{\"RAIDType\":\"RAID0\",\"Drives\":[],\"Name\":\"a-name-far-too-long\"}"),
              (std::vector<std::string>{"Base.1.10.ActionParameterValueTypeError",
                                        "Base.1.10.ActionParameterValueFormatError"}));
    EXPECT_EQ(refusals("{\"RAIDType\":\"RAID0\",\"Drives\":" + drives_json({0}) +
                       ",\"Name\":\"a\\u0007b\"}"),
              std::vector<std::string>{"Base.1.10.ActionParameterValueFormatError"});
    const volume_request request = read_volume_request(
        boost::json::parse(body("RAID1", drives_json({3, 1}))), raid_families()[0], "x");
    EXPECT_EQ(request.bays, (std::vector<uint8_t>{3, 1}));
    EXPECT_EQ(request.level, RAID_LEVEL_1);
}
