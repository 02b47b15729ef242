#include "platform/sim/event_log_alerts.h"

#include <algorithm>

#include "base/bmc_root.h"
#include "platform/libsel.h"
#include "platform/sim/event_log.h"
#include "platform/sim/logged_alerts.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

struct acknowledged_point {
    long long time = -1;
    long long at_time = 0;
};

bool alert(const platform::event_record& record) {
    return record.code == platform::sim::event_sensor_warning ||
           record.code == platform::sim::event_sensor_critical;
}

acknowledged_point read_point() {
    const std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::event_log_ack_file());
    return {state->get<long long>("Acknowledged.Time", -1),
            state->get<long long>("Acknowledged.AtTime", 0)};
}

// The point that covers every alert record now in the log.
acknowledged_point newest_point() {
    acknowledged_point point;
    platform::for_each_event([&](const platform::event_record& record) {
        if (!alert(record)) return true;
        if (record.time != point.time) point = {record.time, 0};
        ++point.at_time;
        return true;
    });
    return point;
}

}  // namespace

namespace platform {

const std::string& event_log_ack_file() {
    static fixed_bmc_path path("/var/bmc/event_log_ack.ini");
    return path.get();
}

}  // namespace platform

extern "C" int LibGetSysEvtLogAlertState(void) {
    const acknowledged_point point = read_point();
    long long seen_at_time = 0;
    int state = SEL_ALERTS_NONE;
    platform::for_each_event([&](const platform::event_record& record) {
        if (!alert(record) || record.time < point.time) return true;
        if (record.time == point.time && ++seen_at_time <= point.at_time) return true;
        const bool critical = record.code == platform::sim::event_sensor_critical;
        state = std::max(state, critical ? int(SEL_ALERTS_CRITICAL) : int(SEL_ALERTS_WARNING));
        return true;
    });
    return state;
}

extern "C" int LibAckSysEvtLogAlerts(void) {
    const acknowledged_point point = newest_point();
    const bool stored =
        platform::sim::update_state_ini(platform::event_log_ack_file(), [&](pt::ptree& state) {
            state.put("Acknowledged.Time", point.time);
            state.put("Acknowledged.AtTime", point.at_time);
            return true;
        });
    return stored ? 0 : -1;
}
