// The alert delivery queue: bounded, oldest dropped first with a log line,
// taken in order; and the sender slots, of which a process holds at most
// the four that exist, freed when their holder lets go.
#include <gtest/gtest.h>

#include <string>

#include "platform/sim/alert_delivery.h"
#include "platform/sim/alert_queue.h"
#include "platform/sim/sim_file.h"
#include "sim_root_fixture.h"

namespace {

using namespace platform::sim;

class AlertQueue : public sim_testing::sim_root {};

TEST_F(AlertQueue, AFullQueueDropsItsOldestAlertsAndSaysSo) {
    ASSERT_TRUE(make_parent_dirs(alert_delivery_log().path));
    const std::size_t total = max_queued_alerts + 3;
    for (std::size_t n = 0; n < total; ++n)
        ASSERT_TRUE(enqueue_alert({static_cast<int>(n % 16), "Redfish", std::to_string(n)}));
    EXPECT_EQ(sim_testing::file_text(alert_delivery_log().path),
              "entry 0 Redfish: dropped, the delivery queue is full\n"
              "entry 1 Redfish: dropped, the delivery queue is full\n"
              "entry 2 Redfish: dropped, the delivery queue is full\n");
    queued_alert alert;
    for (std::size_t n = 3; n < total; ++n) {
        ASSERT_TRUE(take_queued_alert(alert));
        EXPECT_EQ(alert.request, std::to_string(n));
    }
    EXPECT_FALSE(take_queued_alert(alert));
    EXPECT_FALSE(alerts_queued());

    // Bytes, as written, bound the queue too: one large alert pushes out
    // what it must.
    ASSERT_TRUE(enqueue_alert({1, "SMTP", "small"}));
    ASSERT_TRUE(enqueue_alert({2, "SMTP", std::string(max_queued_bytes - 50, 'x')}));
    ASSERT_TRUE(take_queued_alert(alert));
    EXPECT_EQ(alert.index, 2);
    EXPECT_FALSE(enqueue_alert({3, "SMTP", std::string(max_queued_bytes, 'x')}));
}

TEST_F(AlertQueue, ADamagedQueueIsReadAsEmpty) {
    sim_testing::write_text(alert_queue_file(), "[{\"index\":1}");
    EXPECT_FALSE(alerts_queued());
    ASSERT_TRUE(enqueue_alert({4, "SNMPv3", "{}"}));
    queued_alert alert;
    ASSERT_TRUE(take_queued_alert(alert));
    EXPECT_EQ(alert.kind, "SNMPv3");
}

TEST_F(AlertQueue, AtMostFourSendersHoldASlot) {
    sender_slot slots[max_alert_senders];
    for (sender_slot& slot : slots) ASSERT_TRUE(slot.take());
    EXPECT_FALSE(sender_slot_free());
    slots[2].release();
    EXPECT_TRUE(sender_slot_free());
    sender_slot another;
    EXPECT_TRUE(another.take());
    EXPECT_FALSE(sender_slot_free());
}

}  // namespace
