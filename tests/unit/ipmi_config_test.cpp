// The IPMI configuration document: what a backup writes is restored
// exactly, and a document that is damaged or holds a value the BMC would
// refuse changes nothing and names the place.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/libalert.h"
#include "platform/libipmi_config.h"
#include "platform/liblan.h"
#include "platform/libserial.h"
#include "platform/sim/alert_table.h"
#include "platform/sim/bmc_lan.h"
#include "platform/sim/serial_port.h"
#include "platform/sim/user_table.h"
#include "sim_root_fixture.h"

namespace {

using sim_testing::file_text;

class IpmiConfig : public sim_testing::sim_root {
protected:
    void SetUp() override {
        sim_root::SetUp();
        sim_testing::add_user(1, "admin", "admin-pass1", PRIV_ADMINISTRATOR);
        sim_testing::add_user(3, "oper", "oper-pass1", PRIV_OPERATOR);
    }

    static std::string backup(int with_secrets = 1) {
        std::vector<char> text(IPMI_CONFIG_MAX_SIZE);
        const int length =
            PltIPMI_BackupConfig(text.data(), static_cast<int>(text.size()), with_secrets);
        EXPECT_GT(length, 0);
        return length > 0 ? std::string(text.data(), length) : std::string();
    }

    static int restore(const std::string& text, std::string* reason = nullptr,
                       int may_change_users = 1) {
        char refused[IPMI_CONFIG_REASON_SIZE] = {};
        const int result = PltIPMI_RestoreConfig(text.data(), static_cast<int>(text.size()),
                                                 may_change_users, refused, sizeof refused);
        if (reason) *reason = refused;
        return result;
    }

    static std::vector<std::string> stores() {
        std::vector<std::string> texts;
        for (const std::string& path :
             {platform::user_table_file(), platform::alert_table_file(),
              platform::lan_settings_file(), platform::serial_settings_file()})
            texts.push_back(file_text(path));
        return texts;
    }
};

void change_everything() {
    St_SerialConfig serial{};
    ASSERT_EQ(PltSERIAL_GetConfig(1, &serial), PLT_OK);
    serial.bit_rate = 9600;
    ASSERT_EQ(PltSERIAL_SetConfig(1, &serial), PLT_OK);
    const St_NetService ipmi_off{0, 6230};
    ASSERT_EQ(PltNET_SetService(NET_SERVICE_IPMI, &ipmi_off), PLT_OK);
    St_LanConfig lan{};
    ASSERT_EQ(PltLAN_GetConfig(&lan), PLT_OK);
    std::snprintf(lan.host_name, sizeof lan.host_name, "%s", "renamed");
    ASSERT_EQ(PltLAN_SetConfig(&lan), PLT_OK);
    sim_testing::add_user(4, "later", "later-pass1", PRIV_USER);
    sim_testing::add_user(3, "oper", "new-pass1", PRIV_OPERATOR, false);
    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    ASSERT_EQ(set_config_alert_proto(2, ALERT_DEST_REDFISH), 0);
    ASSERT_EQ(set_config_alert_dest(2, "http://127.0.0.1:9/events"), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
}

TEST_F(IpmiConfig, ARestoredBackupGivesBackExactlyTheSavedState) {
    const std::string saved = backup();
    change_everything();
    ASSERT_NE(backup(), saved);
    ASSERT_EQ(restore(saved), PLT_OK);
    EXPECT_EQ(backup(), saved);
    EXPECT_EQ(UtilCheckUserPassword(3, "oper-pass1"), 0);
    EXPECT_NE(UtilCheckUserPassword(3, "new-pass1"), 0);
    EXPECT_EQ(UtilGetLANPriv(4), PRIV_NO_ACCESS);
    St_AlertDest entry{};
    ASSERT_EQ(get_config_alert_dest(2, &entry), 0);
    EXPECT_STREQ(entry.destination, "");
    // What is no configuration stays as the BMC has it.
    ASSERT_TRUE(platform::set_lan_link(false, 100));
    ASSERT_EQ(restore(saved), PLT_OK);
    St_LanConfig lan{};
    ASSERT_EQ(PltLAN_GetConfig(&lan), PLT_OK);
    EXPECT_EQ(lan.link_up, 0);
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

void add_snmpv3_destination(int index, const char* user, const char* key) {
    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    ASSERT_EQ(set_config_alert_proto(index, ALERT_DEST_SNMPV3_TRAP), 0);
    ASSERT_EQ(set_config_alert_dest(index, "127.0.0.1:162"), 0);
    ASSERT_EQ(set_config_alert_snmpv3(index, user, 2, key, 2, key), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
}

TEST_F(IpmiConfig, SecretsStayOutUnlessAskedForAndARestoreKeepsTheStoredOnes) {
    add_snmpv3_destination(1, "trapper", "TrapKey123abc");
    const std::string without = backup(0);
    EXPECT_EQ(without.find("TrapKey123abc"), std::string::npos);
    EXPECT_EQ(without.find("pbkdf2"), std::string::npos);
    const std::string with = backup(1);
    EXPECT_NE(with.find("TrapKey123abc"), std::string::npos);
    EXPECT_NE(with.find("pbkdf2"), std::string::npos);

    sim_testing::add_user(3, "oper", "new-pass1", PRIV_OPERATOR);
    add_snmpv3_destination(1, "trapper", "NewKey456defg");
    add_snmpv3_destination(2, "other", "OtherKey789hij");
    ASSERT_EQ(restore(without), PLT_OK);
    EXPECT_EQ(UtilCheckUserPassword(3, "new-pass1"), 0);
    St_AlertDest entry{};
    ASSERT_EQ(get_config_alert_dest(1, &entry), 0);
    EXPECT_STREQ(entry.authentication_key, "NewKey456defg");
    EXPECT_STREQ(entry.encryption_key, "NewKey456defg");
    ASSERT_EQ(get_config_alert_dest(2, &entry), 0);
    EXPECT_EQ(entry.type, ALERT_DEST_SNMP_TRAP);
}

TEST_F(IpmiConfig, ARestoreThatChangesUsersIsRefusedWhenUsersMayNotChange) {
    const std::string saved = backup(0);
    sim_testing::add_user(4, "later", "later-pass1", PRIV_USER);
    const std::string with_later = backup(0);
    const std::vector<std::string> before = stores();
    EXPECT_EQ(restore(saved, nullptr, 0), PLT_ERR_STATE);
    EXPECT_EQ(restore(replaced(with_later, "\"privilege\":2", "\"privilege\":4"), nullptr, 0),
              PLT_ERR_STATE);
    EXPECT_EQ(stores(), before);
    // The same users with other settings change no user.
    EXPECT_EQ(restore(replaced(with_later, "\"bit_rate\":115200", "\"bit_rate\":9600"), nullptr, 0),
              PLT_OK);
    EXPECT_NE(stores()[3], before[3]);
    EXPECT_EQ(stores()[0], before[0]);
}

TEST_F(IpmiConfig, EveryTruncationIsRefusedAndChangesNothing) {
    const std::string saved = backup();
    change_everything();
    const std::vector<std::string> before = stores();
    // The last byte is the newline after the document.
    for (std::size_t length = 0; length + 1 < saved.size(); ++length) {
        std::string reason;
        ASSERT_EQ(restore(saved.substr(0, length), &reason), PLT_ERR_FORMAT) << length;
        ASSERT_FALSE(reason.empty());
    }
    EXPECT_EQ(stores(), before);
}

TEST_F(IpmiConfig, ForeignVersionsAndShapesAreRefused) {
    const std::string saved = backup();
    const std::vector<std::string> before = stores();
    const std::string refused[] = {
        "",
        "null",
        std::string(10000, '['),
        replaced(saved, "\"version\":1", "\"version\":2"),
        replaced(saved, "\"version\":1", "\"version\":\"1\""),
        replaced(saved, "\"format\":\"ipmi-config\"", "\"format\":\"bios-config\""),
        replaced(saved, "\"version\":1,", "\"version\":1,\"extra\":0,"),
        replaced(saved, "\"serial\":", "\"serial_port\":"),
        std::string("\0", 1) + saved,
    };
    for (const std::string& text : refused) {
        std::string reason;
        EXPECT_EQ(restore(text, &reason), PLT_ERR_FORMAT) << text.substr(0, 80);
        EXPECT_FALSE(reason.empty());
    }
    EXPECT_EQ(stores(), before);
}

struct hostile_value {
    const char* from;
    std::string to;
    const char* place;  // the start of the reason
};

TEST_F(IpmiConfig, HostileValuesAreRefusedWithTheirPlace) {
    const std::string saved = backup();
    const std::vector<std::string> before = stores();
    const hostile_value values[] = {
        {"\"name\":\"admin\"", "\"name\":\"administrator0123456\"", "users[1]"},
        {"\"name\":\"admin\"", "\"name\":\"ad\\u0001min\"", "users[1].name"},
        {"\"name\":\"oper\"", "\"name\":\"admin\"", "users[3].name"},
        {"\"slot\":0,\"key\":0,\"name\":\"\"", "\"slot\":0,\"key\":7,\"name\":\"root\"",
         "users[0]"},
        {"\"privilege\":4,\"enabled\":true", "\"privilege\":4,\"enabled\":false", "users[1]"},
        {"\"privilege\":4", "\"privilege\":99", "users[1]"},
        {"\"password\":\"pbkdf2-sha256$", "\"password\":\"md5$", "users[1].password"},
        {"\"slot\":3", "\"slot\":5", "users[3]"},
        {"\"port\":623", "\"port\":0", "services.IPMI"},
        {"\"port\":623", "\"port\":1e400", "services.IPMI"},
        {"\"bit_rate\":115200", "\"bit_rate\":115201", "serial"},
        {"\"parity\":\"N\"", "\"parity\":\"NN\"", "serial.parity"},
        {"\"subnet_mask\":\"255.255.255.0\"", "\"subnet_mask\":\"255.0.255.0\"", "lan"},
        {"\"host_name\":\"bmc\"", "\"host_name\":\"bmc\\nIPMI=0\"", "lan"},
        {"\"gateway\":\"192.168.0.1\"", "\"gateway\":[]", "lan.gateway"},
        {"\"type\":0", "\"type\":9", "alert_destinations[0]"},
        {"\"destination\":\"\"", "\"destination\":\"" + std::string(256, 'x') + "\"",
         "alert_destinations[0]"},
    };
    for (const hostile_value& value : values) {
        std::string reason;
        EXPECT_EQ(restore(replaced(saved, value.from, value.to), &reason), PLT_ERR_FORMAT)
            << value.to;
        EXPECT_EQ(reason.rfind(value.place, 0), 0u) << value.to << ": " << reason;
    }
    EXPECT_EQ(stores(), before);
}

}  // namespace
