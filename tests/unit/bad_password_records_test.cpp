// The simulated BMC's bad-password records: stored per subject, bounded,
// shared between processes; what they mean is the service's policy.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "platform/libipmi_users.h"
#include "platform/sim/bad_password_records.h"
#include "sim_root_fixture.h"

namespace {

using sim_testing::run_in_child;

class BadPasswordRecords : public sim_testing::sim_root {
protected:
    St_BadPwdRecord read(const char* subject, int64_t counted_since = 0) {
        St_BadPwdRecord record{-1, -1};
        EXPECT_EQ(GetBadPwdRecords(subject, counted_since, &record), 0);
        return record;
    }
};

TEST_F(BadPasswordRecords, FailuresAreCountedPerSubjectWithinTheirWindow) {
    EXPECT_EQ(read("slot:2:7").failures, 0);
    EXPECT_EQ(AddBadPwdRecords("slot:2:7", 100, 0), 1);
    EXPECT_EQ(AddBadPwdRecords("slot:2:7", 110, 0), 2);
    EXPECT_EQ(AddBadPwdRecords("name:nobody", 110, 0), 1);
    EXPECT_EQ(read("slot:2:7").failures, 2);
    EXPECT_EQ(read("slot:2:7", 105).failures, 1);  // only those since
    // Adding forgets what no longer counts.
    EXPECT_EQ(AddBadPwdRecords("slot:2:7", 200, 150), 1);
    // Another process adds to the same records.
    EXPECT_EQ(run_in_child([] { return AddBadPwdRecords("slot:2:7", 201, 150) == 2 ? 0 : 1; }), 0);
    EXPECT_EQ(read("slot:2:7").failures, 2);

    struct stat status;
    ASSERT_EQ(stat(platform::lockout_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600);
    EXPECT_EQ(platform::lockout_file(), path("/var/bmc/lockout"));
}

TEST_F(BadPasswordRecords, ALockForgetsTheFailuresUntilCleared) {
    AddBadPwdRecords("slot:2:7", 100, 0);
    ASSERT_EQ(LockBadPwdSubject("slot:2:7", 120), 0);
    St_BadPwdRecord record = read("slot:2:7");
    EXPECT_EQ(record.failures, 0);
    EXPECT_EQ(record.locked_at, 120);
    EXPECT_EQ(ClearBadPwdRecords("slot:2:7"), 0);
    EXPECT_EQ(read("slot:2:7").locked_at, 0);
    EXPECT_EQ(ClearBadPwdRecords("slot:2:7"), 0);  // nothing left: no change
}

TEST_F(BadPasswordRecords, UnlockUserForgetsEverySubjectOfTheSlot) {
    LockBadPwdSubject("slot:1:5 from 10.0.0.1", 100);
    LockBadPwdSubject("slot:1:5 from 10.0.0.2", 100);
    LockBadPwdSubject("slot:11:9", 100);
    LockBadPwdSubject("name:slot:1:", 100);
    ASSERT_EQ(run_in_child([] { return UnlockUser(1); }), 0);
    EXPECT_EQ(read("slot:1:5 from 10.0.0.1").locked_at, 0);
    EXPECT_EQ(read("slot:1:5 from 10.0.0.2").locked_at, 0);
    EXPECT_EQ(read("slot:11:9").locked_at, 100);
    EXPECT_EQ(read("name:slot:1:").locked_at, 100);
}

TEST_F(BadPasswordRecords, TheRecordsStayBoundedAndSlotsGoLast) {
    ASSERT_EQ(LockBadPwdSubject("slot:3:1", 1), 0);  // changed before every name
    for (int i = 0; i < MAX_BAD_PWD_SUBJECTS + 20; ++i) {
        const std::string name = "name:guess" + std::to_string(i);
        ASSERT_EQ(AddBadPwdRecords(name.c_str(), 1000 + i, 0), 1);
    }
    for (int i = 0; i < MAX_BAD_PWD_TIMES + 5; ++i) AddBadPwdRecords("name:many", 5000 + i, 0);
    EXPECT_EQ(read("name:many").failures, MAX_BAD_PWD_TIMES);
    EXPECT_EQ(read("slot:3:1").locked_at, 1);
    EXPECT_EQ(read("name:guess0").failures, 0);  // the oldest went
    const std::string newest = "name:guess" + std::to_string(MAX_BAD_PWD_SUBJECTS + 19);
    EXPECT_EQ(read(newest.c_str()).failures, 1);
    EXPECT_LT(sim_testing::file_text(platform::lockout_file()).size(), 64u * 1024);
}

TEST_F(BadPasswordRecords, BadSubjectsAndDamagedOrUnreadableRecords) {
    St_BadPwdRecord record{};
    EXPECT_LT(AddBadPwdRecords(nullptr, 1, 0), 0);
    EXPECT_LT(AddBadPwdRecords("", 1, 0), 0);
    EXPECT_LT(AddBadPwdRecords("name:a\nb", 1, 0), 0);
    EXPECT_LT(AddBadPwdRecords(std::string(MAX_BAD_PWD_SUBJECT_LEN + 1, 'x').c_str(), 1, 0), 0);
    EXPECT_LT(GetBadPwdRecords("name:a", 0, nullptr), 0);
    EXPECT_LT(UnlockUser(MAX_USER_SLOTS), 0);

    sim_testing::write_text(platform::lockout_file(), "not json");
    EXPECT_EQ(read("slot:2:7").failures, 0);
    EXPECT_EQ(AddBadPwdRecords("slot:2:7", 1, 0), 1);

    // Records that cannot be read or written say so.
    std::filesystem::remove(platform::lockout_file());
    std::filesystem::create_directories(platform::lockout_file());
    EXPECT_LT(GetBadPwdRecords("slot:2:7", 0, &record), 0);
    EXPECT_LT(AddBadPwdRecords("slot:2:7", 2, 0), 0);
    EXPECT_LT(LockBadPwdSubject("slot:2:7", 2), 0);
}

}  // namespace
