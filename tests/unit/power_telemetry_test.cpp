// The power-consumption history the simulator keeps and the metrics the
// telemetry service computes from it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "hardware_root_fixture.h"
#include "platform/libipmi_power.h"
#include "platform/sim/power_history.h"
#include "resources/chassis/power_consumption_metrics.h"

using namespace odata::redfish;
using platform::power_history;

namespace {

class PowerHistoryTool : public sim_testing::hardware_root {};

power_metric metric(const char* report_id) { return *metric_of_report(report_id); }

std::vector<St_PowerSample> samples(std::initializer_list<std::pair<uint32_t, uint16_t>> list) {
    std::vector<St_PowerSample> made;
    for (const auto& [minute, watts] : list) made.push_back({minute, watts});
    return made;
}

std::vector<St_PowerSample> served_history(uint32_t& last_minute) {
    std::vector<St_PowerSample> history(POWER_HISTORY_MINUTES);
    int count = 0;
    EXPECT_EQ(PltPSU_GetPowerHistory(history.data(), POWER_HISTORY_MINUTES, &count, &last_minute),
              PLT_OK);
    history.resize(count);
    return history;
}

std::string file_text(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

TEST(PowerHistory, EncodingRoundTripsAndRefusesWhatIsNoHistory) {
    power_history history;
    history.settled_minute = 5000;
    history.samples = samples({{4998, 300}, {4999, 65535}, {5000, 0}});
    const std::string text = platform::encode_power_history(history);
    EXPECT_EQ(text.size(), 12u + 3 * 6);
    power_history decoded;
    ASSERT_TRUE(platform::decode_power_history(text, decoded));
    EXPECT_EQ(decoded.settled_minute, 5000u);
    ASSERT_EQ(decoded.samples.size(), 3u);
    EXPECT_EQ(decoded.samples[1].watts, 65535);
    // Cut, padded, reordered, or claiming more than a week: refused, and
    // what was decoded before stays.
    std::string reordered = text;
    std::swap_ranges(reordered.begin() + 12, reordered.begin() + 18, reordered.begin() + 18);
    std::string oversized = text;
    oversized[8] = static_cast<char>(0xff);
    oversized[9] = static_cast<char>(0xff);
    for (const std::string& bad :
         {text.substr(0, text.size() - 1), text + "x", reordered, oversized,
          std::string("PWH2") + text.substr(4), std::string()}) {
        EXPECT_FALSE(platform::decode_power_history(bad, decoded));
        EXPECT_EQ(decoded.samples.size(), 3u);
    }
}

TEST(PowerHistory, ExtendingKeepsOneWeekOfSamplesWhileTheHostIsOn) {
    power_history history;  // never settled: the whole week is implied
    platform::extend_power_history(history, 20000, true, 285);
    ASSERT_EQ(history.samples.size(), static_cast<size_t>(POWER_HISTORY_MINUTES));
    EXPECT_EQ(history.samples.front().minute, 20000u - POWER_HISTORY_MINUTES + 1);
    EXPECT_EQ(history.samples.back().minute, 20000u);
    // Off for ten minutes adds nothing; the week moves on all the same.
    platform::extend_power_history(history, 20010, false, 285);
    EXPECT_EQ(history.samples.size(), static_cast<size_t>(POWER_HISTORY_MINUTES) - 10);
    EXPECT_EQ(history.settled_minute, 20010u);
    // A minute already settled is never sampled twice.
    platform::extend_power_history(history, 20011, true, 400);
    platform::extend_power_history(history, 20011, true, 500);
    EXPECT_EQ(history.samples.back().minute, 20011u);
    EXPECT_EQ(history.samples.back().watts, 400);
    // A long gap leaves only what falls in the week.
    platform::extend_power_history(history, 20011 + 2 * POWER_HISTORY_MINUTES, false, 0);
    EXPECT_TRUE(history.samples.empty());
}

TEST(PowerHistory, PutSamplesReplaceTheirMinutesButNeverAnUnsettledOne) {
    power_history history;
    platform::extend_power_history(history, 20000, true, 285);
    ASSERT_TRUE(platform::put_power_samples(history, 19998, {1, 2, 3}));
    EXPECT_EQ(history.samples.size(), static_cast<size_t>(POWER_HISTORY_MINUTES));
    EXPECT_EQ(history.samples.back().watts, 3);
    EXPECT_EQ(history.samples[history.samples.size() - 3].watts, 1);
    const power_history before = history;
    EXPECT_FALSE(platform::put_power_samples(history, 19999, {1, 2, 3}));
    EXPECT_FALSE(platform::put_power_samples(history, 19999, {}));
    EXPECT_EQ(platform::encode_power_history(history), platform::encode_power_history(before));
}

TEST(PowerMetrics, NineReportsEachNamingItsDefinition) {
    ASSERT_EQ(power_metrics().size(), 9u);
    for (const power_metric& each : power_metrics()) {
        EXPECT_EQ(metric_definition_id(*metric_of_report(metric_report_id(each))),
                  metric_definition_id(each));
        EXPECT_TRUE(metric_of_definition(metric_definition_id(each)));
    }
    EXPECT_FALSE(metric_of_report("AvgPowerConsumedHour"));
    EXPECT_FALSE(metric_of_definition("AvgPowerConsumedYear"));
}

TEST(PowerMetrics, StatisticsCoverExactlyTheirPeriod) {
    // 1000 lies just outside the hour that ends with minute 1060.
    const auto history = samples({{1000, 900}, {1001, 100}, {1059, 200}, {1060, 201}});
    EXPECT_EQ(power_metric_value(metric("AvgPowerConsumptionHour"), history, 1060), 167u);
    EXPECT_EQ(power_metric_value(metric("MinPowerConsumptionHour"), history, 1060), 100u);
    EXPECT_EQ(power_metric_value(metric("MaxPowerConsumptionHour"), history, 1060), 201u);
    EXPECT_EQ(power_metric_value(metric("MaxPowerConsumptionDay"), history, 1060), 900u);
    // Halves round up.
    EXPECT_EQ(
        power_metric_value(metric("AvgPowerConsumptionHour"), samples({{10, 1}, {11, 2}}), 11), 2u);
    // Samples after the last minute are not in the period; none is no value.
    EXPECT_FALSE(power_metric_value(metric("AvgPowerConsumptionWeek"), history, 999));
    EXPECT_FALSE(power_metric_value(metric("MinPowerConsumptionDay"), {}, 1060));
    const auto busy = std::vector<St_PowerSample>(POWER_HISTORY_MINUTES, St_PowerSample{5, 65535});
    EXPECT_EQ(power_metric_value(metric("AvgPowerConsumptionWeek"), busy, 5), 65535u);
}

TEST_F(PowerHistoryTool, AddedSamplesAreServedAndBadOnesChangeNothing) {
    ASSERT_EQ(run({"telemetry", "clear"}), bmcsim::exit_ok);
    ASSERT_EQ(run({"telemetry", "add-samples", "3", "100", "200", "300"}), bmcsim::exit_ok);
    uint32_t last_minute = 0;
    std::vector<St_PowerSample> history = served_history(last_minute);
    // The host is on: minutes after the last settled one carry its draw.
    ASSERT_GE(history.size(), 3u);
    const auto added = std::find_if(history.begin(), history.end(),
                                    [](const St_PowerSample& each) { return each.watts == 100; });
    ASSERT_NE(added, history.end());
    ASSERT_GE(history.end() - added, 3);
    EXPECT_EQ(added[1].watts, 200);
    EXPECT_EQ(added[2].watts, 300);
    EXPECT_LE(added[2].minute, last_minute);
    const std::string before = file_text(platform::power_history_file());
    for (const bmcsim::arguments& bad :
         {bmcsim::arguments{"telemetry", "add-samples", "2", "1", "2", "3"},
          {"telemetry", "add-samples", "0", "1"},
          {"telemetry", "add-samples", "10081", "1"},
          {"telemetry", "add-samples", "5", "70000"},
          {"telemetry", "add-samples", "5"}})
        EXPECT_EQ(run(bad), bmcsim::exit_usage);
    EXPECT_EQ(file_text(platform::power_history_file()), before);
    int count = 0;
    EXPECT_EQ(PltPSU_GetPowerHistory(nullptr, 1, &count, &last_minute), PLT_ERR_ARGUMENT);
}

TEST_F(PowerHistoryTool, AMalformedFileIsAnEmptyHistory) {
    ASSERT_EQ(run({"power", "off"}), bmcsim::exit_ok);
    std::ofstream(platform::power_history_file()) << "not a history";
    uint32_t last_minute = 0;
    EXPECT_TRUE(served_history(last_minute).empty());
    ASSERT_EQ(run({"telemetry", "add-samples", "1", "42"}), bmcsim::exit_ok);
    const std::vector<St_PowerSample> history = served_history(last_minute);
    ASSERT_EQ(history.size(), 1u);
    EXPECT_EQ(history[0].minute, last_minute);
}

TEST_F(PowerHistoryTool, ReadsNeverWriteAndAChangeOfDrawSettlesTheOldOne) {
    uint32_t last_minute = 0;
    const std::vector<St_PowerSample> fresh = served_history(last_minute);
    EXPECT_FALSE(std::filesystem::exists(platform::power_history_file()));
    ASSERT_EQ(fresh.size(), static_cast<size_t>(POWER_HISTORY_MINUTES));
    EXPECT_EQ(fresh.back().minute, last_minute);
    ASSERT_EQ(run({"power", "consumed", "400"}), bmcsim::exit_ok);
    platform::power_history stored;
    ASSERT_TRUE(platform::decode_power_history(file_text(platform::power_history_file()), stored));
    ASSERT_FALSE(stored.samples.empty());
    for (const St_PowerSample& each : served_history(last_minute))
        EXPECT_EQ(each.watts, each.minute <= stored.settled_minute ? fresh.back().watts : 400)
            << each.minute;
}
