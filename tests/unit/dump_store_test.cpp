// The simulated dump store: one generation per kind at a time, claims that
// end with their task or its worker, dumps that appear only whole, the
// store's bound, removal, and the evidence that holds updates back.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <filesystem>
#include <string>

#include "platform/libdump.h"
#include "platform/libfwupdate.h"
#include "platform/libipmi.h"
#include "platform/libtask.h"
#include "platform/plt_result.h"
#include "platform/sim/dump_store.h"
#include "sim_root_fixture.h"
#include "tool_runner.h"

using sim_testing::sim_root;

namespace {

class dump_store : public sim_root, public tool_runner {
protected:
    int claimed_task(int kind) {
        int task_id = 0;
        EXPECT_EQ(TaskServiceAddTask("Dump", &task_id), 0);
        EXPECT_EQ(DumpClaimGeneration(kind, task_id), PLT_OK);
        return task_id;
    }

    // Claims and generates; the reason on failure.
    std::string generate(int kind) {
        char reason[DUMP_REASON_MAX + 1] = {};
        const int task_id = claimed_task(kind);
        return DumpGenerate(kind, task_id, reason, sizeof reason) == PLT_OK ? "" : reason;
    }

    long long size_of(int kind) {
        DumpInfo info{};
        return DumpGetInfo(kind, &info) == PLT_OK ? info.size : -1;
    }

    std::string content_of(int kind) {
        DumpInfo info{};
        const int fd = DumpOpen(kind, &info);
        gzFile in = fd >= 0 ? gzdopen(fd, "rb") : nullptr;
        std::string text;
        char block[4096];
        for (int got; in && (got = gzread(in, block, sizeof block)) > 0;) text.append(block, got);
        if (in) gzclose(in);
        return text;
    }

    int files_in_store() {
        int count = 0;
        for (const auto& entry :
             std::filesystem::directory_iterator(platform::sim::dump_directory()))
            count += entry.path().extension() != ".lock";
        return count;
    }
};

}  // namespace

TEST_F(dump_store, GeneratesWholeCompressedDumpsFromTheSimulatorsState) {
    ASSERT_EQ(LibSaveSysEvtLog(146, 0, "seen by the evidence"), 0);
    EXPECT_EQ(DumpGetInfo(DUMP_BMC_EVIDENCE, nullptr), PLT_ERR_ARGUMENT);
    DumpInfo info{};
    EXPECT_EQ(DumpGetInfo(DUMP_BMC_EVIDENCE, &info), PLT_ERR_NOT_FOUND);
    EXPECT_LT(DumpOpen(DUMP_BMC_EVIDENCE, &info), 0);

    ASSERT_EQ(generate(DUMP_BMC_EVIDENCE), "");
    EXPECT_NE(content_of(DUMP_BMC_EVIDENCE).find("146 0 seen by the evidence\n"),
              std::string::npos);
    ASSERT_EQ(generate(DUMP_DRIVE_SMART), "");
    EXPECT_NE(content_of(DUMP_DRIVE_SMART).find("Power_On_Hours"), std::string::npos);
    EXPECT_EQ(files_in_store(), 2) << "no part file stays";
    ASSERT_EQ(DumpGetInfo(DUMP_DRIVE_SMART, &info), PLT_OK);
    EXPECT_STREQ(info.file_name, "drive_smart_dump.log.gz");
}

TEST_F(dump_store, OneGenerationPerKindUntilItsTaskOrWorkerEnds) {
    const int first = claimed_task(DUMP_BMC_EVIDENCE);
    EXPECT_EQ(DumpIsGenerating(DUMP_BMC_EVIDENCE), 1);
    EXPECT_EQ(evidence_dump_in_progress(), 1);
    EXPECT_EQ(DumpIsGenerating(DUMP_DRIVE_SMART), 0);
    int second = 0;
    ASSERT_EQ(TaskServiceAddTask("Dump", &second), 0);
    EXPECT_EQ(DumpClaimGeneration(DUMP_BMC_EVIDENCE, second), PLT_ERR_STATE);
    EXPECT_EQ(DumpClaimGeneration(DUMP_DRIVE_SMART, second), PLT_OK);
    EXPECT_EQ(DumpClaimGeneration(DUMP_KIND_COUNT, second), PLT_ERR_ARGUMENT);

    // A worker that dies leaves no claim behind.
    const pid_t worker = sim_testing::start_child([] { return 0; });
    ASSERT_EQ(TaskServiceSetTaskWorker(first, worker), 0);
    ASSERT_EQ(sim_testing::wait_child(worker), 0);
    EXPECT_EQ(DumpIsGenerating(DUMP_BMC_EVIDENCE), 0);
    EXPECT_EQ(evidence_dump_in_progress(), 0);

    // A generation that ends frees its kind before its task shows the end.
    char reason[DUMP_REASON_MAX + 1] = {};
    EXPECT_EQ(DumpGenerate(DUMP_DRIVE_SMART, second, reason, sizeof reason), PLT_OK);
    EXPECT_EQ(DumpIsGenerating(DUMP_DRIVE_SMART), 0);
}

TEST_F(dump_store, KeepsItsLimitByRemovingTheOldestOtherDumps) {
    ASSERT_EQ(generate(DUMP_DRIVE_SMART), "");
    ASSERT_EQ(generate(DUMP_HOST_CRASH), "");
    ASSERT_EQ(generate(DUMP_BMC_EVIDENCE), "");
    const long long evidence = size_of(DUMP_BMC_EVIDENCE);
    const long long crash = size_of(DUMP_HOST_CRASH);
    ASSERT_TRUE(platform::sim::set_dump_store_limit(evidence + crash));
    ASSERT_EQ(generate(DUMP_BMC_EVIDENCE), "");
    EXPECT_EQ(size_of(DUMP_DRIVE_SMART), -1) << "the oldest goes first";
    EXPECT_EQ(size_of(DUMP_HOST_CRASH), crash);

    // A dump larger than the whole store changes nothing.
    ASSERT_TRUE(platform::sim::set_dump_store_limit(platform::sim::min_dump_store_limit));
    EXPECT_NE(generate(DUMP_BMC_EVIDENCE).find("more than the 64 bytes"), std::string::npos);
    EXPECT_EQ(size_of(DUMP_BMC_EVIDENCE), evidence);
    EXPECT_EQ(size_of(DUMP_HOST_CRASH), crash);
    EXPECT_EQ(files_in_store(), 2);
    EXPECT_FALSE(platform::sim::set_dump_store_limit(platform::sim::min_dump_store_limit - 1));
    EXPECT_FALSE(platform::sim::set_dump_store_limit(platform::sim::max_dump_store_limit + 1));
}

TEST_F(dump_store, RemovesOneAllOrTheStaleEvidence) {
    for (int kind : {DUMP_BMC_EVIDENCE, DUMP_BIOS_EVIDENCE, DUMP_DRIVE_SMART})
        ASSERT_EQ(generate(kind), "");
    RemoveEvidenceDumps();
    EXPECT_EQ(size_of(DUMP_BMC_EVIDENCE), -1);
    EXPECT_EQ(size_of(DUMP_BIOS_EVIDENCE), -1);
    EXPECT_GT(size_of(DUMP_DRIVE_SMART), 0);
    EXPECT_EQ(DumpDelete(DUMP_BMC_EVIDENCE), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(DumpDelete(-1), PLT_ERR_ARGUMENT);
    EXPECT_EQ(DumpDelete(DUMP_DRIVE_SMART), PLT_OK);
    ASSERT_EQ(generate(DUMP_HOST_CRASH), "");
    EXPECT_EQ(DumpDeleteAll(), PLT_OK);
    EXPECT_EQ(files_in_store(), 0);
}

TEST_F(dump_store, ToolShowsAndChangesTheStore) {
    EXPECT_EQ(run({"dumps", "limit", "63"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"dumps", "hold", "maybe"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"dumps", "delete", "everything"}), bmcsim::exit_usage);
    EXPECT_EQ(run({"dumps", "delete", "bmc-evidence"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"dumps", "limit", "4096"}), bmcsim::exit_ok);
    EXPECT_EQ(run({"dumps", "hold", "on"}), bmcsim::exit_ok);
    EXPECT_TRUE(platform::sim::dump_generation_held());
    ASSERT_EQ(run({"dumps", "show"}), bmcsim::exit_ok);
    EXPECT_EQ(out_.str().substr(0, 22), "limit=4096 hold=on\nhos");
}

TEST(Peci, MalformedRequestsAreRefusedBeforeTheHostIsAsked) {
    unsigned char response[8] = {};
    const unsigned char short_request[] = {0x30, 1};
    const unsigned char wrong_length[] = {0x30, 2, 8, 0xf7};
    const unsigned char too_much_read[] = {0x30, 1, 9, 0xf7};
    EXPECT_EQ(PeciSendRaw(short_request, 2, response, 8), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PeciSendRaw(wrong_length, 4, response, 8), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PeciSendRaw(too_much_read, 4, response, 8), PLT_ERR_ARGUMENT);
    EXPECT_EQ(PeciSendRaw(nullptr, 4, response, 8), PLT_ERR_ARGUMENT);
}
