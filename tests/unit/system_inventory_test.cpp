// The computer system's inventory from the simulated FRU and SMBIOS table.
#include "resources/systems/system_inventory.h"

#include <gtest/gtest.h>

#include "hardware_root_fixture.h"
#include "platform/sim/smbios_store.h"

using namespace odata::redfish;

namespace {

// One SMBIOS structure without strings: header, then fields zeroed except
// the bytes given by offset.
std::string structure(uint8_t type, size_t length,
                      std::initializer_list<std::pair<size_t, uint8_t>> bytes) {
    std::string fields(length, '\0');
    fields[0] = static_cast<char>(type);
    fields[1] = static_cast<char>(length);
    for (auto [offset, value] : bytes) fields[offset] = static_cast<char>(value);
    return fields + std::string(2, '\0');
}

std::string memory_device(uint16_t size_mib) {
    return structure(17, 0x28, {{0x0C, size_mib & 0xFF}, {0x0D, size_mib >> 8}});
}

std::string processor(uint8_t status) { return structure(4, 0x30, {{0x18, status}}); }

const std::string smbios_table_end = structure(127, 4, {});

class SystemInventory : public sim_testing::hardware_root {};

}  // namespace

TEST_F(SystemInventory, MemoryIsWholeGibibytesAndOnlyPopulatedSocketsCount) {
    ASSERT_TRUE(platform::write_smbios_table(
        processor(0x41) + processor(0x00) + memory_device(1024) + memory_device(512) +
        memory_device(0) + memory_device(0xFFFF) + smbios_table_end));
    const std::optional<smbios_inventory> inventory = read_smbios_inventory();
    ASSERT_TRUE(inventory);
    EXPECT_EQ(inventory->memory_gib, 1u);
    EXPECT_EQ(inventory->processor_count, 1);
    EXPECT_EQ(inventory->manufacturer, "-");
    EXPECT_EQ(inventory->uuid, "");
}

TEST_F(SystemInventory, TwinNodeBoardsShowTheNodesOwnNumbers) {
    ASSERT_EQ(run({"board", "node-type", "1"}), 0);
    const part_identity identity = read_part_identity();
    EXPECT_EQ(identity.serial_number, "NODE0001");
    EXPECT_EQ(identity.part_number, "PN-NODE-01");
}

TEST_F(SystemInventory, DamagedImagesAreLoggedAndGiveNothing) {
    ASSERT_EQ(run({"fru", "corrupt"}), 0);
    ASSERT_EQ(run({"smbios", "corrupt"}), 0);
    testing::internal::CaptureStderr();
    const part_identity identity = read_part_identity();
    const std::optional<smbios_inventory> inventory = read_smbios_inventory();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "FRU parse fail\n[ERROR] Failed to parse smbios\n");
    EXPECT_EQ(identity.serial_number, "");
    EXPECT_EQ(identity.part_number, "");
    EXPECT_FALSE(inventory);
}
