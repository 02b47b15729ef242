#include "base/atomic_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "base/record_lock.h"
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

// A pid that surely belongs to no living process.
pid_t reaped_child() {
    const pid_t child = sim_testing::start_child([] { return 0; });
    EXPECT_EQ(sim_testing::wait_child(child), 0);
    return child;
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

    // A journal directory that others could read is made private.
    std::filesystem::create_directories(path("/var/bmc/commits"));
    chmod(path("/var/bmc/commits").c_str(), 0755);
    platform::staged_files both;
    ASSERT_TRUE(both.stage(path("/nv/a"), "new a", 0600));
    ASSERT_TRUE(both.stage(path("/nv/b"), "new b", 0600));
    ASSERT_TRUE(both.commit());
    EXPECT_EQ(sim_testing::file_text(path("/nv/a")), "new a");
    EXPECT_EQ(sim_testing::file_text(path("/nv/b")), "new b");
    EXPECT_EQ(mode_of(path("/var/bmc/commits")), 0700u);
    EXPECT_TRUE(names_in(path("/var/bmc/commits")).empty());
}

TEST_F(AtomicFile, AFailedRenameOrJournalPutsTheSetBackAndLeavesNoJournal) {
    sim_testing::write_text(path("/nv/a"), "old a");
    platform::staged_files both;
    ASSERT_TRUE(both.stage(path("/nv/a"), "new a", 0600));
    ASSERT_TRUE(both.stage(path("/nv/b"), "new b", 0600));
    // A file cannot be renamed over a directory that holds something.
    std::filesystem::create_directories(path("/nv/b/occupied"));
    EXPECT_FALSE(both.commit());
    EXPECT_EQ(sim_testing::file_text(path("/nv/a")), "old a");
    EXPECT_EQ(names_in(path("/nv")), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(names_in(path("/var/bmc/commits")).empty());

    std::filesystem::remove_all(path("/var/bmc/commits"));
    sim_testing::write_text(path("/var/bmc/commits"), "not a directory");
    platform::staged_files unjournaled;
    ASSERT_TRUE(unjournaled.stage(path("/nv/a"), "new a", 0600));
    EXPECT_FALSE(unjournaled.commit());
    EXPECT_EQ(sim_testing::file_text(path("/nv/a")), "old a");
    EXPECT_EQ(names_in(path("/nv")), (std::vector<std::string>{"a", "b"}));
}

// What a writer killed between two renames leaves: "new" staged for every
// target, listed in its journal, and only the first target renamed.
void leave_half_commit(const std::string& journal, pid_t writer,
                       const std::vector<std::string>& targets) {
    std::string listing;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const std::string temporary =
            targets[i] + ".tmp." + std::to_string(writer) + "." + std::to_string(i);
        sim_testing::write_text(temporary, "new");
        listing += temporary + "\t" + targets[i] + "\n";
    }
    std::filesystem::rename(targets[0] + ".tmp." + std::to_string(writer) + ".0", targets[0]);
    sim_testing::write_text(journal, listing);
}

TEST_F(AtomicFile, AKilledWritersSetIsFinishedWholeAndNothingElseMoves) {
    const pid_t dead = reaped_child();
    const std::vector<std::string> set{path("/nv/bmc/users"), path("/nv/redfish/lan.ini"),
                                       path("/tmp/new_file")};
    for (const std::string& target : {set[0], set[1], path("/nv/unrelated")})
        sim_testing::write_text(target, "old");
    const std::string unrelated_temporary =
        path("/nv/unrelated.tmp.") + std::to_string(dead) + ".0";
    sim_testing::write_text(unrelated_temporary, "half");
    const std::string journals = path("/var/bmc/commits/") + std::to_string(dead);
    leave_half_commit(journals + ".0", dead, set);
    sim_testing::write_text(journals + ".1.tmp." + std::to_string(dead) + ".0", "never renamed");

    platform::finish_interrupted_commits();
    for (const std::string& target : set) EXPECT_EQ(sim_testing::file_text(target), "new");
    EXPECT_EQ(names_in(path("/nv/redfish")), std::vector<std::string>{"lan.ini"});
    EXPECT_EQ(names_in(path("/tmp")), std::vector<std::string>{"new_file"});
    EXPECT_TRUE(names_in(path("/var/bmc/commits")).empty());
    EXPECT_EQ(sim_testing::file_text(path("/nv/unrelated")), "old");
    EXPECT_EQ(sim_testing::file_text(unrelated_temporary), "half");
}

TEST_F(AtomicFile, JournalsOfLivingOrDamagedWritersStay) {
    const pid_t dead = reaped_child();
    const std::string target = path("/nv/a");
    sim_testing::write_text(target, "old");
    const std::string commits = path("/var/bmc/commits/");
    const pid_t living = getppid();
    leave_half_commit(commits + std::to_string(living) + ".0", living, {path("/nv/b"), target});
    const std::string dead_name = std::to_string(dead);
    const std::string stolen = path("/nv/unrelated");
    sim_testing::write_text(stolen, "unrelated");
    const std::vector<std::string> damaged{
        "",
        target + ".tmp." + dead_name + ".0\t" + target,  // cut short
        stolen + "\t" + target + "\n",                   // moves a file that is not a temporary
        target + ".tmp.x/../../unrelated\t" + target + "\n",
        "relative.tmp.1.0\trelative\n",
        std::string("\0\t\n\xff", 4)};
    sim_testing::write_text(target + ".tmp." + dead_name + ".0", "new");
    for (std::size_t i = 0; i < damaged.size(); ++i)
        sim_testing::write_text(commits + dead_name + "." + std::to_string(i), damaged[i]);

    platform::finish_interrupted_commits();
    EXPECT_EQ(sim_testing::file_text(target), "old");
    EXPECT_EQ(sim_testing::file_text(stolen), "unrelated");
    EXPECT_EQ(names_in(path("/var/bmc/commits")).size(), damaged.size() + 1);
    EXPECT_EQ(sim_testing::file_text(target + ".tmp." + std::to_string(living) + ".1"), "new");
}

// After a restart, a new process may get the pid of a writer that was
// killed: its journal is no commit of the new process.
TEST_F(AtomicFile, AJournalUnderTheOwnPidIsAnEarlierProcesssAndIsFinished) {
    const std::vector<std::string> set{path("/nv/a"), path("/nv/b")};
    for (const std::string& target : set) sim_testing::write_text(target, "old");
    leave_half_commit(path("/var/bmc/commits/") + std::to_string(getpid()) + ".0", getpid(), set);

    platform::finish_interrupted_commits();
    for (const std::string& target : set) EXPECT_EQ(sim_testing::file_text(target), "new");
    EXPECT_TRUE(names_in(path("/var/bmc/commits")).empty());
}

TEST_F(AtomicFile, TheSweepFinishesAKilledWritersSetInsteadOfDeletingIt) {
    const pid_t dead = reaped_child();
    const std::vector<std::string> set{path("/nv/a"), path("/nv/b"), path("/nv/c")};
    for (const std::string& target : set) sim_testing::write_text(target, "old");
    leave_half_commit(path("/var/bmc/commits/") + std::to_string(dead) + ".0", dead, set);
    sim_testing::write_text(set[2] + ".tmp." + std::to_string(dead) + ".7", "unjournaled");

    platform::remove_stale_temporaries(set[2]);
    for (const std::string& target : set) EXPECT_EQ(sim_testing::file_text(target), "new");
    EXPECT_EQ(names_in(path("/nv")), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_TRUE(names_in(path("/var/bmc/commits")).empty());
}

// Generation numbers that a child commits to every file of a set until it
// is killed; it reports each whole commit on the pipe.
pid_t start_committing(const std::vector<std::string>& set, int report) {
    return sim_testing::start_child([&set, report] {
        for (int generation = 1; generation <= 1000000; ++generation) {
            platform::staged_files files;
            for (const std::string& file : set)
                if (!files.stage(file, std::to_string(generation), 0600)) return 1;
            if (!files.commit() || write(report, "+", 1) != 1) return 1;
        }
        return 0;
    });
}

TEST_F(AtomicFile, AWriterKilledAtAnyMomentLeavesWholeSetsAfterRecovery) {
    const std::vector<std::string> set{path("/nv/bmc/users"), path("/nv/redfish/lan.ini"),
                                       path("/tmp/alerts")};
    for (int trial = 0; trial < 20; ++trial) {
        int progress[2];
        ASSERT_EQ(pipe(progress), 0);
        const pid_t writer = start_committing(set, progress[1]);
        close(progress[1]);
        // Killed after a varying number of whole commits, somewhere in the next.
        int committed = 0;
        char report;
        while (committed <= trial % 5 && read(progress[0], &report, 1) == 1) ++committed;
        // A varying delay moves the kill to a different step of the commit.
        for (int step = 0; step < trial * 2000; ++step) getppid();
        kill(writer, SIGKILL);
        sim_testing::wait_child(writer);
        close(progress[0]);

        platform::finish_interrupted_commits();
        for (const std::string& file : set) platform::remove_stale_temporaries(file);
        const std::string generation = sim_testing::file_text(set[0]);
        EXPECT_GE(std::atoi(generation.c_str()), committed) << "trial " << trial;
        for (const std::string& file : set)
            EXPECT_EQ(sim_testing::file_text(file), generation) << file << ", trial " << trial;
        EXPECT_EQ(names_in(path("/nv/bmc")), std::vector<std::string>{"users"});
        EXPECT_EQ(names_in(path("/nv/redfish")), std::vector<std::string>{"lan.ini"});
        EXPECT_EQ(names_in(path("/tmp")), std::vector<std::string>{"alerts"});
        EXPECT_TRUE(names_in(path("/var/bmc/commits")).empty());
    }
}

TEST_F(AtomicFile, TemporariesOfKilledWritersAreSweptOthersKept) {
    const pid_t dead = reaped_child();
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
