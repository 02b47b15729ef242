#include "platform/sim/alert_queue.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <boost/json.hpp>
#include <deque>

#include "base/bmc_root.h"
#include "platform/libweb.h"
#include "platform/sim/alert_delivery.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace platform::sim {
namespace {

using alert_list = std::deque<queued_alert>;

std::string spool_path(const std::string& name) { return bmc_path("/var/spool/alerts/" + name); }

std::size_t bytes_of(const alert_list& alerts) {
    std::size_t bytes = 0;
    for (const queued_alert& alert : alerts) bytes += alert.request.size() + alert.kind.size();
    return bytes;
}

// A queue that does not parse is logged and read as empty.
alert_list read_queue() {
    alert_list alerts;
    std::string text;
    if (!read_file(alert_queue_file(), text) || text.empty()) return alerts;
    boost::system::error_code error;
    const boost::json::value document = boost::json::parse(text, error);
    const boost::json::array* list = error ? nullptr : document.if_array();
    for (const boost::json::value& item : list ? *list : boost::json::array()) {
        const boost::json::object* fields = item.if_object();
        const boost::json::value* index = fields ? fields->if_contains("index") : nullptr;
        const boost::json::value* kind = fields ? fields->if_contains("kind") : nullptr;
        const boost::json::value* request = fields ? fields->if_contains("request") : nullptr;
        if (!index || !index->is_int64() || !kind || !kind->is_string() || !request ||
            !request->is_string()) {
            list = nullptr;
            break;
        }
        alerts.push_back({static_cast<int>(index->get_int64()), std::string(kind->get_string()),
                          std::string(request->get_string())});
    }
    if (!list) {
        console_log("[ERROR] alert queue %s is malformed\n", alert_queue_file().c_str());
        alerts.clear();
    }
    return alerts;
}

bool write_queue(const alert_list& alerts) {
    boost::json::array list;
    for (const queued_alert& alert : alerts)
        list.push_back({{"index", alert.index}, {"kind", alert.kind}, {"request", alert.request}});
    return replace_file(alert_queue_file(), boost::json::serialize(list), 0600);
}

void drop_oldest(alert_list& alerts) {
    const queued_alert& oldest = alerts.front();
    const std::string line = "entry " + std::to_string(oldest.index) + " " + oldest.kind +
                             ": dropped, the delivery queue is full\n";
    append_delivery_log(line);
    console_log("[ERROR] alert delivery: %s", line.c_str());
    alerts.pop_front();
}

// The descriptor of slot, locked; -1 when another process holds it.
int lock_slot(int slot) {
    const std::string path = spool_path("slot." + std::to_string(slot));
    if (!make_parent_dirs(path)) return -1;
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) == 0) return fd;
    if (fd >= 0) ::close(fd);
    return -1;
}

}  // namespace

std::string alert_queue_file() { return spool_path("queue"); }

bool enqueue_alert(const queued_alert& alert) {
    if (alert.request.size() + alert.kind.size() > max_queued_bytes) return false;
    if (!make_parent_dirs(alert_queue_file())) return false;
    return with_file_lock(alert_queue_file(), [&] {
        alert_list alerts = read_queue();
        alerts.push_back(alert);
        while (alerts.size() > max_queued_alerts || bytes_of(alerts) > max_queued_bytes)
            drop_oldest(alerts);
        return write_queue(alerts);
    });
}

bool take_queued_alert(queued_alert& alert) {
    return with_file_lock(alert_queue_file(), [&] {
        alert_list alerts = read_queue();
        if (alerts.empty()) return false;
        alert = alerts.front();
        alerts.pop_front();
        return write_queue(alerts);
    });
}

bool alerts_queued() {
    return with_file_lock(alert_queue_file(), [] { return !read_queue().empty(); });
}

bool sender_slot::take() {
    release();
    for (int slot = 0; slot < max_alert_senders && fd_ < 0; ++slot) fd_ = lock_slot(slot);
    return fd_ >= 0;
}

void sender_slot::release() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}

bool sender_slot_free() {
    sender_slot probe;
    return probe.take();
}

}  // namespace platform::sim
