// The logged events that the event filter passed (logged_alerts.h), waiting
// for the service's program bmc-event-alert: <root>/var/spool/alerts/events
// (spool_queue.h), at most max_queued_events, a full queue dropping its
// oldest event with a line in the delivery log. One process of
// bmc-event-filter (event_filter/) at a time, holding the slot filter.0,
// runs bmc-event-alert for each event in turn.
#pragma once

#include <boost/describe/class.hpp>
#include <cstddef>
#include <string>

#include "platform/sim/spool_queue.h"

namespace platform::sim {

inline constexpr int max_event_filters = 1;
inline constexpr std::size_t max_queued_events = 64;
inline constexpr std::size_t max_queued_event_bytes = 256 * 1024;

struct queued_event {
    int code = 0;
    int argument = 0;
    std::string text;
};
BOOST_DESCRIBE_STRUCT(queued_event, (), (code, argument, text))

// The queue, its records at most max_queued_events and
// max_queued_event_bytes.
spool_queue<queued_event>& event_queue();

// The filter's slot, held from take() until destruction.
class filter_slot : public spool_slot {
public:
    filter_slot() : spool_slot("filter", max_event_filters) {}
};

}  // namespace platform::sim
