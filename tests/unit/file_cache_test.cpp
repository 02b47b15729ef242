// The per-process cache of parsed files: another process's change must be
// seen by the next read, however quickly it follows.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <string>

#include "base/file_cache.h"
#include "base/input_recording.h"
#include "base/request_epoch.h"
#include "framework/ini_settings.h"
#include "framework/redfish.h"
#include "framework/response_cache.h"
#include "platform/libipmi.h"
#include "platform/libserial.h"
#include "platform/sim/memory_modules.h"
#include "platform/sim/sensor_readings.h"
#include "platform/sim/serial_port.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/smbios_store.h"
#include "service/resource_reads.h"
#include "sim_root_fixture.h"
#include "stdout_capture.h"

namespace {

using platform::file_cache;

class FileCache : public sim_testing::sim_root {
protected:
    // Reads the file through the cache and counts the loads.
    std::string read(const std::string& file) {
        std::shared_ptr<const std::string> text;
        int result = cache_.get(
            file,
            [&](std::string& parsed) {
                ++loads_;
                return platform::sim::read_file(file, parsed) ? PLT_OK : PLT_ERR_IO;
            },
            text);
        return result == PLT_OK ? *text : "error";
    }

    void TearDown() override {
        platform::set_settle_clock_for_tests(nullptr);
        sim_root::TearDown();
    }

    // Writes text to file from another process, as bmcsim would.
    static bool written_by_another_process(const std::string& file, const std::string& text) {
        const pid_t other = ::fork();
        if (other == 0) {
            sim_testing::write_text(file, text);
            ::_exit(0);
        }
        int status = 0;
        return ::waitpid(other, &status, 0) == other && WIFEXITED(status);
    }

    // Lets every file written so far settle, as if a minute had passed.
    static void settle() { platform::set_settle_clock_for_tests(a_minute_later); }

    static long long a_minute_later() {
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        return (now.tv_sec + 60) * 1000000000LL + now.tv_nsec;
    }

    file_cache<std::string> cache_;
    int loads_ = 0;
};

// A resource built from a file, and maybe from state without a version.
class counted_resource : public odata::redfish::redfish {
public:
    counted_resource(odata::redfish::request_context& context, std::string file, bool unversioned)
        : redfish(context, "Sample", "v1_0_0", "Sample", context.uri),
          file_(std::move(file)),
          unversioned_(unversioned) {}
    int get(odata::redfish::request_context&) override {
        ++builds;
        platform::note_input_file(file_);
        if (unversioned_) platform::note_unversioned_input();
        set_common_properties();
        return 0;
    }
    int builds = 0;

private:
    std::string file_;
    bool unversioned_;
};

// A reusable route's answer is built once while its noted inputs stay; one
// that read something without a version is built every time.
TEST_F(FileCache, OnlyAnswersOfNotedInputsAreUsedAgain) {
    const std::string file = path("/state.ini");
    sim_testing::write_text(file, "one");
    settle();
    for (bool unversioned : {false, true}) {
        odata::redfish::request_context context;
        context.method = odata::redfish::GET;
        context.uri = unversioned ? "/redfish/v1/Unversioned" : "/redfish/v1/Noted";
        int builds = 0;
        for (int round = 0; round < 3; ++round) {
            counted_resource resource(context, file, unversioned);
            stdout_capture capture;
            odata::redfish::get_resource(resource, context, true);
            builds += resource.builds;
        }
        EXPECT_EQ(builds, unversioned ? 3 : 1) << context.uri;
    }
}

TEST_F(FileCache, AnUnchangedSettledFileIsParsedOnce) {
    const std::string file = path("/a.ini");
    sim_testing::write_text(file, "one");
    settle();
    EXPECT_EQ(read(file), "one");
    EXPECT_EQ(read(file), "one");
    EXPECT_EQ(loads_, 1);
}

TEST_F(FileCache, AFreshFileIsReadAgainUntilItSettles) {
    const std::string file = path("/a.ini");
    sim_testing::write_text(file, "one");
    EXPECT_EQ(read(file), "one");
    // Same size, same inode, rewritten within the same tick of the clock.
    sim_testing::write_text(file, "two");
    EXPECT_EQ(read(file), "two");
    EXPECT_EQ(loads_, 2);
}

TEST_F(FileCache, EveryChangeOfASettledFileIsSeenAtOnce) {
    const std::string file = path("/a.ini");
    sim_testing::write_text(file, "one");
    settle();
    EXPECT_EQ(read(file), "one");
    ASSERT_TRUE(platform::sim::replace_file(file, "two", 0644));
    EXPECT_EQ(read(file), "two");
    sim_testing::write_text(file, "three");
    EXPECT_EQ(read(file), "three");
    EXPECT_EQ(read(path("/missing.ini")), "error");
    EXPECT_EQ(read(file), "three");
    ASSERT_EQ(std::remove(file.c_str()), 0);
    EXPECT_EQ(read(file), "error");
    sim_testing::write_text(file, "four");
    EXPECT_EQ(read(file), "four");
}

// Paths resolved once stay under the root of the moment.
TEST_F(FileCache, FixedPathsFollowTheRoot) {
    const std::string kept = platform::sensor_readings_file();
    EXPECT_EQ(kept, path("/var/bmc/sensors.ini"));
    platform::set_bmc_root_for_tests(root_ + "/other");
    EXPECT_EQ(platform::sensor_readings_file(), path("/other/var/bmc/sensors.ini"));
    platform::set_bmc_root_for_tests(root_);
    EXPECT_EQ(platform::sensor_readings_file(), kept);
}

// The service loop reads the watch's events once per request: its own
// writes are seen at once, another process's by the next request.
TEST_F(FileCache, ChangesAreSeenAtOnceOrByTheNextRequest) {
    const std::string file = path("/a.ini");
    sim_testing::write_text(file, "one");
    settle();
    const auto one_request_after_another = [&] {
        platform::start_request_epoch();
        if (read(file) != "one") return 1;
        if (!platform::sim::replace_file(file, "two", 0644) || read(file) != "two") return 2;
        if (!written_by_another_process(file, "three")) return 3;
        platform::start_request_epoch();
        return read(file) == "three" ? 0 : 4;
    };
    EXPECT_EXIT(std::exit(one_request_after_another()), ::testing::ExitedWithCode(0), "");
}

// A platform reader keeps the parsed file, not a copy of what it read last:
// another process's change reaches the next request.
TEST_F(FileCache, APlatformSettingFollowsAnotherProcesssChange) {
    const std::string file = platform::serial_settings_file();
    sim_testing::write_text(file, "[Port1]\nBitRate=9600\n");
    settle();
    const auto bit_rate = [] {
        St_SerialConfig config{};
        return PltSERIAL_GetConfig(1, &config) == PLT_OK ? config.bit_rate : 0u;
    };
    const auto one_request_after_another = [&] {
        platform::start_request_epoch();
        if (bit_rate() != 9600 || bit_rate() != 9600) return 1;
        if (!written_by_another_process(file, "[Port1]\nBitRate=19200\n")) return 2;
        platform::start_request_epoch();
        return bit_rate() == 19200 ? 0 : 3;
    };
    EXPECT_EXIT(std::exit(one_request_after_another()), ::testing::ExitedWithCode(0), "");
}

TEST_F(FileCache, AKeptSettingFollowsItsFile) {
    const odata::redfish::ini_settings file("/kept.ini");
    const odata::redfish::kept_setting<long> timeout(file, "Session.Timeout", 30);
    EXPECT_EQ(timeout.get(), 30);
    sim_testing::write_text(path("/kept.ini"), "[Session]\nTimeout=600\n");
    EXPECT_EQ(timeout.get(), 600);
    settle();
    EXPECT_EQ(timeout.get(), 600);
    ASSERT_TRUE(platform::sim::replace_file(path("/kept.ini"), "[Session]\nTimeout=60\n", 0600));
    EXPECT_EQ(timeout.get(), 60);
    sim_testing::write_text(path("/kept.ini"), "[Session]\nTimeout=no\n");
    EXPECT_EQ(timeout.get(), 30);
}

TEST_F(FileCache, TheSmbiosTableFollowsItsFile) {
    std::string generated;
    ASSERT_EQ(platform::load_smbios_table(generated), PLT_OK);
    settle();
    std::shared_ptr<const platform::smbios_snapshot> first;
    ASSERT_EQ(platform::load_smbios_structures(first), PLT_OK);
    std::shared_ptr<const platform::smbios_snapshot> again;
    ASSERT_EQ(platform::load_smbios_structures(again), PLT_OK);
    EXPECT_EQ(first, again);
    ASSERT_EQ(platform::remove_memory_module("CPU1_DIMM_A1"), platform::module_removal::removed);
    std::shared_ptr<const platform::smbios_snapshot> changed;
    ASSERT_EQ(platform::load_smbios_structures(changed), PLT_OK);
    EXPECT_NE(changed->table, first->table);
    EXPECT_EQ(changed->table.size(), first->table.size());
    // The structures point into their own snapshot's table.
    EXPECT_GE(changed->structures.front().formatted.data(), changed->table.data());
    EXPECT_EQ(platform::remove_memory_module("CPU1_DIMM_A1"),
              platform::module_removal::no_such_module);
}

TEST_F(FileCache, AMissingFileIsParsedOnceUntilItAppears) {
    const std::string file = path("/late.ini");
    auto read_or_empty = [&] {
        std::shared_ptr<const std::string> text;
        EXPECT_EQ(cache_.get(
                      file,
                      [&](std::string& parsed) {
                          ++loads_;
                          platform::sim::read_file(file, parsed);
                          return PLT_OK;
                      },
                      text),
                  PLT_OK);
        return *text;
    };
    EXPECT_EQ(read_or_empty(), "");
    EXPECT_EQ(read_or_empty(), "");
    EXPECT_EQ(loads_, 1);
    sim_testing::write_text(file, "one");
    EXPECT_EQ(read_or_empty(), "one");
}

// A cached answer lasts exactly as long as every file it was built from.
TEST_F(FileCache, AnAnswerIsReusedUntilOneOfItsInputsChanges) {
    const std::string sensors = path("/sensors.ini");
    const std::string absent = path("/absent.ini");
    sim_testing::write_text(sensors, "one");
    settle();
    odata::redfish::response_cache answers;
    {
        platform::input_recording recording;
        EXPECT_EQ(read(sensors), "one");
        platform::note_input_file(absent);
        std::optional<platform::recorded_inputs> inputs = recording.finish();
        ASSERT_TRUE(inputs);
        EXPECT_EQ(inputs->files.size(), 2u);
        answers.store("key", {"body", "\"etag\"", std::move(*inputs)});
    }
    ASSERT_NE(answers.find("key"), nullptr);
    EXPECT_EQ(answers.find("key")->body, "body");
    // Creating a file that was missing is a change too.
    sim_testing::write_text(absent, "now here");
    EXPECT_EQ(answers.find("key"), nullptr);
    EXPECT_EQ(answers.find("key"), nullptr);
}

TEST_F(FileCache, AWatchedAnswerSeesWritesInPlaceAndDirectoriesThatAppear) {
    const std::string file = path("/a.ini");
    const std::string deep = path("/later/HII/setting");
    sim_testing::write_text(file, "one");
    settle();
    auto recorded = [&] {
        platform::input_recording recording;
        platform::note_input_file(file);
        platform::note_input_file(deep);
        std::optional<platform::recorded_inputs> inputs = recording.finish();
        EXPECT_TRUE(inputs && inputs->start_watching());
        return *inputs;
    };
    platform::recorded_inputs inputs = recorded();
    EXPECT_TRUE(inputs.unchanged());
    sim_testing::write_text(file, "two");
    EXPECT_FALSE(inputs.unchanged());
    inputs = recorded();
    ASSERT_EQ(::mkdir(path("/later").c_str(), 0755), 0);
    EXPECT_FALSE(inputs.unchanged());
    inputs = recorded();
    EXPECT_TRUE(inputs.unchanged());
    ASSERT_EQ(::mkdir(path("/later/HII").c_str(), 0755), 0);
    EXPECT_FALSE(inputs.unchanged());
}

TEST_F(FileCache, WorkOnFreshOrShiftingInputsIsNotReusable) {
    const std::string file = path("/a.ini");
    sim_testing::write_text(file, "one");
    {
        // Written within the last second: a later write may look the same.
        platform::input_recording recording;
        platform::note_input_file(file);
        EXPECT_FALSE(recording.finish());
    }
    settle();
    {
        platform::input_recording recording;
        platform::note_input_file(file);
        ASSERT_TRUE(platform::sim::replace_file(file, "two", 0644));
        platform::note_input_file(file);
        EXPECT_FALSE(recording.finish());
    }
    // Nothing is noted outside a recording.
    platform::note_input_file(file);
    platform::input_recording recording;
    std::optional<platform::recorded_inputs> inputs = recording.finish();
    ASSERT_TRUE(inputs);
    EXPECT_TRUE(inputs->files.empty());
}

TEST_F(FileCache, AnAnswerLastsUntilTheFirstScheduledStep) {
    auto recorded = [](std::initializer_list<long long> steps) {
        platform::input_recording recording;
        for (long long step : steps) platform::note_input_expiry(step);
        return *recording.finish();
    };
    const long long now = lx_time_get();
    EXPECT_TRUE(recorded({now + 100, now + 50}).unchanged());
    EXPECT_FALSE(recorded({now + 100, now}).unchanged());
}

TEST_F(FileCache, AnAnswerFollowsTheSharedParameterBlock) {
    const bool attached = at_p_St_GlobalVar != nullptr;
    if (!attached) {
        ASSERT_NE(GlobalParaInit(), 0);
    }
    platform::input_recording recording;
    std::optional<platform::recorded_inputs> inputs = recording.finish();
    ASSERT_TRUE(inputs);
    EXPECT_TRUE(inputs->unchanged());
    at_p_St_GlobalVar->identify_lit ^= 1;
    EXPECT_FALSE(inputs->unchanged());
    at_p_St_GlobalVar->identify_lit ^= 1;
    EXPECT_TRUE(inputs->unchanged());
    if (!attached) GlobalParaFin();
}

// Session records come and go by the thousand: the watch forgets them
// rather than grow, and a watcher it forgot takes its file as changed.
TEST_F(FileCache, WatchingThousandsOfFilesKeepsTheWatchSmall) {
    sim_testing::write_text(path("/early"), "one");
    platform::watched_files early;
    ASSERT_TRUE(early.watch({path("/early")}));
    for (int record = 0; record < 2000; ++record) {
        platform::watched_files session;
        ASSERT_TRUE(session.watch({path("/redfish_" + std::to_string(record))}));
    }
    EXPECT_LE(platform::file_watch::instance().watched_keys(), platform::file_watch::max_keys);
    EXPECT_FALSE(early.unchanged());
    sim_testing::write_text(path("/recent"), "one");
    platform::watched_files recent;
    ASSERT_TRUE(recent.watch({path("/recent")}));
    EXPECT_TRUE(recent.unchanged());
    sim_testing::write_text(path("/recent"), "two");
    EXPECT_FALSE(recent.unchanged());
}

TEST_F(FileCache, TheResponseCacheStaysSmall) {
    odata::redfish::response_cache answers;
    const std::string large(100 * 1024, 'x');
    for (int i = 0; i < 4; ++i) answers.store(std::to_string(i), {large, "", {}});
    // The third answer did not fit beside the first two, so they went.
    EXPECT_EQ(answers.find("0"), nullptr);
    EXPECT_NE(answers.find("3"), nullptr);
    answers.store("huge", {std::string(300 * 1024, 'x'), "", {}});
    EXPECT_EQ(answers.find("huge"), nullptr);
    EXPECT_NE(answers.find("3"), nullptr);
}

}  // namespace
