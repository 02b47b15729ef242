// Power figures, supply bays and redundancy of the simulated host.
#include <gtest/gtest.h>

#include <string>

#include "hardware_root_fixture.h"
#include "platform/libipmi_chassis.h"
#include "platform/libipmi_power.h"
#include "platform/libipmi_sensors.h"
#include "platform/sim/power_supply.h"

namespace {

using PowerSupply = sim_testing::hardware_root;

St_PowerSupplyInfo bay(int number) {
    St_PowerSupplyInfo info{};
    EXPECT_EQ(PltPSU_GetBayInfo(number, &info), PLT_OK);
    return info;
}

St_PowerControl control() {
    St_PowerControl figures{};
    EXPECT_EQ(PltPSU_GetPowerControl(&figures), PLT_OK);
    return figures;
}

int redundancy_health() {
    St_PowerRedundancy group{};
    EXPECT_EQ(PltPSU_GetRedundancy(&group), PLT_OK);
    return group.health;
}

TEST_F(PowerSupply, TwoWorkingSuppliesShareTheLoad) {
    ASSERT_EQ(PltPSU_GetBayCount(), 2);
    St_PowerControl figures = control();
    EXPECT_EQ(figures.consumed_watts, 285u);
    EXPECT_EQ(figures.capacity_watts, 1600u);
    EXPECT_EQ(figures.available_watts, figures.capacity_watts - figures.allocated_watts);
    EXPECT_EQ(figures.limit_exception, POWER_LIMIT_NO_ACTION);

    St_PowerSupplyInfo first = bay(1);
    EXPECT_EQ(first.present, 1);
    EXPECT_EQ(first.health, SENSOR_HEALTH_OK);
    EXPECT_EQ(first.last_output_watts, 142);
    EXPECT_EQ(first.line_input_type, PSU_LINE_AC_MID);
    EXPECT_EQ(first.supply_type, PSU_TYPE_AC);
    EXPECT_EQ(first.input_range_count, 2);
    EXPECT_STRNE(first.serial_number, bay(2).serial_number);
    EXPECT_STRNE(first.model, "");

    St_PowerRedundancy group{};
    ASSERT_EQ(PltPSU_GetRedundancy(&group), PLT_OK);
    EXPECT_EQ(group.max_supported, 2);
    EXPECT_EQ(group.min_needed, 1);
    EXPECT_EQ(group.health, SENSOR_HEALTH_OK);
    EXPECT_EQ(group.member_count, 2);
}

TEST_F(PowerSupply, AFailedSupplyLosesRedundancy) {
    ASSERT_EQ(run({"power", "psu", "2", "failed"}), bmcsim::exit_ok);
    EXPECT_EQ(bay(2).health, SENSOR_HEALTH_CRITICAL);
    EXPECT_EQ(bay(2).last_output_watts, 0);
    EXPECT_EQ(bay(1).last_output_watts, 285);
    EXPECT_EQ(redundancy_health(), SENSOR_HEALTH_WARNING);
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_CRITICAL);

    ASSERT_EQ(run({"power", "psu", "1", "input-lost"}), bmcsim::exit_ok);
    EXPECT_EQ(bay(1).line_input_volts, 0);
    EXPECT_EQ(redundancy_health(), SENSOR_HEALTH_CRITICAL);
    EXPECT_EQ(control().capacity_watts, 0u);
}

TEST_F(PowerSupply, AnEmptyBayHasNoDetails) {
    ASSERT_EQ(run({"power", "psu", "1", "absent"}), bmcsim::exit_ok);
    St_PowerSupplyInfo empty = bay(1);
    EXPECT_EQ(empty.present, 0);
    EXPECT_EQ(empty.health, SENSOR_HEALTH_UNAVAILABLE);
    EXPECT_STREQ(empty.serial_number, "");
    EXPECT_EQ(empty.input_range_count, 0);
    EXPECT_EQ(redundancy_health(), SENSOR_HEALTH_WARNING);
}

TEST_F(PowerSupply, ConsumptionFeedsTheMetricsAndStandbyWhileOff) {
    ASSERT_TRUE(platform::set_consumed_watts(500));
    ASSERT_TRUE(platform::set_consumed_watts(100));
    St_PowerControl figures = control();
    EXPECT_EQ(figures.consumed_watts, 100u);
    EXPECT_EQ(figures.max_consumed_watts, 500u);
    EXPECT_EQ(figures.min_consumed_watts, 100u);
    EXPECT_GT(figures.average_consumed_watts, 100u);
    EXPECT_LT(figures.average_consumed_watts, 500u);

    ASSERT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    EXPECT_LT(control().consumed_watts, 100u);
}

TEST_F(PowerSupply, LimitAndBadRequests) {
    ASSERT_EQ(run({"power", "limit", "900", "hard-power-off"}), bmcsim::exit_ok);
    EXPECT_EQ(control().limit_watts, 900u);
    EXPECT_EQ(control().limit_exception, POWER_LIMIT_HARD_POWER_OFF);
    EXPECT_EQ(run({"power", "limit", "900", "explode"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"power", "psu", "3", "ok"}), bmcsim::exit_usage);

    St_PowerSupplyInfo info{};
    EXPECT_EQ(PltPSU_GetBayInfo(0, &info), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(PltPSU_GetBayInfo(3, &info), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(PltPSU_GetPowerControl(nullptr), PLT_ERR_ARGUMENT);
}

}  // namespace
