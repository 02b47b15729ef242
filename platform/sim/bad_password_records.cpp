#include "platform/sim/bad_password_records.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <boost/json.hpp>
#include <cerrno>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

namespace json = boost::json;

namespace {

constexpr int records_format = 2;

struct subject_records {
    std::vector<long long> failures;  // oldest first
    long long locked_at = 0;
    long long changed = 0;
};

using records_table = std::map<std::string, subject_records>;

bool int_member(const json::object& object, const char* name, long long& value) {
    const json::value* member = object.if_contains(name);
    if (!member || !member->is_int64()) return false;
    value = member->get_int64();
    return true;
}

bool parse_entry(const json::object& object, std::string& subject, subject_records& entry) {
    const json::value* name = object.if_contains("subject");
    const json::value* failures = object.if_contains("failures");
    if (!name || !name->is_string() || !failures || !failures->is_array() ||
        !int_member(object, "locked_at", entry.locked_at) ||
        !int_member(object, "changed", entry.changed))
        return false;
    subject = std::string(name->get_string());
    for (const json::value& time : failures->get_array()) {
        if (!time.is_int64()) return false;
        entry.failures.push_back(time.get_int64());
    }
    return true;
}

records_table parse_table(const std::string& text) {
    records_table table;
    json::error_code error;
    json::value document = json::parse(text, error);
    const json::object* object = error ? nullptr : document.if_object();
    const json::value* format = object ? object->if_contains("format") : nullptr;
    const json::value* subjects = object ? object->if_contains("subjects") : nullptr;
    if (!format || !format->is_int64() || format->get_int64() != records_format || !subjects ||
        !subjects->is_array()) {
        console_log("[ERROR] lockout state %s is malformed; read as empty\n",
                    platform::lockout_file().c_str());
        return table;
    }
    for (const json::value& each : subjects->get_array()) {
        std::string subject;
        subject_records entry;
        if (each.is_object() && parse_entry(each.get_object(), subject, entry))
            table[subject] = std::move(entry);
    }
    return table;
}

std::string serialise_table(const records_table& table) {
    json::array subjects;
    for (const auto& [subject, entry] : table) {
        json::array failures;
        for (long long time : entry.failures) failures.push_back(time);
        subjects.push_back(json::object{{"subject", subject},
                                        {"failures", std::move(failures)},
                                        {"locked_at", entry.locked_at},
                                        {"changed", entry.changed}});
    }
    return json::serialize(json::object{{"format", records_format}, {"subjects", subjects}}) + '\n';
}

// The stored records, or false when the file exists but cannot be read.
bool read_table(records_table& table) {
    std::string text;
    errno = 0;
    if (platform::sim::read_file(platform::lockout_file(), text)) {
        table = parse_table(text);
        return true;
    }
    table.clear();
    return errno == ENOENT;
}

// Runs change on the records under their lock and writes them back when
// change says that it changed them. Returns change's answer, or failed when
// the records cannot be read or written.
template <typename Change>
int with_records(int failed, Change change) {
    std::string lock_path = platform::bmc_path("/var/bmc/lockout.lock");
    if (!platform::sim::make_parent_dirs(lock_path)) return failed;
    platform::sim::unique_fd fd(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!fd.valid()) return failed;
    platform::sim::file_lock lock(fd.get(), LOCK_EX);
    records_table table;
    if (!lock.locked() || !read_table(table)) return failed;
    bool changed = false;
    int result = change(table, changed);
    const std::string path = platform::lockout_file();
    if (changed && !platform::sim::replace_file(path, serialise_table(table), 0600)) {
        console_log("[ERROR] cannot write %s\n", path.c_str());
        return failed;
    }
    return result;
}

// The stored records, parsed once per version: most checks find nothing
// and need no lock. None when the file cannot be read.
std::shared_ptr<const records_table> stored_records() {
    static platform::file_cache<records_table> cache;
    std::shared_ptr<const records_table> table;
    const int result = cache.get(
        platform::lockout_file(),
        [](records_table& parsed) { return read_table(parsed) ? PLT_OK : PLT_ERR_IO; }, table);
    return result == PLT_OK ? table : nullptr;
}

bool valid_subject(const char* subject) {
    if (!subject || !*subject) return false;
    const std::string_view text(subject);
    return text.size() <= MAX_BAD_PWD_SUBJECT_LEN &&
           std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

bool slot_subject(const std::string& subject) { return subject.compare(0, 5, "slot:") == 0; }

// Pushes out the subjects changed longest ago, other subjects before those
// of slots, until the table is within its bound.
void keep_bound(records_table& table) {
    while (table.size() > MAX_BAD_PWD_SUBJECTS) {
        auto oldest = table.end();
        for (auto each = table.begin(); each != table.end(); ++each) {
            if (oldest == table.end() ||
                std::make_pair(slot_subject(each->first), each->second.changed) <
                    std::make_pair(slot_subject(oldest->first), oldest->second.changed))
                oldest = each;
        }
        table.erase(oldest);
    }
}

}  // namespace

namespace platform {

const std::string& lockout_file() {
    static fixed_bmc_path path("/var/bmc/lockout");
    return path.get();
}

}  // namespace platform

extern "C" int GetBadPwdRecords(const char* subject, int64_t counted_since,
                                St_BadPwdRecord* record) {
    if (!record || !valid_subject(subject)) return -1;
    *record = {};
    const std::shared_ptr<const records_table> table = stored_records();
    if (!table) return -1;
    auto found = table->find(subject);
    if (found == table->end()) return 0;
    record->failures = static_cast<int32_t>(
        std::count_if(found->second.failures.begin(), found->second.failures.end(),
                      [counted_since](long long time) { return time >= counted_since; }));
    record->locked_at = found->second.locked_at;
    return 0;
}

extern "C" int AddBadPwdRecords(const char* subject, int64_t now, int64_t counted_since) {
    if (!valid_subject(subject)) return -1;
    return with_records(-1, [&](records_table& table, bool& changed) {
        subject_records& entry = table[subject];
        auto& failures = entry.failures;
        failures.erase(std::remove_if(failures.begin(), failures.end(),
                                      [counted_since](long long t) { return t < counted_since; }),
                       failures.end());
        failures.push_back(now);
        if (failures.size() > MAX_BAD_PWD_TIMES) failures.erase(failures.begin());
        entry.changed = now;
        const int held = static_cast<int>(failures.size());
        keep_bound(table);
        changed = true;
        return held;
    });
}

extern "C" int LockBadPwdSubject(const char* subject, int64_t locked_at) {
    if (!valid_subject(subject)) return -1;
    return with_records(-1, [&](records_table& table, bool& changed) {
        subject_records& entry = table[subject];
        entry.failures.clear();
        entry.locked_at = locked_at;
        entry.changed = locked_at;
        keep_bound(table);
        changed = true;
        return 0;
    });
}

extern "C" int ClearBadPwdRecords(const char* subject) {
    if (!valid_subject(subject)) return -1;
    const std::shared_ptr<const records_table> stored = stored_records();
    if (stored && stored->count(subject) == 0) return 0;
    return with_records(-1, [&](records_table& table, bool& changed) {
        changed = table.erase(subject) > 0;
        return 0;
    });
}

extern "C" int UnlockUser(int slot) {
    if (slot < 0 || slot >= MAX_USER_SLOTS) return -1;
    const std::string prefix = "slot:" + std::to_string(slot) + ":";
    return with_records(-1, [&](records_table& table, bool& changed) {
        for (auto each = table.begin(); each != table.end();) {
            if (each->first.compare(0, prefix.size(), prefix) == 0) {
                each = table.erase(each);
                changed = true;
            } else {
                ++each;
            }
        }
        return 0;
    });
}
