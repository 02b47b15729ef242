// The simulated SDR repository: linear conversion, threshold states, health
// and the readings the tool changes.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <set>
#include <stdexcept>
#include <string>

#include "base/request_epoch.h"
#include "hardware_root_fixture.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/libipmi_sensors.h"
#include "platform/libpcie.h"
#include "platform/sim/sdr_repository.h"
#include "platform/sim/sensor_conversion.h"
#include "platform/sim/sensor_readings.h"
#include "resources/chassis/sdr_sensors.h"
#include "resources/systems/system_health.h"

namespace {

const St_SensorData& sensor(const char* name) {
    const St_SensorData* record = platform::find_sensor_by_name(name);
    if (!record) throw std::runtime_error(std::string("no sensor ") + name);
    return *record;
}

void set_value(const char* name, double value) {
    const St_SensorData& record = sensor(name);
    ASSERT_TRUE(
        platform::set_raw_reading(record.sensor_number, platform::sim::nearest_raw(record, value)));
}

int health(const char* name) {
    return UtilGetSensorCurrStatus(sensor(name).sensor_number, SENSOR_STATUS_HEALTH);
}

int crossed(const char* name) {
    return UtilGetSensorCurrStatus(sensor(name).sensor_number, SENSOR_STATUS_STATE_BITS);
}

// ---------------------------------------------------------------- conversion

TEST(SensorConversion, LinearFormulaWithBothExponents) {
    EXPECT_DOUBLE_EQ(cal_val(45, 1, 0, 0, 0), 45);
    EXPECT_DOUBLE_EQ(cal_val(56, 100, 0, 0, 0), 5600);
    EXPECT_DOUBLE_EQ(cal_val(200, 6, 0, 0, -2), 12.0);
    EXPECT_DOUBLE_EQ(cal_val(175, 4, 5, 2, -3), 1.2);  // B scaled up by K1
    EXPECT_DOUBLE_EQ(cal_val(0, 1, 25, -1, 0), 2.5);   // B scaled down by K1
    EXPECT_DOUBLE_EQ(cal_val(3, 2, 0, 0, 2), 600);     // positive result exponent
    EXPECT_DOUBLE_EQ(cal_val(-5, 1, 0, 0, 0), -5);     // signed raw
    EXPECT_DOUBLE_EQ(cal_val(10, 1, -5, 1, 0), -40);   // negative offset
}

TEST(SensorConversion, RawFormatDecidesTheSign) {
    St_SensorData record{};
    record.m = 1;
    record.analog_format = ANALOG_TWOS_COMPLEMENT;
    EXPECT_DOUBLE_EQ(SensorRawToValue(&record, 0xFB), -5);
    EXPECT_EQ(platform::sim::nearest_raw(record, -5), 0xFB);
    EXPECT_EQ(platform::sim::nearest_raw(record, -500), 0x80);  // clamped to the format's range
    EXPECT_EQ(platform::sim::nearest_raw(record, 500), 0x7F);
    record.analog_format = ANALOG_UNSIGNED;
    EXPECT_DOUBLE_EQ(SensorRawToValue(&record, 0xFB), 251);
    EXPECT_EQ(platform::sim::nearest_raw(record, -5), 0x00);
    EXPECT_EQ(platform::sim::nearest_raw(record, NAN), 0x00);
}

TEST(SensorConversion, NearestRawIsWithinHalfAStep) {
    const St_SensorData& rail = sensor("VDimmP1ABC");
    for (double volts = 0.6; volts < 1.5; volts += 0.0137) {
        double back = SensorRawToValue(&rail, platform::sim::nearest_raw(rail, volts));
        EXPECT_LE(std::fabs(back - volts), 0.002 + 1e-9) << volts;
    }
}

// ---------------------------------------------------------------- repository

TEST(SdrRepository, RecordsAreConsistent) {
    std::set<int> numbers;
    ASSERT_GT(platform::sdr_record_count(), 0u);
    for (std::size_t i = 0; i < platform::sdr_record_count(); ++i) {
        const St_SensorData& record = at_St_SensorData[i];
        SCOPED_TRACE(record.id_string);
        EXPECT_TRUE(numbers.insert(record.sensor_number).second);
        EXPECT_EQ(record.id_length, std::strlen(record.id_string));
        EXPECT_EQ(SensorFindRecord(record.sensor_number), &record);
        bool full = record.record_type == SDR_FULL_SENSOR;
        EXPECT_TRUE(full || record.record_type == SDR_COMPACT_SENSOR);
        EXPECT_EQ(full, record.reading_type == READING_TYPE_THRESHOLD);
    }
}

// Thresholds lie in order around the nominal reading, in units.
TEST(SdrRepository, ThresholdsSurroundTheNominalReading) {
    for (std::size_t i = 0; i < platform::sdr_record_count(); ++i) {
        const St_SensorData& record = at_St_SensorData[i];
        if (record.record_type != SDR_FULL_SENSOR) continue;
        SCOPED_TRACE(record.id_string);
        auto value = [&](uint8_t raw) { return SensorRawToValue(&record, raw); };
        const St_SensorThresholds& t = record.thresholds;
        double nominal = value(record.nominal_reading);
        if (t.readable & THRESHOLD_LOWER_NON_CRITICAL) {
            EXPECT_LT(value(t.lower_non_recoverable), value(t.lower_critical));
            EXPECT_LT(value(t.lower_critical), value(t.lower_non_critical));
            EXPECT_LT(value(t.lower_non_critical), nominal);
        }
        if (t.readable & THRESHOLD_UPPER_NON_CRITICAL) {
            EXPECT_LT(nominal, value(t.upper_non_critical));
            EXPECT_LT(value(t.upper_non_critical), value(t.upper_critical));
            EXPECT_LT(value(t.upper_critical), value(t.upper_non_recoverable));
        }
    }
}

// ---------------------------------------------------------------- states and health

using SensorState = sim_testing::hardware_root;

TEST_F(SensorState, ACountBeyondTheRepositoryIsNotFollowed) {
    const size_t exposed = odata::redfish::exposed_sensors().size();
    for (uint16_t count : {uint16_t(3000), uint16_t(0xFFFF), at_St_SensorDataRows}) {
        at_p_St_GlobalVar->sensor_count = count;
        EXPECT_EQ(odata::redfish::sensor_record_count(), at_St_SensorDataRows);
        EXPECT_EQ(odata::redfish::exposed_sensors().size(), exposed);
        EXPECT_GE(odata::redfish::processor_health_code(), SENSOR_HEALTH_OK);
    }
}

TEST_F(SensorState, NominalReadingsAreHealthy) {
    uint8_t raw = 0;
    ASSERT_EQ(UtilGetSensorReading(sensor("FAN1").sensor_number, &raw), PLT_OK);
    EXPECT_DOUBLE_EQ(SensorRawToValue(&sensor("FAN1"), raw), 5600);
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_OK);
    EXPECT_EQ(UtilCheckAllMemHealthAndTemp(), SENSOR_HEALTH_OK);
    EXPECT_EQ(UtilCheckAllMemHealth(), SENSOR_HEALTH_OK);
    EXPECT_EQ(crossed("CPU1 Temp"), 0);
}

TEST_F(SensorState, UpperThresholdsRaiseWarningThenCritical) {
    set_value("CPU1 Temp", 84);
    EXPECT_EQ(health("CPU1 Temp"), SENSOR_HEALTH_OK);
    set_value("CPU1 Temp", 85);
    EXPECT_EQ(health("CPU1 Temp"), SENSOR_HEALTH_WARNING);
    EXPECT_EQ(crossed("CPU1 Temp"), THRESHOLD_UPPER_NON_CRITICAL);
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_WARNING);
    set_value("CPU1 Temp", 90);
    EXPECT_EQ(health("CPU1 Temp"), SENSOR_HEALTH_CRITICAL);
    set_value("CPU1 Temp", 99);
    EXPECT_EQ(crossed("CPU1 Temp"), THRESHOLD_UPPER_NON_CRITICAL | THRESHOLD_UPPER_CRITICAL |
                                        THRESHOLD_UPPER_NON_RECOVERABLE);
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_CRITICAL);
}

// Run in a child of its own: it plays the service loop.
int readings_kept_for_one_request() {
    if (platform::request_epoch() != 0) return 1;
    platform::start_request_epoch();
    set_value("CPU1 Temp", 90);
    // This process's own change is seen at once.
    if (health("CPU1 Temp") != SENSOR_HEALTH_CRITICAL) return 2;
    const pid_t other = ::fork();
    if (other == 0) {
        set_value("CPU1 Temp", 40);
        ::_exit(platform::request_epoch() == 0 ? 0 : 1);
    }
    int status = 0;
    if (::waitpid(other, &status, 0) != other || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return 3;
    // Another process's change waits for the next request.
    if (health("CPU1 Temp") != SENSOR_HEALTH_CRITICAL) return 4;
    platform::start_request_epoch();
    return health("CPU1 Temp") == SENSOR_HEALTH_OK ? 0 : 5;
}

TEST_F(SensorState, ReadingsAreKeptForOneRequestAtMost) {
    EXPECT_EQ(platform::request_epoch(), 0u);
    EXPECT_EXIT(std::exit(readings_kept_for_one_request()), ::testing::ExitedWithCode(0), "");
}

TEST_F(SensorState, LowerThresholdsBelowZeroAndFractionalVolts) {
    set_value("Inlet Temp", 3);
    EXPECT_EQ(health("Inlet Temp"), SENSOR_HEALTH_WARNING);
    set_value("Inlet Temp", -6);
    EXPECT_EQ(crossed("Inlet Temp"), THRESHOLD_LOWER_NON_CRITICAL | THRESHOLD_LOWER_CRITICAL |
                                         THRESHOLD_LOWER_NON_RECOVERABLE);
    set_value("12V", 11.2);
    EXPECT_EQ(health("12V"), SENSOR_HEALTH_WARNING);
    set_value("FAN2", 400);
    EXPECT_EQ(health("FAN2"), SENSOR_HEALTH_CRITICAL);
}

TEST_F(SensorState, MemoryChecksSeeDimmTemperaturesAndEcc) {
    set_value("CPU2_DIMM_A1 Temp", 81);
    EXPECT_EQ(UtilCheckAllMemHealthAndTemp(), SENSOR_HEALTH_WARNING);
    EXPECT_EQ(UtilCheckAllMemHealth(), SENSOR_HEALTH_OK);
    ASSERT_TRUE(platform::set_raw_reading(sensor("Memory ECC").sensor_number,
                                          MEMORY_STATE_UNCORRECTABLE_ECC));
    EXPECT_EQ(UtilCheckAllMemHealth(), SENSOR_HEALTH_CRITICAL);
    EXPECT_EQ(UtilCheckAllMemHealthAndTemp(), SENSOR_HEALTH_CRITICAL);
    ASSERT_TRUE(platform::set_raw_reading(sensor("Memory ECC").sensor_number,
                                          MEMORY_STATE_CORRECTABLE_ECC));
    EXPECT_EQ(UtilCheckAllMemHealth(), SENSOR_HEALTH_WARNING);
}

TEST_F(SensorState, DiscreteStatesMapToHealth) {
    uint8_t ps = sensor("PS1 Status").sensor_number;
    ASSERT_TRUE(platform::set_raw_reading(ps, PS_STATE_PRESENT | PS_STATE_FAILED));
    EXPECT_EQ(UtilGetSensorCurrStatus(ps, SENSOR_STATUS_HEALTH), SENSOR_HEALTH_CRITICAL);
    EXPECT_EQ(UtilGetSensorCurrStatus(ps, SENSOR_STATUS_STATE_BITS),
              PS_STATE_PRESENT | PS_STATE_FAILED);
    ASSERT_TRUE(platform::set_raw_reading(ps, 0));
    EXPECT_EQ(UtilGetSensorCurrStatus(ps, SENSOR_STATUS_HEALTH), SENSOR_HEALTH_UNAVAILABLE);
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_OK);

    uint8_t intrusion = sensor("Hardware Intrusion").sensor_number;
    ASSERT_TRUE(platform::set_raw_reading(intrusion, INTRUSION_STATE_GENERAL));
    EXPECT_EQ(health("Hardware Intrusion"), SENSOR_HEALTH_WARNING);
    ASSERT_EQ(UtilRearmSensorEvents(intrusion), PLT_OK);
    EXPECT_EQ(UtilGetSensorCurrStatus(intrusion, SENSOR_STATUS_STATE_BITS), 0);
    EXPECT_EQ(UtilRearmSensorEvents(intrusion), PLT_OK);
    EXPECT_EQ(UtilRearmSensorEvents(sensor("VBAT").sensor_number), PLT_ERR_NOT_FOUND);
}

TEST_F(SensorState, HostPoweredSensorsHaveNoReadingWhileOff) {
    set_value("CPU1 Temp", 99);
    ASSERT_EQ(PltCHASSIS_PowerDown(), PLT_OK);
    uint8_t raw = 0;
    EXPECT_EQ(UtilGetSensorReading(sensor("CPU1 Temp").sensor_number, &raw), PLT_ERR_UNAVAILABLE);
    EXPECT_EQ(health("CPU1 Temp"), SENSOR_HEALTH_UNAVAILABLE);
    EXPECT_EQ(crossed("CPU1 Temp"), PLT_ERR_UNAVAILABLE);
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_OK);
    EXPECT_EQ(UtilGetSensorReading(sensor("VBAT").sensor_number, &raw), PLT_OK);
    ASSERT_EQ(PltCHASSIS_PowerUp(), PLT_OK);
    EXPECT_EQ(health("CPU1 Temp"), SENSOR_HEALTH_CRITICAL);
}

TEST_F(SensorState, DriftStaysInTheNormalRangeAndExpiresEachSecond) {
    ASSERT_EQ(PltCHASSIS_PowerUp(), PLT_OK);
    EXPECT_EQ(run({"sensors", "drift", "7"}), bmcsim::exit_ok);
    set_value("FAN2", 400);
    std::set<int> steps;
    for (long long second = 1000; second < 1060; ++second)
        steps.insert(platform::drift_step(7, sensor("CPU1 Temp").sensor_number, second));
    EXPECT_EQ(steps, (std::set<int>{-2, -1, 0, 1, 2}));
    EXPECT_NE(platform::drift_step(7, 1, 1000) * 5 + platform::drift_step(7, 1, 1001),
              platform::drift_step(8, 1, 1000) * 5 + platform::drift_step(8, 1, 1001));

    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_CRITICAL);  // FAN2 stays as set
    ASSERT_EQ(UtilRearmSensorEvents(sensor("FAN2").sensor_number), PLT_ERR_NOT_FOUND);
    ASSERT_TRUE(platform::clear_raw_reading(sensor("FAN2").sensor_number));
    const St_SensorData& cpu = sensor("CPU1 Temp");  // a signed reading, far from thresholds
    uint8_t raw = 0;
    long long second = 0;
    for (int attempt = 0; attempt < 3 && second != lx_time_get(); ++attempt) {
        second = lx_time_get();
        ASSERT_EQ(UtilGetSensorReading(cpu.sensor_number, &raw), PLT_OK);
    }
    EXPECT_EQ(raw, cpu.nominal_reading + platform::drift_step(7, cpu.sensor_number, second));
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_OK);

    EXPECT_EQ(run({"sensors", "freeze"}), bmcsim::exit_ok);
    ASSERT_EQ(UtilGetSensorReading(cpu.sensor_number, &raw), PLT_OK);
    EXPECT_EQ(raw, cpu.nominal_reading);
    EXPECT_EQ(run({"sensors", "drift", "-1"}), bmcsim::exit_usage);
}

TEST_F(SensorState, BadArguments) {
    uint8_t raw = 0;
    St_SensorThresholds thresholds{};
    EXPECT_EQ(UtilGetSensorReading(0xEE, &raw), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(UtilGetSensorReading(sensor("VBAT").sensor_number, nullptr), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilGetSensorThreshold(sensor("PS1 Status").sensor_number, &thresholds),
              PLT_ERR_NOT_FOUND);
    EXPECT_EQ(UtilGetSensorCurrStatus(sensor("VBAT").sensor_number, 7), PLT_ERR_ARGUMENT);
    EXPECT_EQ(UtilGetSensorCurrStatus(0xEE, SENSOR_STATUS_HEALTH), PLT_ERR_NOT_FOUND);
    ASSERT_EQ(UtilGetSensorThreshold(sensor("VBAT").sensor_number, &thresholds), PLT_OK);
    EXPECT_EQ(thresholds.readable, 0x3F);
}

TEST_F(SensorState, MalformedStoredReadingsFallBackToNominal) {
    sim_testing::write_text(platform::sensor_readings_file(),
                            "[Readings]\n1=300\n2=x\n3=-1\n999=5\n4=50\n");
    auto stored = platform::stored_sensor_readings();
    EXPECT_EQ(stored->stored.size(), 1u);
    EXPECT_EQ(stored->stored.at(4), 50);
}

TEST_F(SensorState, ToolSetsReadingsInUnitsOrRaw) {
    EXPECT_EQ(run({"sensors", "set", "CPU1 Temp", "91"}), bmcsim::exit_ok);
    EXPECT_EQ(health("CPU1 Temp"), SENSOR_HEALTH_CRITICAL);
    EXPECT_EQ(run({"sensors", "set-raw", "0x30", "190"}), bmcsim::exit_ok);
    EXPECT_EQ(run({"sensors", "get", "12V"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str(), "11.4 V\n");
    EXPECT_EQ(run({"sensors", "set", "PS2 Status", "0x03"}), bmcsim::exit_ok);
    EXPECT_EQ(health("PS2 Status"), SENSOR_HEALTH_CRITICAL);
    EXPECT_EQ(run({"sensors", "reset"}), bmcsim::exit_ok);
    EXPECT_EQ(UtilGetSensorTotalStatus(), SENSOR_HEALTH_OK);

    EXPECT_EQ(run({"sensors", "set", "NoSuch", "1"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"sensors", "set", "VBAT", "3V"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"sensors", "list"}), bmcsim::exit_ok);
    EXPECT_NE(out_.str().find("Hardware Intrusion"), std::string::npos);
}

TEST(PcieCards, TheNicSensorBelongsToTheFirstAdapter) {
    int card = 0;
    ASSERT_EQ(PcieCardGetChip(sensor("OCP_NIC Temp").sensor_number, &card), PLT_OK);
    EXPECT_EQ(card, 1);
    EXPECT_EQ(PcieCardGetChip(sensor("CPU1 Temp").sensor_number, &card), PLT_ERR_NOT_FOUND);
}

}  // namespace
