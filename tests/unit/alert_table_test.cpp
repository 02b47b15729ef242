// The simulated alert-destination table: changes only under its lock,
// committed whole, and a crashed holder leaves nothing behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <string>

#include "platform/alert_settings.h"
#include "platform/libalert.h"
#include "platform/libipmi_users.h"
#include "platform/sim/alert_delivery.h"
#include "platform/sim/alert_send/delivery_attempts.h"
#include "platform/sim/alert_table.h"
#include "platform/sim/sim_file.h"
#include "sim_root_fixture.h"
#include "tasks/event_alerts.h"

using sim_testing::file_text;
using sim_testing::run_in_child;
using sim_testing::write_text;

namespace {

class alert_table : public sim_testing::sim_root {};

std::string destination_of(int index) {
    St_AlertDest entry{};
    EXPECT_EQ(get_config_alert_dest(index, &entry), 0);
    return entry.destination;
}

}  // namespace

TEST_F(alert_table, changes_need_the_lock_and_reach_the_file_only_with_pscommit) {
    EXPECT_EQ(set_config_alert_dest(0, "http://127.0.0.1/a"), -1);
    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(set_config_alert_dest(3, "http://127.0.0.1/a"), 0);
    EXPECT_EQ(enable_pef_filter(3, 1), 0);
    EXPECT_EQ(destination_of(3), "");
    EXPECT_EQ(PSCommit(), 0);
    EXPECT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(destination_of(3), "http://127.0.0.1/a");
    EXPECT_EQ(get_config_alter_enable(3), 1);
    struct stat status {};
    ASSERT_EQ(stat(platform::alert_table_file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);

    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(clean_alert_dest(3), 0);
    EXPECT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(destination_of(3), "http://127.0.0.1/a") << "dropped without PSCommit";
}

TEST_F(alert_table, bad_indexes_types_and_overlong_texts_are_refused) {
    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(set_config_alert_dest(ALERT_DEST_COUNT, "x"), -1);
    EXPECT_EQ(set_config_alert_dest(-1, "x"), -1);
    EXPECT_EQ(set_config_alert_proto(0, 4), -1);
    EXPECT_EQ(set_config_alert_dest(0, std::string(256, 'a').c_str()), -1);
    EXPECT_EQ(set_config_alert_dest(0, std::string(255, 'a').c_str()), 0);
    EXPECT_EQ(set_config_alert_snmpv3(0, "user", 3, "Abcdefg1", 0, nullptr), -1);
    EXPECT_EQ(set_config_alert_snmpv3(0, std::string(33, 'u').c_str(), 1, nullptr, 0, nullptr), -1);
    EXPECT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(get_config_alert_dest(ALERT_DEST_COUNT, nullptr), -1);
    EXPECT_EQ(get_config_alter_enable(99), -1);
}

TEST_F(alert_table, a_holder_killed_mid_change_leaves_the_table_unchanged_and_lockable) {
    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    ASSERT_EQ(set_config_alert_dest(0, "http://127.0.0.1/kept"), 0);
    ASSERT_EQ(PSCommit(), 0);
    ASSERT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
    const int status = run_in_child([] {
        if (lx_mutex_get(ALERT_TABLE_MUTEX) != 0) return 1;
        set_config_alert_dest(0, "http://127.0.0.1/lost");
        raise(SIGKILL);
        return 2;
    });
    EXPECT_EQ(status, -1);
    ASSERT_EQ(lx_mutex_get(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(lx_mutex_put(ALERT_TABLE_MUTEX), 0);
    EXPECT_EQ(destination_of(0), "http://127.0.0.1/kept");
}

TEST_F(alert_table, a_damaged_file_reads_as_free_entries) {
    for (const char* text : {"", "{", "[]", R"({"format":1,"entries":7})",
                             R"({"entries":[{"enabled":"yes","type":9,"destination":5}]})"}) {
        write_text(platform::alert_table_file(), text);
        St_AlertDest entry{};
        ASSERT_EQ(get_config_alert_dest(0, &entry), 0) << text;
        EXPECT_EQ(entry.enabled, 0) << text;
        EXPECT_EQ(entry.type, 0) << text;
        EXPECT_STREQ(entry.destination, "") << text;
    }
}

TEST_F(alert_table, community_strings_are_printable_without_blanks) {
    EXPECT_EQ(isVaildSNMPv2CMString("public"), 1);
    EXPECT_EQ(isVaildSNMPv2CMString(""), 0);
    EXPECT_EQ(isVaildSNMPv2CMString("pub lic"), 0);
    EXPECT_EQ(isVaildSNMPv2CMString("pub\x7f"), 0);
    EXPECT_EQ(isVaildSNMPv2CMString(std::string(33, 'c').c_str()), 0);
    EXPECT_EQ(isVaildSNMPv2CMString(nullptr), 0);
}

TEST_F(alert_table, a_delivery_that_keeps_failing_gives_up_after_its_attempts) {
    platform::event_service_settings settings;
    settings.delivery_retry_attempts = 1;
    settings.delivery_retry_interval_seconds = 1;
    ASSERT_TRUE(platform::sim::make_parent_dirs(platform::sim::alert_delivery_log().path));
    int attempts = 0;
    EXPECT_FALSE(
        platform::sim::deliver_with_retries(4, "Test", settings, [&attempts](std::string& error) {
            error = "refused " + std::to_string(++attempts);
            return false;
        }));
    EXPECT_EQ(file_text(platform::sim::alert_delivery_log().path),
              "entry 4 Test: gave up after 2 attempts: refused 2\n");
}

// The service makes the Redfish event document; the platform sends it as it
// is handed and refuses a Redfish event without one.
TEST_F(alert_table, a_redfish_event_needs_the_document_the_service_made) {
    const char* args[] = {"quote \" and\nline", nullptr};
    St_AlertEvent event{"Alert",
                        "7",
                        "Warning",
                        "",
                        "say \"hi\"",
                        "Event.1.0.X",
                        args,
                        2,
                        "/redfish/v1/Systems/1",
                        nullptr,
                        nullptr,
                        nullptr,
                        nullptr};
    const boost::json::value document =
        boost::json::parse(odata::redfish::redfish_event_document(event, "ctx \"1\""));
    EXPECT_EQ(document.at("Context"), "ctx \"1\"");
    const boost::json::value& sent = document.at("Events").at(0);
    EXPECT_EQ(sent.at("Message"), "say \"hi\"");
    EXPECT_EQ(sent.at("MessageArgs"), (boost::json::array{"quote \" and\nline", ""}));
    EXPECT_EQ(sent.at("Oem").at("Tarnwright").at("SensorName"), "");

    // A stand-in for bmc-alert-send that takes any request.
    write_text(path("/usr/sbin/bmc-alert-send"), "#!/bin/sh\ncat >/dev/null\n");
    std::filesystem::permissions(path("/usr/sbin/bmc-alert-send"),
                                 std::filesystem::perms::owner_all);
    sim_testing::add_redfish_destination(0, "http://127.0.0.1:9/events");
    EXPECT_EQ(SendRedfishEvent(0, &event), -1);
    const std::string text = boost::json::serialize(document);
    event.document = text.c_str();
    EXPECT_EQ(SendRedfishEvent(0, &event), 0);
}
