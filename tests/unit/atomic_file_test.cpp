#include "platform/atomic_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/record_lock.h"
#include "sim_root_fixture.h"

namespace {

using AtomicFile = sim_testing::sim_root;

mode_t mode_of(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::vector<std::string> names_in(const std::string& directory) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(AtomicFile, WritesWholeFilesWithTheirModeAndNothingElse) {
    const std::string secret = path("/nv/redfish/ldap.ini");
    const mode_t saved = umask(0);
    EXPECT_TRUE(platform::write_file_atomically(secret, std::string("a\0b", 3), 0600));
    umask(saved);
    EXPECT_EQ(sim_testing::file_text(secret), std::string("a\0b", 3));
    EXPECT_EQ(mode_of(secret), 0600u);
    EXPECT_TRUE(platform::write_file_atomically(secret, "new", 0644));
    EXPECT_EQ(sim_testing::file_text(secret), "new");
    EXPECT_EQ(mode_of(secret), 0644u);
    EXPECT_EQ(names_in(path("/nv/redfish")), std::vector<std::string>{"ldap.ini"});
}

TEST_F(AtomicFile, AFailedWriteLeavesTheFileAsItWas) {
    sim_testing::write_text(path("/nv/a"), "old");
    sim_testing::write_text(path("/nv/file"), "not a directory");
    EXPECT_FALSE(platform::write_file_atomically(path("/nv/file/b"), "x", 0600));
    EXPECT_TRUE(std::filesystem::is_regular_file(path("/nv/file")));

    platform::staged_files both;
    EXPECT_TRUE(both.stage(path("/nv/a"), "new", 0600));
    EXPECT_FALSE(both.stage(path("/nv/file/b"), "x", 0600));
    EXPECT_FALSE(both.commit());
    EXPECT_EQ(sim_testing::file_text(path("/nv/a")), "old");
    EXPECT_EQ(names_in(path("/nv")), (std::vector<std::string>{"a", "file"}));
}

TEST_F(AtomicFile, StagedFilesChangeTogetherOrNotAtAll) {
    sim_testing::write_text(path("/nv/a"), "old a");
    {
        platform::staged_files dropped;
        ASSERT_TRUE(dropped.stage(path("/nv/a"), "dropped", 0600));
        ASSERT_TRUE(dropped.stage(path("/nv/b"), "dropped", 0600));
    }
    EXPECT_EQ(sim_testing::file_text(path("/nv/a")), "old a");
    EXPECT_EQ(names_in(path("/nv")), std::vector<std::string>{"a"});

    platform::staged_files both;
    ASSERT_TRUE(both.stage(path("/nv/a"), "new a", 0600));
    ASSERT_TRUE(both.stage(path("/nv/b"), "new b", 0600));
    ASSERT_TRUE(both.commit());
    EXPECT_EQ(sim_testing::file_text(path("/nv/a")), "new a");
    EXPECT_EQ(sim_testing::file_text(path("/nv/b")), "new b");
}

TEST_F(AtomicFile, TemporariesOfKilledWritersAreSweptOthersKept) {
    const pid_t dead = sim_testing::start_child([] { return 0; });
    ASSERT_EQ(sim_testing::wait_child(dead), 0);
    const std::string target = path("/nv/redfish/sessionservice.ini");
    const std::string stale = target + ".tmp." + std::to_string(dead) + ".0";
    const std::string live = target + ".tmp." + std::to_string(getpid()) + ".99";
    for (const std::string& file : {stale, live, path("/nv/redfish/other.ini.tmp.1.0")})
        sim_testing::write_text(file, "half");
    ASSERT_TRUE(platform::write_file_atomically(target, "whole", 0600));
    EXPECT_FALSE(std::filesystem::exists(stale));
    EXPECT_TRUE(std::filesystem::exists(live));
    EXPECT_TRUE(std::filesystem::exists(path("/nv/redfish/other.ini.tmp.1.0")));
}

// Whether another process could take the lock file now.
bool free_for_others(const std::string& lock_path) {
    return sim_testing::run_in_child([&] {
               int fd = open(lock_path.c_str(), O_RDWR);
               struct flock whole {};
               whole.l_type = F_WRLCK;
               whole.l_whence = SEEK_SET;
               return fd >= 0 && fcntl(fd, F_SETLK, &whole) == 0 ? 0 : 1;
           }) == 0;
}

TEST_F(AtomicFile, ARecordLockTakenTwiceIsHeldUntilTheLastRelease) {
    const std::string lock_path = path("/nv/redfish/ldap.ini.lock");
    {
        platform::record_lock outer(lock_path);
        ASSERT_TRUE(outer.held());
        {
            platform::record_lock inner(lock_path);
            EXPECT_TRUE(inner.held());
        }
        EXPECT_FALSE(free_for_others(lock_path));
    }
    EXPECT_TRUE(free_for_others(lock_path));
}

}  // namespace
