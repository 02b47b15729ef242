// The host's processors, memory modules, network ports and SATA bays as the
// simulator reports them and the service numbers them.
#include <gtest/gtest.h>

#include <fstream>
#include <limits>

#include "hardware_root_fixture.h"
#include "platform/libnic.h"
#include "platform/libpcie.h"
#include "platform/libstorage.h"
#include "platform/sim/memory_modules.h"
#include "platform/sim/pcie_devices.h"
#include "platform/sim/smbios_store.h"
#include "resources/systems/processor_identity.h"
#include "resources/systems/smbios_lists.h"
#include "resources/systems/smbios_members.h"

using namespace odata::redfish;

namespace {

class HostInventory : public sim_testing::hardware_root {};

std::vector<int> listed_memory() {
    smbios_lists lists;
    EXPECT_EQ(lists.parse(), PLT_OK);
    return memory_ids(lists.data());
}

}  // namespace

TEST(ProcessorIdentity, X86SignatureFoldsTheExtendedFields) {
    const x86_signature server = decode_x86_signature(0xBFEBFBFF000606A6ull);
    EXPECT_EQ(server.effective_family, "0x6");
    EXPECT_EQ(server.effective_model, "0x6a");
    EXPECT_EQ(server.step, "0x6");
    // Family 0xF adds the extended family; other families ignore both
    // extended fields except family 6's model.
    const x86_signature family_f = decode_x86_signature(0x00A00F11);
    EXPECT_EQ(family_f.effective_family, "0x19");
    EXPECT_EQ(family_f.effective_model, "0x1");
    const x86_signature family_5 = decode_x86_signature(0x0FF70543);
    EXPECT_EQ(family_5.effective_family, "0x5");
    EXPECT_EQ(family_5.effective_model, "0x4");
    EXPECT_EQ(identification_registers(0xBFEBFBFF000606A6ull), "0xbfebfbff000606a6");
    EXPECT_EQ(identification_registers(0), "0x0000000000000000");
    EXPECT_EQ(identification_registers(std::numeric_limits<uint64_t>::max()), "0xffffffffffffffff");
}

TEST(ProcessorIdentity, OnlyKnownFamiliesHaveAnArchitecture) {
    ASSERT_NE(architecture_of_family(0xB3), nullptr);
    EXPECT_STREQ(architecture_of_family(0xB3)->architecture, "x86");
    EXPECT_STREQ(architecture_of_family(0x101)->instruction_set, "ARM-A64");
    for (uint16_t unknown : std::initializer_list<uint16_t>{0x00, 0x02, 0xFE, 0xFF, 0x102, 0xFFFF})
        EXPECT_EQ(architecture_of_family(unknown), nullptr) << unknown;
}

TEST_F(HostInventory, MembersKeepTheirSlotWhenAnotherEmpties) {
    EXPECT_EQ(listed_memory(), (std::vector<int>{1, 2, 3, 4, 9, 10, 11, 12}));
    EXPECT_EQ(platform::remove_memory_module("CPU1_DIMM_B1"), platform::module_removal::removed);
    EXPECT_EQ(listed_memory(), (std::vector<int>{1, 3, 4, 9, 10, 11, 12}));
    // Once empty, a slot has no module to remove; nor has an unknown one.
    EXPECT_EQ(platform::remove_memory_module("CPU1_DIMM_B1"),
              platform::module_removal::no_such_module);
    EXPECT_EQ(platform::remove_memory_module("CPU1_DIMM_E1"),
              platform::module_removal::no_such_module);
    EXPECT_EQ(platform::remove_memory_module(""), platform::module_removal::no_such_module);

    smbios_lists lists;
    ASSERT_EQ(lists.parse(), PLT_OK);
    EXPECT_EQ(find_memory(lists.data(), 2), nullptr);
    EXPECT_EQ(find_memory(lists.data(), 0), nullptr);
    EXPECT_EQ(find_memory(lists.data(), 17), nullptr);
    EXPECT_EQ(find_memory(lists.data(), -1), nullptr);
    ASSERT_NE(find_memory(lists.data(), 3), nullptr);
    EXPECT_STREQ(find_memory(lists.data(), 3)->device_locator, "CPU1_DIMM_C1");
    EXPECT_EQ(processor_ids(lists.data()), (std::vector<int>{1, 2}));
    EXPECT_EQ(find_processor(lists.data(), 3), nullptr);
    EXPECT_EQ(member_uris("/m", {1, 12}), (std::vector<std::string>{"/m/1", "/m/12"}));
}

TEST_F(HostInventory, RemovingFromADamagedTableChangesNothing) {
    ASSERT_EQ(run({"smbios", "corrupt"}), bmcsim::exit_ok);
    std::string before;
    ASSERT_EQ(platform::load_smbios_table(before), PLT_OK);
    EXPECT_EQ(platform::remove_memory_module("CPU1_DIMM_A1"),
              platform::module_removal::table_unreadable);
    std::string after;
    ASSERT_EQ(platform::load_smbios_table(after), PLT_OK);
    EXPECT_EQ(before, after);
}

TEST_F(HostInventory, PortsAndBaysEndAtTheirCount) {
    St_HostNicPort port{};
    ASSERT_EQ(NicGetPortCount(), 2);
    EXPECT_EQ(NicGetPort(-1, &port), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(NicGetPort(2, &port), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(NicGetPort(0, nullptr), PLT_ERR_ARGUMENT);
    ASSERT_EQ(NicGetPort(1, &port), PLT_OK);
    EXPECT_EQ(port.link_up, 0);
    EXPECT_EQ(port.speed_mbps, 0u);
    ASSERT_EQ(run({"nics", "link", "2", "up"}), bmcsim::exit_ok);
    ASSERT_EQ(NicGetPort(1, &port), PLT_OK);
    EXPECT_EQ(port.speed_mbps, 25000u);
    EXPECT_EQ(run({"nics", "link", "0", "up"}), bmcsim::exit_usage);

    St_SataDrive drive{};
    EXPECT_EQ(UtilGetSataDrive(UtilGetSataBayCount(), &drive), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(UtilGetSataDrive(0, nullptr), PLT_ERR_ARGUMENT);
    ASSERT_EQ(run({"storage", "drive", "0", "remove"}), bmcsim::exit_ok);
    ASSERT_EQ(UtilGetSataDrive(0, &drive), PLT_OK);
    EXPECT_EQ(drive.present, 0);
    EXPECT_EQ(drive.capacity_bytes, 0u);
    EXPECT_EQ(run({"storage", "drive", "3", "insert"}), bmcsim::exit_failed);
}

TEST(HostAdapters, EveryAdapterSitsInASlotThatNamesIt) {
    St_HostNicAdapter adapter{};
    EXPECT_EQ(NicGetAdapter(NicGetAdapterCount(), &adapter), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(NicGetAdapter(-1, &adapter), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(NicGetAdapter(0, nullptr), PLT_ERR_ARGUMENT);
    St_PcieSlot slot{};
    EXPECT_EQ(PcieGetSlot(PcieGetSlotCount(), &slot), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(PcieGetSlot(0, nullptr), PLT_ERR_ARGUMENT);
    for (int i = 0; i < NicGetAdapterCount(); ++i) {
        ASSERT_EQ(NicGetAdapter(i, &adapter), PLT_OK);
        ASSERT_EQ(PcieGetSlot(adapter.slot - 1, &slot), PLT_OK);
        EXPECT_EQ(slot.ocp, 1);
        int ports = 0;
        for (int p = 0; p < NicGetPortCount(); ++p) {
            St_HostNicPort port{};
            ASSERT_EQ(NicGetPort(p, &port), PLT_OK);
            ports += port.adapter == adapter.adapter;
        }
        EXPECT_EQ(ports, adapter.port_count);
    }
}

TEST_F(HostInventory, PcieDevicesComeAndGoInFreePlacesOnly) {
    const auto names = [] {
        std::vector<std::string> listed;
        for (int i = 0; i < PcieGetDeviceCount(); ++i) {
            St_PcieDevice device{};
            EXPECT_EQ(PcieGetDevice(i, &device), PLT_OK);
            listed.push_back(platform::pcie_kind_prefix(device.kind) +
                             std::to_string(device.number));
        }
        return listed;
    };
    const std::vector<std::string> delivered{"NIC1", "GPU1", "NVMeSSD1", "NVMeSSD2", "PCIeSSD1"};
    EXPECT_EQ(names(), delivered);
    St_PcieDevice device{};
    EXPECT_EQ(PcieGetDevice(PcieGetDeviceCount(), &device), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(PcieGetDevice(0, nullptr), PLT_ERR_ARGUMENT);
    // The OCP slot, a taken slot or bay, a slot the board lacks, a NIC (the
    // adapters are fixed) or a bad serial number: refused, nothing stored.
    for (const bmcsim::arguments& refused : {bmcsim::arguments{"pcie", "add", "GPU", "1", "S1"},
                                             {"pcie", "add", "GPU", "2", "S1"},
                                             {"pcie", "add", "NVMeSSD", "2", "S1"},
                                             {"pcie", "add", "PCIeSSD", "6", "S1"},
                                             {"pcie", "add", "NVMeSSD", "9", "S1"},
                                             {"pcie", "add", "NIC", "3", "S1"},
                                             {"pcie", "add", "GPU", "3", "S 1"},
                                             {"pcie", "add", "GPU", "3", std::string(24, 'S')},
                                             {"pcie", "remove", "NIC1"},
                                             {"pcie", "link", "GPU1", "5", "16"},
                                             {"pcie", "link", "GPU1", "4", "12"}})
        EXPECT_NE(run(refused), bmcsim::exit_ok) << refused[1] << ' ' << refused[2];
    EXPECT_EQ(names(), delivered);
    ASSERT_EQ(run({"pcie", "add", "GPU", "3", "S1"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str(), "GPU2\n");
    ASSERT_EQ(run({"pcie", "remove", "GPU1"}), bmcsim::exit_ok);
    // Numbers are reused from the lowest free one; the list stays ordered.
    ASSERT_EQ(run({"pcie", "add", "GPU", "5", "S2"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str(), "GPU1\n");
    ASSERT_EQ(run({"pcie", "link", "GPU1", "down"}), bmcsim::exit_ok);
    ASSERT_EQ(PcieGetDevice(1, &device), PLT_OK);
    EXPECT_EQ(std::string(device.serial_number), "S2");
    EXPECT_EQ(device.slot, 5);
    EXPECT_EQ(device.generation, 0);
    // Six more NVMe SSDs fill the backplane.
    for (int bay = 3; bay <= platform::nvme_bay_count; ++bay)
        ASSERT_EQ(run({"pcie", "add", "NVMeSSD", std::to_string(bay), "N" + std::to_string(bay)}),
                  bmcsim::exit_ok);
    EXPECT_EQ(PcieGetDeviceCount(), 1 + 2 + 8 + 1);
    EXPECT_LE(PcieGetDeviceCount(), PCIE_DEVICES_MAX);
}

TEST_F(HostInventory, AMalformedPcieFileKeepsOnlyWhatItNamesWell) {
    std::ofstream(platform::pcie_devices_file())
        << "[Inventory]\nDevices=GPU1 GPU0 NIC1 Bogus3 GPU99 NVMeSSD4\n[GPU1]\nSlot=2\n"
           "SerialNumber=A\n[NVMeSSD4]\nBay=4\n";
    std::vector<std::string> listed;
    for (int i = 0; i < PcieGetDeviceCount(); ++i) {
        St_PcieDevice device{};
        ASSERT_EQ(PcieGetDevice(i, &device), PLT_OK);
        listed.push_back(platform::pcie_kind_prefix(device.kind) + std::to_string(device.number));
    }
    EXPECT_EQ(listed, (std::vector<std::string>{"NIC1", "GPU1", "NVMeSSD4"}));
}
