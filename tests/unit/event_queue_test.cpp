// The logged events that wait for the event filter: a burst joins one
// bounded owner-only queue, the oldest dropped with a log line, taken in
// order; and one filter at a time holds the slot.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "platform/libipmi.h"
#include "platform/sim/alert_delivery.h"
#include "platform/sim/event_queue.h"
#include "sim_root_fixture.h"

namespace {

using namespace platform::sim;

class EventQueue : public sim_testing::sim_root {
protected:
    // A filter that leaves the queue alone, and one destination for all events.
    void SetUp() override {
        sim_root::SetUp();
        const std::string filter = platform::bmc_path("/usr/sbin/bmc-event-filter");
        sim_testing::write_text(filter, "#!/bin/sh\nexit 0\n");
        std::filesystem::permissions(filter, std::filesystem::perms::owner_all);
        sim_testing::add_redfish_destination(0, "http://127.0.0.1:9/events");
    }
};

TEST_F(EventQueue, ABurstOfLoggedAlertsWaitsInTheBoundedQueue) {
    const int total = static_cast<int>(max_queued_events) + 3;
    for (int n = 0; n < total; ++n) {
        ASSERT_EQ(LibSaveSysEvtLog(148, 0, ("user" + std::to_string(n) + ", modified").c_str()), 0);
        // Not an alert: the filter passes nothing of it.
        ASSERT_EQ(LibSaveSysEvtLog(155, 0, "web, changed"), 0);
    }
    EXPECT_EQ(sim_testing::file_text(alert_delivery_log().path),
              "event 148: dropped, the event queue is full\n"
              "event 148: dropped, the event queue is full\n"
              "event 148: dropped, the event queue is full\n");
    struct stat status {};
    ASSERT_EQ(::stat(event_queue().file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);

    queued_event event;
    for (int n = 3; n < total; ++n) {
        ASSERT_TRUE(event_queue().take(event));
        EXPECT_EQ(event.code, 148);
        EXPECT_EQ(event.text, "user" + std::to_string(n) + ", modified");
    }
    EXPECT_FALSE(event_queue().take(event));
    EXPECT_FALSE(event_queue().any());

    // A damaged queue is read as empty and written afresh.
    sim_testing::write_text(event_queue().file(), "[{\"code\":\"148\"}]");
    EXPECT_FALSE(event_queue().any());
    ASSERT_TRUE(event_queue().push({172, 3, "CPU1 Temp, 95"}));
    ASSERT_TRUE(event_queue().take(event));
    EXPECT_EQ(event.argument, 3);
    // Texts are the bytes logged, not always UTF-8: one such event must not
    // spoil the queue for the others.
    ASSERT_TRUE(event_queue().push({148, 0, "caf\xe9, modified"}));
    ASSERT_TRUE(event_queue().push({148, 0, "bob, modified"}));
    ASSERT_TRUE(event_queue().take(event));
    EXPECT_EQ(event.text, "caf\xe9, modified");
    ASSERT_TRUE(event_queue().take(event));
    EXPECT_EQ(event.text, "bob, modified");
    EXPECT_FALSE(event_queue().push({170, 1, std::string(max_queued_event_bytes, 'x')}));
}

TEST_F(EventQueue, OneFilterAtATimeHoldsTheSlot) {
    filter_slot holder;
    ASSERT_TRUE(holder.take());
    EXPECT_FALSE(filter_slot().any_free());
    filter_slot another;
    EXPECT_FALSE(another.take());
    holder.release();
    EXPECT_TRUE(filter_slot().any_free());
    EXPECT_TRUE(another.take());
}

}  // namespace
