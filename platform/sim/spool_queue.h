// Bounded queues in the alert spool, <root>/var/spool/alerts/, and the
// slots of the processes that work them. A queue is one owner-only file of
// a JSON array of records (they may hold passwords and keys), changed under
// an flock on "<name>.lock" and replaced whole; beyond its count or bytes
// (records as serialised) it drops its oldest records first. A slot is the
// flock of a file "<name>.<n>" held while its holder lives, so a killed
// holder frees its slot at once and nothing counts processes that are gone.
#pragma once

#include <boost/json.hpp>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <utility>

namespace platform::sim {

std::string spool_path(const std::string& name);

struct spool_bounds {
    std::size_t records;
    std::size_t bytes;
};

// The queue over JSON values; spool_queue below gives it a record type.
class json_spool {
public:
    using check = std::function<bool(const boost::json::value&)>;
    using dropped = std::function<void(const boost::json::value&)>;

    // A file holding a record that fails valid is logged and read as empty;
    // on_drop hears of each record the bounds push out.
    json_spool(std::string name, spool_bounds bounds, check valid, dropped on_drop);
    std::string file() const { return spool_path(name_); }
    // Appends record; false when the file cannot be written or the record
    // alone exceeds the bytes.
    bool push(const boost::json::value& record);
    // Removes the oldest record into record; false when there is none.
    bool take(boost::json::value& record);
    bool any() const;

private:
    std::deque<boost::json::value> read() const;
    bool write(const std::deque<boost::json::value>& records) const;

    std::string name_;
    spool_bounds bounds_;
    check valid_;
    dropped on_drop_;
};

// Records are converted with Boost.JSON's value_from and try_value_to.
template <class record>
class spool_queue {
public:
    spool_queue(std::string name, spool_bounds bounds,
                const std::function<void(const record&)>& on_drop)
        : spool_(
              std::move(name), bounds,
              [](const boost::json::value& value) {
                  return boost::json::try_value_to<record>(value).has_value();
              },
              [on_drop](const boost::json::value& value) {
                  on_drop(boost::json::value_to<record>(value));
              }) {}
    std::string file() const { return spool_.file(); }
    bool push(const record& item) { return spool_.push(boost::json::value_from(item)); }
    bool take(record& item) {
        boost::json::value value;
        if (!spool_.take(value)) return false;
        item = boost::json::value_to<record>(value);
        return true;
    }
    bool any() const { return spool_.any(); }

private:
    json_spool spool_;
};

// One of the count slots "<name>.0" ..., held from take() until destruction.
class spool_slot {
public:
    spool_slot(std::string name, int count) : name_(std::move(name)), count_(count) {}
    spool_slot(const spool_slot&) = delete;
    spool_slot& operator=(const spool_slot&) = delete;
    ~spool_slot() { release(); }
    // Takes a free slot without waiting; false when every one is held.
    bool take();
    void release();
    // Whether a slot is free now.
    bool any_free() const;

private:
    std::string name_;
    int count_;
    int fd_ = -1;
};

}  // namespace platform::sim
