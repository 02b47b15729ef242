#include "platform/sim/event_log.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <boost/json.hpp>
#include <cerrno>
#include <functional>
#include <string_view>

#include "base/bmc_root.h"
#include "base/input_recording.h"
#include "platform/libipmi.h"
#include "platform/libsel.h"
#include "platform/libweb.h"
#include "platform/sim/bounded_log.h"
#include "platform/sim/logged_alerts.h"
#include "platform/sim/remote_syslog.h"
#include "platform/sim/sim_file.h"

namespace json = boost::json;

namespace {

std::size_t sequence_length(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

// Length of the well-formed UTF-8 sequence at the start of text, 0 if none.
std::size_t utf8_sequence(std::string_view text) {
    auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned char lead = byte(0);
    if (lead < 0x80) return 1;
    std::size_t length = sequence_length(lead);
    if (length == 0 || text.size() < length) return 0;
    unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < low || byte(1) > high) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
    return length;
}

// Callers pass request URIs and user names, which need not be UTF-8; a JSON
// line must be, so stray bytes become U+FFFD.
std::string as_utf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        std::size_t length = utf8_sequence(text);
        if (length == 0) {
            result += "\xEF\xBF\xBD";
            length = 1;
        } else {
            result.append(text.data(), length);
        }
        text.remove_prefix(length);
    }
    return result;
}

std::string event_line(int code, int argument, const char* text) {
    json::object record;
    record["time"] = static_cast<std::int64_t>(lx_time_get());
    record["code"] = code;
    record["argument"] = argument;
    record["text"] = as_utf8(text ? text : "");
    return json::serialize(record) + '\n';
}

bool parse_record(std::string_view line, platform::event_record& record) {
    json::error_code error;
    json::value value = json::parse(line, error);
    const json::object* object = error ? nullptr : value.if_object();
    if (!object) return false;
    const json::value* time = object->if_contains("time");
    const json::value* code = object->if_contains("code");
    const json::value* argument = object->if_contains("argument");
    const json::value* text = object->if_contains("text");
    if (!time || !time->is_int64() || !code || !code->is_int64() || !argument ||
        !argument->is_int64() || !text || !text->is_string())
        return false;
    record = {time->get_int64(), static_cast<int>(code->get_int64()),
              static_cast<int>(argument->get_int64()), std::string(text->get_string())};
    return true;
}

// Visits the well-formed records of one part of the log, read in pieces so
// that a long log never sits in memory whole; false once visit has said
// to stop.
bool visit_records(const std::string& path,
                   const std::function<bool(const platform::event_record&)>& visit) {
    platform::note_input_file(path);
    platform::sim::unique_fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.valid()) return true;
    platform::sim::file_lock lock(fd.get(), LOCK_SH);
    std::string pending;
    char piece[16384];
    for (;;) {
        const ssize_t got = ::read(fd.get(), piece, sizeof piece);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        pending.append(piece, static_cast<std::size_t>(got));
        std::size_t start = 0;
        for (std::size_t end; (end = pending.find('\n', start)) != std::string::npos;
             start = end + 1) {
            platform::event_record record;
            if (parse_record(std::string_view(pending).substr(start, end - start), record) &&
                !visit(record))
                return false;
        }
        pending.erase(0, start);
    }
    platform::event_record record;
    return pending.empty() || !parse_record(pending, record) || visit(record);
}

}  // namespace

namespace platform {

const std::string& event_log_file() {
    static fixed_bmc_path path("/var/log/bmc_events.jsonl");
    return path.get();
}

namespace {

sim::bounded_log event_log() { return {event_log_file(), max_event_log_bytes, 0644}; }

}  // namespace

std::string older_event_log_file() { return event_log().older_path(); }

void for_each_event(const std::function<bool(const event_record&)>& visit) {
    if (visit_records(older_event_log_file(), visit)) visit_records(event_log_file(), visit);
}

std::vector<event_record> read_event_log() {
    std::vector<event_record> records;
    for_each_event([&records](const event_record& record) {
        records.push_back(record);
        return true;
    });
    return records;
}

// Truncated in place, not replaced: an appender that has the file open
// already would otherwise write into the unlinked old file.
bool clear_event_log() {
    std::string path = event_log_file();
    if (!sim::make_parent_dirs(path)) return false;
    sim::unique_fd fd(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    if (!fd.valid()) return false;
    sim::file_lock lock(fd.get(), LOCK_EX);
    return lock.locked() && ::ftruncate(fd.get(), 0) == 0 &&
           (::unlink(older_event_log_file().c_str()) == 0 || errno == ENOENT);
}

}  // namespace platform

namespace {

// One whole line appended under the log's lock.
bool append_event_line(int event_code, int argument, const char* text) {
    const platform::sim::bounded_log log = platform::event_log();
    return platform::sim::make_parent_dirs(log.path) &&
           platform::sim::append_line(log, event_line(event_code, argument, text));
}

}  // namespace

// Events that are alerts, and every event to remote syslog, go out once they
// are logged, after the log's lock.
extern "C" int LibSaveSysEvtLog(int event_code, int argument, const char* text) {
    if (!append_event_line(event_code, argument, text)) return -1;
    platform::sim::raise_logged_alert(event_code, argument, text ? text : "");
    platform::sim::forward_to_syslog(lx_time_get(), event_code, text ? text : "");
    return 0;
}

extern "C" int LibVisitSysEvtLog(int (*visit)(const St_SelRecord* record, void* context),
                                 void* context) {
    if (!visit) return -1;
    // One record at a time: a long log is never held whole as records.
    int visited = 0;
    platform::for_each_event([&](const platform::event_record& stored) {
        const St_SelRecord record{stored.time, stored.code, stored.argument, stored.text.c_str()};
        ++visited;
        return visit(&record, context) == 0;
    });
    return visited;
}

extern "C" int LibClearSysEvtLog(void) { return platform::clear_event_log() ? 0 : -1; }
