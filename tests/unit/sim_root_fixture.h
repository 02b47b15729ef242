// A fresh BMC root for each test case of the simulated user table and its
// neighbours, and forked children for the cross-process cases.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "base/bmc_root.h"
#include "platform/libalert.h"
#include "platform/libipmi_users.h"

namespace sim_testing {

// The lockout functions' clock while a sim_root test runs.
inline long fake_now = 1000000;
inline long fake_clock() { return fake_now; }

// Creates or changes the user of a slot and commits it, as the service does.
inline void add_user(int slot, const char* name, const char* password, int level,
                     bool enabled = true) {
    ASSERT_EQ(lx_mutex_get(USER_TABLE_MUTEX), 0);
    ASSERT_EQ(UtilSetUserName(slot, name), 0) << name;
    ASSERT_EQ(UtilSetUserPassword(slot, password), 0);
    ASSERT_EQ(UtilSetLANPriv(slot, level), 0);
    ASSERT_EQ(UtilSetUserEnable(slot, enabled ? 1 : 0), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(USER_TABLE_MUTEX), 0);
}

// An enabled Redfish destination for every event type, committed.
inline void add_redfish_destination(int index, const char* url) {
    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    ASSERT_EQ(set_config_alert_dest(index, url), 0);
    ASSERT_EQ(set_config_alert_proto(index, ALERT_DEST_REDFISH), 0);
    ASSERT_EQ(enable_pef_filter(index, 1), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
}

// Runs body in a forked child; its result is the child's exit status.
inline pid_t start_child(const std::function<int()>& body) {
    pid_t pid = fork();
    if (pid == 0) _exit(body());
    return pid;
}

inline int wait_child(pid_t pid) {
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

inline int run_in_child(const std::function<int()>& body) { return wait_child(start_child(body)); }

inline std::string file_text(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline void write_text(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

class sim_root : public ::testing::Test {
protected:
    void SetUp() override {
        previous_root_ = platform::bmc_root();
        std::string pattern = std::filesystem::temp_directory_path().string() + "/bmc_users_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        root_ = pattern;
        platform::set_bmc_root_for_tests(root_);
        fake_now = 1000000;
    }

    void TearDown() override {
        platform::set_bmc_root_for_tests(previous_root_);
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    std::string path(const std::string& absolute) const { return root_ + absolute; }

    std::string root_;

private:
    std::string previous_root_;
};

}  // namespace sim_testing
