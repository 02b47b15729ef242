#include "platform/sim/spool_queue.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "base/bmc_root.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace platform::sim {
namespace {

using record_list = std::deque<boost::json::value>;

std::size_t bytes_of(const boost::json::value& record) {
    return boost::json::serialize(record).size();
}

std::size_t bytes_of(const record_list& records) {
    std::size_t bytes = 0;
    for (const boost::json::value& record : records) bytes += bytes_of(record);
    return bytes;
}

// The descriptor of the slot file, locked; -1 when another process holds it.
int lock_slot(const std::string& path) {
    if (!make_parent_dirs(path)) return -1;
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) == 0) return fd;
    if (fd >= 0) ::close(fd);
    return -1;
}

}  // namespace

std::string spool_path(const std::string& name) { return bmc_path("/var/spool/alerts/" + name); }

json_spool::json_spool(std::string name, spool_bounds bounds, check valid, dropped on_drop)
    : name_(std::move(name)),
      bounds_(bounds),
      valid_(std::move(valid)),
      on_drop_(std::move(on_drop)) {}

record_list json_spool::read() const {
    record_list records;
    std::string text;
    if (!read_file(file(), text) || text.empty()) return records;
    // Records may carry bytes that are not UTF-8 (logged texts), written as
    // they are.
    boost::json::parse_options options;
    options.allow_invalid_utf8 = true;
    boost::system::error_code error;
    const boost::json::value document = boost::json::parse(text, error, {}, options);
    const boost::json::array* list = error ? nullptr : document.if_array();
    for (const boost::json::value& record : list ? *list : boost::json::array()) {
        if (!valid_(record)) {
            list = nullptr;
            break;
        }
        records.push_back(record);
    }
    if (!list) {
        console_log("[ERROR] spool queue %s is malformed\n", file().c_str());
        records.clear();
    }
    return records;
}

bool json_spool::write(const record_list& records) const {
    const boost::json::array list(records.begin(), records.end());
    return replace_file(file(), boost::json::serialize(list), 0600);
}

bool json_spool::push(const boost::json::value& record) {
    if (bytes_of(record) > bounds_.bytes || !make_parent_dirs(file())) return false;
    return with_file_lock(file(), [&] {
        record_list records = read();
        records.push_back(record);
        std::size_t bytes = bytes_of(records);
        while (records.size() > bounds_.records || bytes > bounds_.bytes) {
            on_drop_(records.front());
            bytes -= bytes_of(records.front());
            records.pop_front();
        }
        return write(records);
    });
}

bool json_spool::take(boost::json::value& record) {
    return with_file_lock(file(), [&] {
        record_list records = read();
        if (records.empty()) return false;
        record = std::move(records.front());
        records.pop_front();
        return write(records);
    });
}

bool json_spool::any() const {
    return with_file_lock(file(), [this] { return !read().empty(); });
}

bool spool_slot::take() {
    release();
    for (int slot = 0; slot < count_ && fd_ < 0; ++slot)
        fd_ = lock_slot(spool_path(name_ + "." + std::to_string(slot)));
    return fd_ >= 0;
}

void spool_slot::release() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}

bool spool_slot::any_free() const {
    spool_slot probe(name_, count_);
    return probe.take();
}

}  // namespace platform::sim
