// Host power control, identify light and boot-device tables of the
// simulated BMC.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "hardware_root_fixture.h"
#include "platform/libipmi_chassis.h"
#include "platform/sim/chassis_events.h"
#include "platform/sim/event_log.h"

namespace {

using platform::chassis_event;
using sim_testing::fake_now;

struct logged {
    int code;
    int argument;
    bool operator==(const logged& other) const {
        return code == other.code && argument == other.argument;
    }
};

std::ostream& operator<<(std::ostream& out, const logged& event) {
    return out << '{' << event.code << ", " << event.argument << '}';
}

logged expected(chassis_event event, int argument = 0) {
    return {platform::chassis_event_info(event).code, argument};
}

std::vector<logged> events() {
    std::vector<logged> result;
    for (const auto& record : platform::read_event_log())
        result.push_back({record.code, record.argument});
    return result;
}

using ChassisPower = sim_testing::hardware_root;

TEST_F(ChassisPower, AFreshHostIsOnAndOnOffAreLoggedOnce) {
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);
    EXPECT_EQ(PltCHASSIS_PowerUp(), PLT_OK);
    EXPECT_TRUE(events().empty());

    EXPECT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 0);
    EXPECT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    EXPECT_EQ(PltCHASSIS_PowerUp(), PLT_OK);
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);
    EXPECT_EQ(events(), (std::vector<logged>{expected(chassis_event::power_off),
                                             expected(chassis_event::power_on)}));
}

TEST_F(ChassisPower, GracefulShutdownTakesEffectAfterItsDelay) {
    ASSERT_EQ(PltCHASSIS_SoftShutdown(), PLT_OK);
    fake_now += CHASSIS_SOFT_SHUTDOWN_SECONDS - 1;
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);
    EXPECT_EQ(PltCHASSIS_SoftShutdown(), PLT_OK);  // a second request keeps the first deadline
    fake_now += 1;
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 0);
    EXPECT_EQ(PltCHASSIS_SoftShutdown(), PLT_ERR_STATE);
    EXPECT_EQ(events(), (std::vector<logged>{expected(chassis_event::graceful_shutdown_begun, 2),
                                             expected(chassis_event::graceful_shutdown_done)}));
}

TEST_F(ChassisPower, PowerUpOrDownCancelsAPendingShutdown) {
    ASSERT_EQ(PltCHASSIS_SoftShutdown(), PLT_OK);
    ASSERT_EQ(PltCHASSIS_PowerUp(), PLT_OK);
    fake_now += 10;
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);

    ASSERT_EQ(PltCHASSIS_SoftShutdown(), PLT_OK);
    ASSERT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    ASSERT_EQ(PltCHASSIS_PowerUp(), PLT_OK);
    fake_now += 10;
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);
}

TEST_F(ChassisPower, PowerCycleComesBackOnAfterItsInterval) {
    ASSERT_EQ(PltCHASSIS_PowerCycle(5), PLT_OK);
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 0);
    fake_now += 4;
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 0);
    EXPECT_EQ(PltCHASSIS_PowerCycle(5), PLT_ERR_STATE);
    fake_now += 1;
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);

    ASSERT_EQ(PltCHASSIS_PowerCycle(0), PLT_OK);
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);
    platform::chassis_state state;
    ASSERT_TRUE(platform::current_chassis_state(state));
    EXPECT_EQ(state.cycles, 2);
    EXPECT_EQ(events(), (std::vector<logged>{expected(chassis_event::power_cycle, 5),
                                             expected(chassis_event::power_on_after_cycle),
                                             expected(chassis_event::power_cycle, 0)}));
}

TEST_F(ChassisPower, PowerDownCancelsThePowerOnOfACycle) {
    ASSERT_EQ(PltCHASSIS_PowerCycle(3), PLT_OK);
    ASSERT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    fake_now += 10;
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 0);
}

TEST_F(ChassisPower, ResetAndDiagnosticInterruptCountAndNeedPower) {
    ASSERT_EQ(PltCHASSIS_PowerReset(), PLT_OK);
    ASSERT_EQ(PltCHASSIS_PowerReset(), PLT_OK);
    ASSERT_EQ(PltCHASSIS_PulseDiagnosticInterrupt(), PLT_OK);
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);
    ASSERT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    EXPECT_EQ(PltCHASSIS_PowerReset(), PLT_ERR_STATE);
    EXPECT_EQ(PltCHASSIS_PulseDiagnosticInterrupt(), PLT_ERR_STATE);

    platform::chassis_state state;
    ASSERT_TRUE(platform::current_chassis_state(state));
    EXPECT_EQ(state.resets, 2);
    EXPECT_EQ(state.diagnostic_interrupts, 1);
    EXPECT_EQ(events(), (std::vector<logged>{expected(chassis_event::reset, 1),
                                             expected(chassis_event::reset, 2),
                                             expected(chassis_event::diagnostic_interrupt, 1),
                                             expected(chassis_event::power_off)}));
}

TEST_F(ChassisPower, AnotherProcessSeesTheChange) {
    ASSERT_EQ(sim_testing::run_in_child([] { return PltCHASSIS_PowerDown() == PLT_OK ? 0 : 1; }),
              0);
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 0);
    EXPECT_NE(sim_testing::file_text(platform::chassis_state_file()).find("On=0"),
              std::string::npos);
}

TEST_F(ChassisPower, ConcurrentResetsAreAllCounted) {
    constexpr int children = 6;
    constexpr int resets_each = 5;
    std::vector<pid_t> pids;
    for (int child = 0; child < children; ++child)
        pids.push_back(sim_testing::start_child([] {
            for (int i = 0; i < resets_each; ++i)
                if (PltCHASSIS_PowerReset() != PLT_OK) return 1;
            return 0;
        }));
    for (pid_t pid : pids) EXPECT_EQ(sim_testing::wait_child(pid), 0);
    platform::chassis_state state;
    ASSERT_TRUE(platform::current_chassis_state(state));
    EXPECT_EQ(state.resets, children * resets_each);
    EXPECT_EQ(events().size(), static_cast<std::size_t>(children * resets_each));
}

TEST_F(ChassisPower, AnUnwritableStateIsAnError) {
    sim_testing::write_text(path("/var/bmc/chassis.ini.lock/x"), "");
    // A read takes no lock and writes nothing, so it still answers.
    EXPECT_EQ(PltCHASSIS_PowerStatus(), 1);
    EXPECT_EQ(PltCHASSIS_PowerDown(), PLT_ERR_IO);
    EXPECT_TRUE(events().empty());
}

// ---------------------------------------------------------------- identify light

using IdentifyLight = sim_testing::hardware_root;

TEST_F(IdentifyLight, BlinkSteadyAndOffSetTheSharedFlags) {
    at_p_St_GlobalVar->identify_state = 1;
    ASSERT_EQ(PltCHASSIS_Identify(IDENTIFY_LIGHT_BLINK), PLT_OK);
    EXPECT_EQ(at_p_St_GlobalVar->identify_blink, 1);
    EXPECT_EQ(at_p_St_GlobalVar->identify_lit, 0);

    ASSERT_EQ(board->SetIdentifyLight(IDENTIFY_LIGHT_ON), PLT_OK);
    EXPECT_EQ(at_p_St_GlobalVar->identify_blink, 0);
    EXPECT_EQ(at_p_St_GlobalVar->identify_lit, 1);

    ASSERT_EQ(PltCHASSIS_Identify(IDENTIFY_LIGHT_OFF), PLT_OK);
    EXPECT_EQ(at_p_St_GlobalVar->identify_blink, 0);
    EXPECT_EQ(at_p_St_GlobalVar->identify_lit, 0);
    EXPECT_EQ(at_p_St_GlobalVar->identify_state, 1);  // the service's own flag
}

TEST_F(IdentifyLight, OtherModesAreRefused) {
    EXPECT_EQ(PltCHASSIS_Identify(IDENTIFY_LIGHT_ON), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PltCHASSIS_Identify(2), PLT_ERR_ARGUMENT);
    EXPECT_EQ(board->SetIdentifyLight(4), PLT_ERR_ARGUMENT);
    GlobalParaFin();
    EXPECT_EQ(PltCHASSIS_Identify(IDENTIFY_LIGHT_BLINK), PLT_ERR_STATE);
}

// ---------------------------------------------------------------- boot tables

const std::set<std::string> redfish_boot_sources = {
    "None",       "Pxe",       "Floppy",    "Cd",          "Usb",
    "Hdd",        "BiosSetup", "Utilities", "Diags",       "UefiShell",
    "UefiTarget", "SDCard",    "UefiHttp",  "RemoteDrive", "UefiBootNext"};

TEST(BootTables, SevenRowsAndOneExtensionWithDistinctSelectors) {
    ASSERT_EQ(ChassisBootTableSize, 7);
    ASSERT_EQ(ChassisBootTableExtSize, 1);
    EXPECT_STREQ(boot_flags[0].name, "None");
    EXPECT_EQ(boot_flags[0].byte2 & BOOT_DEVICE_SELECTOR_MASK, 0);
    EXPECT_EQ(boot_flags[0].byte2 | BOOT_DEVICE_SELECTOR_MASK,
              0xFF);  // an AND mask that keeps the rest
    EXPECT_EQ(boot_flags[0].byte1, 0xFF);

    std::set<int> selectors;
    std::vector<St_BootFlagEntry> rows(boot_flags + 1, boot_flags + ChassisBootTableSize);
    rows.push_back(boot_flags_ext[0]);
    for (const St_BootFlagEntry& row : rows) {
        ASSERT_NE(row.name, nullptr);
        EXPECT_EQ(redfish_boot_sources.count(row.name), 1u) << row.name;
        EXPECT_EQ(row.byte2 & ~BOOT_DEVICE_SELECTOR_MASK, 0) << row.name;
        EXPECT_NE(row.byte2, 0) << row.name;
        EXPECT_EQ(row.byte1 & 0x80, 0x80) << row.name;  // setting a device makes the override valid
        EXPECT_TRUE(selectors.insert(row.byte2).second) << row.name;
    }
    EXPECT_EQ(selectors.count(0x0C), 0u);  // safe-mode hard disk is not a device of its own
}

}  // namespace
