// The stores behind the system's extras (VLANs, node manager policies,
// memory error counts, the event log's acknowledged alerts, the host's side
// of the host interface) and the validation of VLAN requests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frontend/exception_http.h"
#include "hardware_root_fixture.h"
#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/libmemory.h"
#include "platform/libnic.h"
#include "platform/libnodemanager.h"
#include "platform/libsel.h"
#include "platform/sim/event_log.h"
#include "platform/sim/host_interface.h"
#include "platform/sim/host_vlans.h"
#include "platform/sim/memory_errors.h"
#include "platform/sim/node_manager.h"
#include "resources/systems/vlan_request.h"

using namespace odata::redfish;

namespace {

class SystemExtras : public sim_testing::hardware_root {};

std::vector<std::pair<int, int>> vlans_of(int port_index) {
    St_HostNicVlan vlans[NIC_MAX_VLANS];
    std::vector<std::pair<int, int>> listed;
    const int count = NicGetVlans(port_index, vlans);
    for (int i = 0; i < count; ++i) listed.emplace_back(vlans[i].number, vlans[i].vlan_id);
    return listed;
}

// The message ids of a refused request, or "accepted".
std::string refusal_of(const std::string& body, bool creating) {
    try {
        read_vlan_request(boost::json::parse(body), creating);
        return "accepted";
    } catch (const exception_http& refused) {
        const boost::json::value answer = boost::json::parse(refused.body());
        std::string ids;
        for (const auto& entry : answer.at("error").at("@Message.ExtendedInfo").as_array())
            ids += std::string(entry.at("MessageId").as_string()) + " ";
        return ids;
    }
}

}  // namespace

TEST(VlanRequest, EveryFaultOfABodyIsReportedAtOnce) {
    EXPECT_EQ(refusal_of(R"({"VLANId": 4095, "VLANEnable": 1, "Id": "2", "MTU": 1500})", false),
              "Base.1.10.PropertyValueFormatError Base.1.10.PropertyValueTypeError "
              "Base.1.10.PropertyNotWritable Base.1.10.PropertyUnknown ");
    EXPECT_EQ(refusal_of(R"({"VLANId": 1.5})", false), "Base.1.10.PropertyValueTypeError ");
    EXPECT_EQ(refusal_of(R"({"VLANId": -1})", true), "Base.1.10.PropertyValueFormatError ");
    // Creating needs an id; a change may leave it as it is.
    EXPECT_EQ(refusal_of(R"({"VLANEnable": true})", true), "Base.1.10.PropertyMissing ");
    EXPECT_EQ(refusal_of(R"({"VLANEnable": true})", false), "accepted");
    const vlan_request read = read_vlan_request(boost::json::parse(R"({"VLANId": 0})"), true);
    EXPECT_EQ(read.vlan_id, 0);
    EXPECT_FALSE(read.enabled);
}

TEST_F(SystemExtras, VlansKeepTheirNumbersAndNeverShareAnIdOnAPort) {
    EXPECT_EQ(NicAddVlan(0, 10, 1), 1);
    EXPECT_EQ(NicAddVlan(0, 20, 0), 2);
    EXPECT_EQ(NicAddVlan(0, 10, 1), NIC_ERR_VLAN_ID_IN_USE);
    EXPECT_EQ(NicAddVlan(1, 10, 1), 1);  // another port may
    St_HostNicVlan change{2, 1, 10};
    EXPECT_EQ(NicSetVlan(0, &change), NIC_ERR_VLAN_ID_IN_USE);
    change.vlan_id = 30;
    EXPECT_EQ(NicSetVlan(0, &change), PLT_OK);
    EXPECT_EQ(NicDeleteVlan(0, 1), PLT_OK);
    EXPECT_EQ(NicDeleteVlan(0, 1), PLT_ERR_NOT_FOUND);
    EXPECT_EQ((vlans_of(0)), (std::vector<std::pair<int, int>>{{2, 30}}));
    // Refused: ids past 4094, ports and numbers that do not exist.
    EXPECT_EQ(NicAddVlan(0, NIC_MAX_VLAN_ID + 1, 1), PLT_ERR_ARGUMENT);
    EXPECT_EQ(NicAddVlan(NicGetPortCount(), 5, 1), PLT_ERR_ARGUMENT);
    change.number = NIC_MAX_VLANS + 1;
    EXPECT_EQ(NicSetVlan(0, &change), PLT_ERR_ARGUMENT);
}

TEST_F(SystemExtras, APortHoldsAtMostEightVlansAndSkipsDamagedLines) {
    sim_testing::write_text(platform::host_vlans_file(),
                            "[Port1]\nVLAN1=5000,1\nVLAN2=7,2\nVLAN3=8\nVLAN4=9,1\n");
    EXPECT_EQ((vlans_of(0)), (std::vector<std::pair<int, int>>{{4, 9}}));
    for (int id = 100; id < 100 + NIC_MAX_VLANS - 1; ++id)
        EXPECT_GT(NicAddVlan(0, static_cast<uint16_t>(id), 1), 0);
    EXPECT_EQ(NicAddVlan(0, 200, 1), PLT_ERR_STATE);
    EXPECT_EQ(vlans_of(0).size(), static_cast<size_t>(NIC_MAX_VLANS));
}

TEST_F(SystemExtras, NodeManagerHoldsBoundedPoliciesUntilCleared) {
    for (int id = 0; id < NM_MAX_POLICIES; ++id)
        EXPECT_EQ(platform::store_node_manager_policy({uint8_t(id * 10), 1, 300, 1000, 5}),
                  platform::policy_stored::stored);
    EXPECT_EQ(platform::store_node_manager_policy({255, 1, 300, 1000, 5}),
              platform::policy_stored::full);
    // Replacing one that exists is not an addition.
    EXPECT_EQ(platform::store_node_manager_policy({10, 0, 450, 1000, 5}),
              platform::policy_stored::stored);
    St_NmPolicy policies[NM_MAX_POLICIES];
    ASSERT_EQ(NmGetPolicies(policies), NM_MAX_POLICIES);
    EXPECT_EQ(policies[1].policy_id, 10);
    EXPECT_EQ(policies[1].power_limit_watts, 450);
    EXPECT_EQ(policies[1].enabled, 0);
    EXPECT_EQ(NmClearAllPolicies(), PLT_OK);
    EXPECT_EQ(NmGetPolicies(policies), 0);
    EXPECT_EQ(run({"nodemanager", "add", "256", "300", "on"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"nodemanager", "add", "1", "0", "on"}), bmcsim::exit_usage);
}

TEST_F(SystemExtras, MemoryErrorCountsAreKeptPerModule) {
    St_MemoryErrorCounts counts{1, 1};
    EXPECT_EQ(MemGetErrorCounts("CPU1_DIMM_A1", &counts), PLT_OK);
    EXPECT_EQ(counts.correctable + counts.uncorrectable, 0u);
    EXPECT_EQ(run({"memory", "errors", "CPU1_DIMM_A1", "4294967295", "2"}), bmcsim::exit_ok);
    EXPECT_EQ(MemGetErrorCounts("CPU1_DIMM_A1", &counts), PLT_OK);
    EXPECT_EQ(counts.correctable, 4294967295u);
    EXPECT_EQ(counts.uncorrectable, 2u);
    // A locator that would name another key of the file is refused.
    EXPECT_EQ(run({"memory", "errors", "CPU1.DIMM", "1", "1"}), bmcsim::exit_usage);
    EXPECT_EQ(MemGetErrorCounts("CPU1.DIMM", &counts), PLT_ERR_ARGUMENT);
    EXPECT_EQ(run({"memory", "errors", "CPU1_DIMM_A1", "4294967296", "0"}), bmcsim::exit_usage);
}

TEST_F(SystemExtras, AcknowledgedAlertsStayAcknowledgedWithinTheirSecond) {
    EXPECT_EQ(LibGetSysEvtLogAlertState(), SEL_ALERTS_NONE);
    sim_testing::write_text(platform::event_log_file(),
                            R"({"time":100,"code":172,"argument":1,"text":"a"})"
                            "\n"
                            R"({"time":200,"code":171,"argument":1,"text":"b"})"
                            "\n"
                            R"({"time":200,"code":160,"argument":0,"text":"power"})"
                            "\n");
    EXPECT_EQ(LibGetSysEvtLogAlertState(), SEL_ALERTS_CRITICAL);
    EXPECT_EQ(LibAckSysEvtLogAlerts(), 0);
    EXPECT_EQ(LibGetSysEvtLogAlertState(), SEL_ALERTS_NONE);
    // A later alert of the same second as the last acknowledged one counts.
    std::string log = sim_testing::file_text(platform::event_log_file());
    sim_testing::write_text(platform::event_log_file(),
                            log + R"({"time":200,"code":171,"argument":2,"text":"c"})" + "\n");
    EXPECT_EQ(LibGetSysEvtLogAlertState(), SEL_ALERTS_WARNING);
    EXPECT_EQ(run({"eventlog", "alerts"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str(), "unacknowledged alerts: warning\n");
}

TEST_F(SystemExtras, TheHostsSideOfTheHostInterfaceTakesOnlyWellFormedSettings) {
    St_HostIfHostNic nic{};
    ASSERT_EQ(UtilGetHostInterfaceHostNic(&nic), PLT_OK);
    EXPECT_STREQ(nic.ipv4_address, "169.254.0.18");
    EXPECT_FALSE(
        platform::set_host_interface_host_nic("02:00:00:00:00:0g", "10.0.0.2", "255.0.0.0"));
    EXPECT_FALSE(
        platform::set_host_interface_host_nic("02:00:00:00:00:01", "10.0.0.256", "255.0.0.0"));
    EXPECT_FALSE(
        platform::set_host_interface_host_nic("02:00:00:00:00:01", "10.0.0.2", "255.0.255.0"));
    EXPECT_TRUE(
        platform::set_host_interface_host_nic("02:00:00:00:00:01", "10.0.0.2", "255.0.0.0"));
    ASSERT_EQ(UtilGetHostInterfaceHostNic(&nic), PLT_OK);
    EXPECT_STREQ(nic.mac_address, "02:00:00:00:00:01");
    EXPECT_STREQ(nic.subnet_mask, "255.0.0.0");
}
