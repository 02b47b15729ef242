// The simulated BMC's platform: shared state, CGI store, event log, tool.
#include <fcntl.h>
#include <gtest/gtest.h>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include "platform/sim/sdr_repository.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/bmc_root.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "platform/sim/crashdump_support.h"
#include "platform/sim/event_log.h"
#include "platform/sim/shared_state.h"
#include "platform/sim/tool/areas.h"
#include "tool_runner.h"

namespace {

// Sets or unsets an environment variable for one scope.
class scoped_env {
public:
    scoped_env(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        if (value)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    ~scoped_env() {
        if (old_)
            setenv(name_.c_str(), old_->c_str(), 1);
        else
            unsetenv(name_.c_str());
    }

private:
    std::string name_;
    std::optional<std::string> old_;
};

// Runs body in a forked child; returns its exit status (-1 if it did not exit).
pid_t start_child(const std::function<int()>& body) {
    pid_t pid = fork();
    if (pid == 0) _exit(body());
    return pid;
}

int wait_child(pid_t pid) {
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

int run_in_child(const std::function<int()>& body) { return wait_child(start_child(body)); }

// Each case gets a fresh BMC root; the previous root and attachment come back
// afterwards for the other tests in this binary.
class SimTest : public ::testing::Test {
protected:
    void SetUp() override {
        previous_root_ = platform::bmc_root();
        was_attached_ = at_p_St_GlobalVar != nullptr;
        GlobalParaFin();
        std::string pattern = std::filesystem::temp_directory_path().string() + "/bmc_sim_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        root_ = pattern;
        platform::set_bmc_root_for_tests(root_);
    }

    void TearDown() override {
        GlobalParaFin();
        platform::set_bmc_root_for_tests(previous_root_);
        if (was_attached_) GlobalParaInit();
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    // A root that can never be created: its parent is a regular file.
    void use_unwritable_root() {
        std::ofstream(root_ + "/file") << "x";
        platform::set_bmc_root_for_tests(root_ + "/file/root");
    }

    std::string root_;

private:
    std::string previous_root_;
    bool was_attached_ = false;
};

// ---------------------------------------------------------------- root

TEST_F(SimTest, BmcPathJoinsTheNormalisedRoot) {
    platform::set_bmc_root_for_tests(root_ + "//");
    EXPECT_EQ(platform::bmc_root(), root_);
    EXPECT_EQ(platform::bmc_path("/var/bmc/x"), root_ + "/var/bmc/x");
    platform::set_bmc_root_for_tests("/");
    EXPECT_EQ(platform::bmc_root(), "/");
    EXPECT_EQ(platform::bmc_path("/tmp/redfish.lock"), "/tmp/redfish.lock");
}

// ---------------------------------------------------------------- shared state

using SharedState = SimTest;

TEST_F(SharedState, FirstAttachCreatesTheFileWithDefaults) {
    ASSERT_NE(GlobalParaInit(), 0);
    ASSERT_NE(at_p_St_GlobalVar, nullptr);
    ASSERT_NE(InterfaceInfo, nullptr);
    EXPECT_TRUE(std::filesystem::exists(root_ + "/var/bmc/global.bin"));
    EXPECT_EQ(platform::shared_state_file(), root_ + "/var/bmc/global.bin");

    const St_GlobalVar& state = *at_p_St_GlobalVar;
    EXPECT_NE(state.layout_magic, 0u);
    EXPECT_EQ(state.layout_size, sizeof(St_GlobalVar));
    EXPECT_EQ(state.fcgi_mode, 0);
    EXPECT_EQ(state.boot_flags[0], 0);
    EXPECT_EQ(state.boot_flags[1], 0);
    EXPECT_EQ(state.identify_state, 0);
    EXPECT_EQ(state.power_cycle_byte, 1);
    EXPECT_EQ(state.fw_update_flags, 0u);
    EXPECT_STREQ(state.node_serial_number, "NODE0001");
    EXPECT_STREQ(state.node_part_number, "PN-NODE-01");
    EXPECT_EQ(state.sensor_count, platform::sdr_record_count());
    EXPECT_EQ(InterfaceInfo->kind, 0);
    EXPECT_STREQ(InterfaceInfo->user_name, "");
}

TEST_F(SharedState, AnEmptiedOrTruncatedFileIsInitialisedBeforeItFaults) {
    ASSERT_NE(GlobalParaInit(), 0);
    at_p_St_GlobalVar->fcgi_mode = 1;
    EXPECT_EQ(GlobalParaCheck(), 0);
    EXPECT_EQ(at_p_St_GlobalVar->fcgi_mode, 1);
    for (off_t size : {off_t(0), off_t(7), off_t(sizeof(St_GlobalVar))}) {
        ASSERT_EQ(truncate(platform::shared_state_file().c_str(), size), 0);
        EXPECT_EQ(GlobalParaCheck(), 1) << size;
        EXPECT_EQ(at_p_St_GlobalVar->fcgi_mode, 0);
        EXPECT_EQ(at_p_St_GlobalVar->sensor_count, platform::sdr_record_count());
        EXPECT_STREQ(at_p_St_GlobalVar->node_serial_number, "NODE0001");
    }
    std::ofstream(platform::shared_state_file(), std::ios::in | std::ios::binary) << "XXXX";
    EXPECT_EQ(GlobalParaCheck(), 1);
    EXPECT_EQ(GlobalParaCheck(), 0);
}

TEST_F(SharedState, ASecondMappingOfTheFileSeesBothRecords) {
    ASSERT_NE(GlobalParaInit(), 0);
    auto interface_offset =
        reinterpret_cast<char*>(InterfaceInfo) - reinterpret_cast<char*>(at_p_St_GlobalVar);
    struct stat status;
    ASSERT_EQ(stat(platform::shared_state_file().c_str(), &status), 0);
    const auto mapped = static_cast<std::size_t>(status.st_size);
    ASSERT_GE(mapped, interface_offset + sizeof(St_InterfaceInfo));

    int fd = open(platform::shared_state_file().c_str(), O_RDWR);
    ASSERT_GE(fd, 0);
    void* other = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    close(fd);
    ASSERT_NE(other, MAP_FAILED);
    auto* other_global = static_cast<St_GlobalVar*>(other);
    auto* other_interface =
        reinterpret_cast<St_InterfaceInfo*>(static_cast<char*>(other) + interface_offset);

    at_p_St_GlobalVar->fw_update_flags = 2;
    InterfaceInfo->privilege = 4;
    EXPECT_EQ(other_global->fw_update_flags, 2u);
    EXPECT_EQ(other_interface->privilege, 4);
    other_global->identify_lit = 1;
    std::strcpy(other_interface->user_name, "admin");
    EXPECT_EQ(at_p_St_GlobalVar->identify_lit, 1);
    EXPECT_STREQ(InterfaceInfo->user_name, "admin");
    munmap(other, mapped);
}

TEST_F(SharedState, AForkedChildThatAttachesAnewWritesToTheParentsView) {
    ASSERT_NE(GlobalParaInit(), 0);
    int status = run_in_child([] {
        GlobalParaFin();
        if (!GlobalParaInit() || at_p_St_GlobalVar->power_cycle_byte != 1) return 1;
        at_p_St_GlobalVar->fcgi_mode = 1;
        return 0;
    });
    ASSERT_EQ(status, 0);
    EXPECT_EQ(at_p_St_GlobalVar->fcgi_mode, 1);
}

TEST_F(SharedState, ProcessesAttachingTogetherInitialiseOnce) {
    constexpr int children = 8;
    std::vector<pid_t> pids;
    for (int i = 0; i < children; ++i)
        pids.push_back(start_child([i] {
            if (!GlobalParaInit()) return 1;
            __atomic_fetch_or(&at_p_St_GlobalVar->fw_update_flags, 1u << i, __ATOMIC_SEQ_CST);
            return 0;
        }));
    for (pid_t pid : pids) EXPECT_EQ(wait_child(pid), 0);
    ASSERT_NE(GlobalParaInit(), 0);
    // A late re-initialisation would have wiped an earlier child's bit.
    EXPECT_EQ(at_p_St_GlobalVar->fw_update_flags, (1u << children) - 1);
}

TEST_F(SharedState, DetachAndReattachKeepsTheState) {
    ASSERT_NE(GlobalParaInit(), 0);
    at_p_St_GlobalVar->identify_lit = 1;
    std::strcpy(at_p_St_GlobalVar->node_serial_number, "SER-42");
    GlobalParaFin();
    EXPECT_EQ(at_p_St_GlobalVar, nullptr);
    EXPECT_EQ(InterfaceInfo, nullptr);
    ASSERT_NE(GlobalParaInit(), 0);
    EXPECT_EQ(at_p_St_GlobalVar->identify_lit, 1);
    EXPECT_STREQ(at_p_St_GlobalVar->node_serial_number, "SER-42");
}

TEST_F(SharedState, AFileOfAnotherLayoutIsInitialisedAgain) {
    const std::string path = platform::shared_state_file();
    const std::vector<std::pair<const char*, std::function<void(int)>>> corruptions = {
        {"magic",
         [](int fd) {
             uint32_t bad = 0xdeadbeef;
             ASSERT_EQ(pwrite(fd, &bad, 4, 0), 4);
         }},
        {"size field",
         [](int fd) {
             uint32_t bad = 3;
             ASSERT_EQ(pwrite(fd, &bad, 4, 4), 4);
         }},
        {"short file", [](int fd) { ASSERT_EQ(ftruncate(fd, 16), 0); }},
        {"long file", [](int fd) { ASSERT_EQ(ftruncate(fd, 65536), 0); }},
    };
    for (const auto& [what, corrupt] : corruptions) {
        SCOPED_TRACE(what);
        ASSERT_NE(GlobalParaInit(), 0);
        at_p_St_GlobalVar->fcgi_mode = 1;
        at_p_St_GlobalVar->fw_update_flags = 2;
        GlobalParaFin();
        int fd = open(path.c_str(), O_RDWR);
        ASSERT_GE(fd, 0);
        corrupt(fd);
        close(fd);

        ASSERT_NE(GlobalParaInit(), 0);
        EXPECT_EQ(at_p_St_GlobalVar->layout_size, sizeof(St_GlobalVar));
        EXPECT_EQ(at_p_St_GlobalVar->fcgi_mode, 0);
        EXPECT_EQ(at_p_St_GlobalVar->fw_update_flags, 0u);
        EXPECT_STREQ(at_p_St_GlobalVar->node_serial_number, "NODE0001");
        GlobalParaFin();
        // The repaired file is accepted as it is.
        ASSERT_NE(GlobalParaInit(), 0);
        at_p_St_GlobalVar->fcgi_mode = 1;
        GlobalParaFin();
        ASSERT_NE(GlobalParaInit(), 0);
        EXPECT_EQ(at_p_St_GlobalVar->fcgi_mode, 1);
        GlobalParaFin();
    }
}

TEST_F(SharedState, AnUnwritableRootFailsWithoutAttaching) {
    use_unwritable_root();
    EXPECT_EQ(GlobalParaInit(), 0);
    EXPECT_EQ(at_p_St_GlobalVar, nullptr);
    EXPECT_EQ(InterfaceInfo, nullptr);
}

// ---------------------------------------------------------------- CGI store

TEST(CgiStore, GetCgiEnvTruncatesButReturnsTheFullLength) {
    scoped_env method("BMC_TEST_VAR", "PATCHED");
    char buffer[16];
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(get_cgi_env("BMC_TEST_VAR", buffer, 5), 7);
    EXPECT_STREQ(buffer, "PATCH");
    EXPECT_EQ(get_cgi_env("BMC_TEST_VAR", buffer, 7), 7);
    EXPECT_STREQ(buffer, "PATCHED");
    EXPECT_EQ(get_cgi_env("BMC_TEST_VAR", buffer, 15), 7);
    EXPECT_STREQ(buffer, "PATCHED");
    EXPECT_EQ(get_cgi_env("BMC_TEST_VAR", buffer, 0), 7);
    EXPECT_STREQ(buffer, "");
}

TEST(CgiStore, GetCgiEnvTellsEmptyFromUnset) {
    char buffer[8] = "junk";
    {
        scoped_env empty("BMC_TEST_VAR", "");
        EXPECT_EQ(get_cgi_env("BMC_TEST_VAR", buffer, 7), 0);
        EXPECT_STREQ(buffer, "");
    }
    scoped_env unset("BMC_TEST_VAR", nullptr);
    EXPECT_EQ(get_cgi_env("BMC_TEST_VAR", buffer, 7), -1);
}

TEST(CgiStore, ContentLengthIsAPlainDecimalCappedAtTheMaximum) {
    struct example {
        const char* value;
        int expected;
    };
    const example examples[] = {
        {nullptr, 0},
        {"", 0},
        {"abc", 0},
        {"12abc", 0},
        {"-5", 0},
        {" 5", 0},
        {"+5", 0},
        {"0", 0},
        {"1", 1},
        {"32767", 32767},
        {"32768", 32768},
        {"32769", 32768},
        {"99999999999999999999999", 32768},
    };
    for (const auto& [value, expected] : examples) {
        SCOPED_TRACE(value ? value : "(unset)");
        scoped_env length("CONTENT_LENGTH", value);
        EXPECT_EQ(get_cgi_content_length(32768), expected);
    }
}

// The list as (name, value) pairs, checking the tail link on the way.
std::vector<std::pair<std::string, std::string>> cgi_list() {
    std::vector<std::pair<std::string, std::string>> pairs;
    void* tail = &CgiVarsListHead;
    for (CgiVar* var = CgiVarsListHead.first; var && pairs.size() < 100; var = var->next) {
        pairs.emplace_back(var->name, var->value);
        tail = &var->next;
    }
    EXPECT_EQ(CgiVarsListHead.last, tail);
    return pairs;
}

void expect_empty_head() {
    EXPECT_EQ(CgiVarsListHead.first, nullptr);
    EXPECT_EQ(CgiVarsListHead.last, static_cast<void*>(&CgiVarsListHead));
}

TEST(CgiStore, QueryStringIsSplitAndUrlDecodedInOrder) {
    scoped_env query("QUERY_STRING", "a=1&b=x%20y+z&%24top=5&flag&&c=%zz&d=%4&e=%3D%3d");
    ASSERT_EQ(cgiInitialize(), 0);
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"a", "1"},   {"b", "x y z"}, {"$top", "5"}, {"flag", ""},
        {"c", "%zz"}, {"d", "%4"},    {"e", "=="},
    };
    EXPECT_EQ(cgi_list(), expected);
    FreeCGIResoure();
    expect_empty_head();
}

TEST(CgiStore, EmptyOrAbsentQueryLeavesTheEmptyHead) {
    for (const char* value : {static_cast<const char*>(nullptr), "", "&&"}) {
        scoped_env query("QUERY_STRING", value);
        ASSERT_EQ(cgiInitialize(), 0);
        expect_empty_head();
        FreeCGIResoure();
    }
}

// ---------------------------------------------------------------- event log

using EventLog = SimTest;

TEST_F(EventLog, RecordsReadBackAsWrittenOneLineEach) {
    EXPECT_TRUE(platform::read_event_log().empty());
    long long before = lx_time_get();
    ASSERT_EQ(LibSaveSysEvtLog(137, 0, "/redfish/v1/SessionService/Sessions/"), 0);
    ASSERT_EQ(LibSaveSysEvtLog(146, -3, "quote \" backslash \\ line\nbreak \xff end"), 0);
    ASSERT_EQ(LibSaveSysEvtLog(147, 7, nullptr), 0);
    long long after = lx_time_get();

    auto records = platform::read_event_log();
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].code, 137);
    EXPECT_EQ(records[0].text, "/redfish/v1/SessionService/Sessions/");
    EXPECT_EQ(records[1].argument, -3);
    EXPECT_EQ(records[1].text, "quote \" backslash \\ line\nbreak \xEF\xBF\xBD end");
    EXPECT_EQ(records[2].code, 147);
    EXPECT_EQ(records[2].argument, 7);
    EXPECT_EQ(records[2].text, "");
    for (const auto& record : records) {
        EXPECT_GE(record.time, before);
        EXPECT_LE(record.time, after);
    }
    std::ifstream file(platform::event_log_file());
    std::string line;
    int lines = 0;
    while (lines < 10 && std::getline(file, line)) ++lines;
    EXPECT_EQ(lines, 3);
}

TEST_F(EventLog, ConcurrentWritersNeverInterleave) {
    constexpr int children = 6;
    constexpr int per_child = 40;
    const std::string padding(900, 'p');  // all of it fits the log
    std::vector<pid_t> pids;
    for (int child = 0; child < children; ++child)
        pids.push_back(start_child([&, child] {
            for (int n = 0; n < per_child; ++n) {
                std::string text = std::to_string(child) + ":" + std::to_string(n) + ":" + padding;
                if (LibSaveSysEvtLog(child, n, text.c_str()) != 0) return 1;
            }
            return 0;
        }));
    for (pid_t pid : pids) EXPECT_EQ(wait_child(pid), 0);

    auto records = platform::read_event_log();
    ASSERT_EQ(records.size(), static_cast<std::size_t>(children * per_child));
    std::vector<int> next(children, 0);
    for (const auto& record : records) {
        ASSERT_GE(record.code, 0);
        ASSERT_LT(record.code, children);
        EXPECT_EQ(record.argument, next[record.code]++);
        EXPECT_EQ(record.text, std::to_string(record.code) + ":" + std::to_string(record.argument) +
                                   ":" + padding);
    }
}

TEST_F(EventLog, AFloodKeepsTheNewestLinesWithinTheBound) {
    const std::string padding(4000, 'f');
    const int lines = static_cast<int>(3 * platform::max_event_log_bytes / padding.size());
    for (int n = 0; n < lines; ++n) ASSERT_EQ(LibSaveSysEvtLog(137, n, padding.c_str()), 0);
    struct stat current {
    }, older{};
    ASSERT_EQ(stat(platform::event_log_file().c_str(), &current), 0);
    ASSERT_EQ(stat(platform::older_event_log_file().c_str(), &older), 0);
    EXPECT_LE(static_cast<std::size_t>(current.st_size), platform::max_event_log_bytes);
    EXPECT_LE(static_cast<std::size_t>(older.st_size), platform::max_event_log_bytes);
    auto records = platform::read_event_log();
    ASSERT_GT(records.size(), platform::max_event_log_bytes / padding.size());
    EXPECT_EQ(records.back().argument, lines - 1);  // the newest, in order
    for (std::size_t at = 1; at < records.size(); ++at)
        EXPECT_EQ(records[at].argument, records[at - 1].argument + 1);
    ASSERT_TRUE(platform::clear_event_log());
    EXPECT_TRUE(platform::read_event_log().empty());
}

TEST_F(EventLog, ClearEmptiesTheLogAndAppendingGoesOn) {
    ASSERT_EQ(LibSaveSysEvtLog(1, 0, "one"), 0);
    ASSERT_TRUE(platform::clear_event_log());
    EXPECT_TRUE(platform::read_event_log().empty());
    ASSERT_EQ(LibSaveSysEvtLog(2, 0, "two"), 0);
    auto records = platform::read_event_log();
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].text, "two");
}

TEST_F(EventLog, MalformedLinesAreSkipped) {
    ASSERT_EQ(LibSaveSysEvtLog(1, 0, "kept"), 0);
    {
        std::ofstream file(platform::event_log_file(), std::ios::app);
        file << "not json\n{\"time\":1,\"code\":\"x\",\"argument\":0,\"text\":\"\"}\n";
    }
    ASSERT_EQ(LibSaveSysEvtLog(2, 0, "also kept"), 0);
    auto records = platform::read_event_log();
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[1].text, "also kept");
}

TEST_F(EventLog, AnUnwritableRootFails) {
    use_unwritable_root();
    EXPECT_EQ(LibSaveSysEvtLog(1, 0, "lost"), -1);
    EXPECT_FALSE(platform::clear_event_log());
    EXPECT_TRUE(platform::read_event_log().empty());
}

// ---------------------------------------------------------------- client and settings

TEST(ClientAddress, ComesFromRemoteAddrAndIsNeverCut) {
    char buffer[61];
    {
        scoped_env address("REMOTE_ADDR", "2001:db8::1");
        EXPECT_EQ(GetClientIP(buffer, sizeof buffer), 0);
        EXPECT_STREQ(buffer, "2001:db8::1");
        char small[8];
        EXPECT_NE(GetClientIP(small, sizeof small), 0);
        EXPECT_STREQ(small, "");
    }
    scoped_env unset("REMOTE_ADDR", nullptr);
    EXPECT_NE(GetClientIP(buffer, sizeof buffer), 0);
}

using Crashdump = SimTest;

TEST_F(Crashdump, SupportIsOffUntilEnabled) {
    EXPECT_EQ(is_ACD_crashdump_supported(), 0);
    ASSERT_TRUE(platform::set_crashdump_supported(true));
    EXPECT_NE(is_ACD_crashdump_supported(), 0);
    ASSERT_TRUE(platform::set_crashdump_supported(false));
    EXPECT_EQ(is_ACD_crashdump_supported(), 0);
    EXPECT_TRUE(platform::set_crashdump_supported(false));
}

// ---------------------------------------------------------------- bmcsim

class BmcsimTool : public SimTest, public tool_runner {};

TEST_F(BmcsimTool, StateSetChangesTheSharedRecord) {
    EXPECT_EQ(run({"state", "set", "fcgi_mode", "1"}), 0);
    EXPECT_EQ(run({"state", "set", "fw_update_flags", "0x2"}), 0);
    EXPECT_EQ(run({"state", "set", "boot_flags.1", "255"}), 0);
    EXPECT_EQ(run({"state", "set", "node_serial_number", "SN 77"}), 0);
    int status = run_in_child([] {
        GlobalParaFin();
        return GlobalParaInit() && at_p_St_GlobalVar->fcgi_mode == 1 &&
                       at_p_St_GlobalVar->fw_update_flags == 2 &&
                       at_p_St_GlobalVar->boot_flags[1] == 255 &&
                       std::strcmp(at_p_St_GlobalVar->node_serial_number, "SN 77") == 0
                   ? 0
                   : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(run({"state", "get", "fw_update_flags"}), 0);
    EXPECT_EQ(out_.str(), "2\n");
}

TEST_F(BmcsimTool, StateSetRefusesWhatDoesNotFit) {
    const std::vector<bmcsim::arguments> refused = {
        {"state", "set", "identify_lit", "256"},
        {"state", "set", "identify_lit", "-1"},
        {"state", "set", "identify_lit", "one"},
        {"state", "set", "sensor_count", "65536"},
        {"state", "set", "layout_size", "1"},
        {"state", "set", "interface.kind", "5"},
        {"state", "set", "no_such_field", "1"},
        {"state", "set", "node_part_number", std::string(32, 'x')},
        {"state", "set", "fcgi_mode"},
    };
    for (const auto& words : refused) {
        SCOPED_TRACE(words[2]);
        EXPECT_EQ(run(words), bmcsim::exit_usage);
        EXPECT_NE(err_.str().find("usage: bmcsim"), std::string::npos);
    }
    ASSERT_NE(GlobalParaInit(), 0);
    EXPECT_EQ(at_p_St_GlobalVar->identify_lit, 0);
    EXPECT_EQ(at_p_St_GlobalVar->layout_size, sizeof(St_GlobalVar));
    EXPECT_STREQ(at_p_St_GlobalVar->node_part_number, "PN-NODE-01");
}

TEST_F(BmcsimTool, FailuresExit1) {
    use_unwritable_root();
    EXPECT_EQ(run({"state", "show"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"eventlog", "add", "1", "x"}), bmcsim::exit_failed);
    EXPECT_EQ(run({"crashdump", "enable"}), bmcsim::exit_failed);
}

}  // namespace
