#include "platform/sim/user_lockout.h"

#include <fcntl.h>
#include <sys/file.h>

#include <boost/json.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/bmc_root.h"
#include "platform/file_cache.h"
#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/user_table.h"

namespace json = boost::json;

namespace {

constexpr int lockout_format = 1;

long (*test_clock)() = nullptr;

long long now() { return test_clock ? test_clock() : lx_time_get(); }

struct slot_lockout {
    uint32_t key = 0;
    std::vector<long long> failures;
    bool locked = false;
    long long locked_at = 0;
};

using lockout_table = std::map<int, slot_lockout>;

bool parse_entry(const json::object& object, int& slot, slot_lockout& entry) {
    const json::value* number = object.if_contains("slot");
    const json::value* key = object.if_contains("key");
    const json::value* failures = object.if_contains("failures");
    const json::value* locked = object.if_contains("locked");
    const json::value* locked_at = object.if_contains("locked_at");
    if (!number || !number->is_int64() || number->get_int64() < 0 ||
        number->get_int64() >= MAX_USER_SLOTS || !key || !key->is_int64() || key->get_int64() < 0 ||
        key->get_int64() > UINT32_MAX || !failures || !failures->is_array() || !locked ||
        !locked->is_bool() || !locked_at || !locked_at->is_int64())
        return false;
    slot = static_cast<int>(number->get_int64());
    entry.key = static_cast<uint32_t>(key->get_int64());
    for (const json::value& time : failures->get_array()) {
        if (!time.is_int64()) return false;
        entry.failures.push_back(time.get_int64());
    }
    entry.locked = locked->get_bool();
    entry.locked_at = locked_at->get_int64();
    return true;
}

lockout_table parse_table(const std::string& text) {
    lockout_table table;
    json::error_code error;
    json::value document = json::parse(text, error);
    const json::object* object = error ? nullptr : document.if_object();
    const json::value* format = object ? object->if_contains("format") : nullptr;
    const json::value* slots = object ? object->if_contains("slots") : nullptr;
    if (!format || !format->is_int64() || format->get_int64() != lockout_format || !slots ||
        !slots->is_array()) {
        console_log("[ERROR] lockout state %s is malformed; read as empty\n",
                    platform::lockout_file().c_str());
        return table;
    }
    for (const json::value& each : slots->get_array()) {
        int slot = 0;
        slot_lockout entry;
        if (each.is_object() && parse_entry(each.get_object(), slot, entry))
            table[slot] = std::move(entry);
    }
    return table;
}

std::string serialise_table(const lockout_table& table) {
    json::array slots;
    for (const auto& [slot, entry] : table) {
        json::object object;
        object["slot"] = slot;
        object["key"] = static_cast<std::int64_t>(entry.key);
        json::array failures;
        for (long long time : entry.failures) failures.push_back(time);
        object["failures"] = std::move(failures);
        object["locked"] = entry.locked;
        object["locked_at"] = entry.locked_at;
        slots.push_back(std::move(object));
    }
    json::object document;
    document["format"] = lockout_format;
    document["slots"] = std::move(slots);
    return json::serialize(document) + '\n';
}

// Runs change on the state under its lock and writes it back when change
// says that it changed it. Returns change's answer, or failed when the
// state cannot be read or written.
template <typename Change>
int with_lockout(int failed, Change change) {
    std::string lock_path = platform::bmc_path("/var/bmc/lockout.lock");
    if (!platform::sim::make_parent_dirs(lock_path)) return failed;
    platform::sim::unique_fd fd(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!fd.valid()) return failed;
    platform::sim::file_lock lock(fd.get(), LOCK_EX);
    if (!lock.locked()) return failed;
    std::string path = platform::lockout_file();
    std::string text;
    lockout_table table =
        platform::sim::read_file(path, text) ? parse_table(text) : lockout_table();
    bool changed = false;
    int result = change(table, changed);
    if (changed && !platform::sim::replace_file(path, serialise_table(table), 0600)) {
        console_log("[ERROR] cannot write %s\n", path.c_str());
        return failed;
    }
    return result;
}

// The stored state, parsed once per version: most checks find nothing to
// change and need neither the lock nor the policy.
std::shared_ptr<const lockout_table> stored_lockouts() {
    static platform::file_cache<lockout_table> cache;
    const std::string path = platform::lockout_file();
    std::shared_ptr<const lockout_table> table;
    cache.get(
        path,
        [&path](lockout_table& parsed) {
            std::string text;
            parsed = platform::sim::read_file(path, text) ? parse_table(text) : lockout_table();
            return PLT_OK;
        },
        table);
    return table;
}

// The stored entry of the slot's current user, if any.
const slot_lockout* stored_entry(const lockout_table& table, int slot, uint32_t key) {
    auto found = table.find(slot);
    return found != table.end() && key != 0 && found->second.key == key ? &found->second : nullptr;
}

bool lockout_active(const platform::lockout_policy& policy) {
    return policy.enabled && policy.threshold > 0;
}

// Drops the records that no longer count and a lock that has run out;
// true when something changed.
bool age(slot_lockout& entry, const platform::lockout_policy& policy, long long time) {
    bool changed = false;
    if (policy.reset_after > 0) {
        auto old = entry.failures.size();
        std::vector<long long> kept;
        for (long long failure : entry.failures)
            if (time - failure < policy.reset_after) kept.push_back(failure);
        entry.failures = std::move(kept);
        changed = entry.failures.size() != old;
    }
    if (entry.locked && policy.duration > 0 && time - entry.locked_at >= policy.duration) {
        entry.locked = false;
        entry.locked_at = 0;
        changed = true;
    }
    return changed;
}

// The slot's entry when it belongs to the slot's current user; stale or
// empty entries are removed.
slot_lockout* entry_of(lockout_table& table, int slot, uint32_t key, bool& changed) {
    auto found = table.find(slot);
    if (found == table.end()) return nullptr;
    if (key == 0 || found->second.key != key) {
        table.erase(found);
        changed = true;
        return nullptr;
    }
    return &found->second;
}

void drop_if_empty(lockout_table& table, int slot) {
    auto found = table.find(slot);
    if (found != table.end() && found->second.failures.empty() && !found->second.locked)
        table.erase(found);
}

bool valid_slot(int slot) { return slot >= 0 && slot < MAX_USER_SLOTS; }

long long at_least_zero(long long value) { return value < 0 ? 0 : value; }

}  // namespace

namespace platform {

std::string lockout_file() { return bmc_path("/var/bmc/lockout"); }

std::string account_policy_file() { return bmc_path("/nv/redfish/accountservice.ini"); }

lockout_policy read_lockout_policy() {
    lockout_policy policy;
    boost::property_tree::ptree tree;
    if (!sim::read_ini(account_policy_file(), tree)) return policy;
    policy.threshold =
        at_least_zero(tree.get_optional<long long>("AccountService.AccountLockoutThreshold")
                          .value_or(policy.threshold));
    policy.duration =
        at_least_zero(tree.get_optional<long long>("AccountService.AccountLockoutDuration")
                          .value_or(policy.duration));
    policy.reset_after =
        at_least_zero(tree.get_optional<long long>("AccountService.AccountLockoutCounterResetAfter")
                          .value_or(policy.reset_after));
    policy.enabled =
        tree.get_optional<long long>("AccountService.AccountLockoutEnabled").value_or(1) != 0;
    return policy;
}

int bad_password_count(int slot) {
    if (!valid_slot(slot)) return 0;
    lockout_policy policy = read_lockout_policy();
    uint32_t key = user_slot_key(slot);
    return with_lockout(0, [&](lockout_table& table, bool&) {
        auto found = table.find(slot);
        if (found == table.end() || key == 0 || found->second.key != key) return 0;
        slot_lockout entry = found->second;
        age(entry, policy, now());
        return static_cast<int>(entry.failures.size());
    });
}

void set_lockout_clock_for_tests(long (*clock)()) { test_clock = clock; }

}  // namespace platform

extern "C" int isUserLocked(int slot) {
    if (!valid_slot(slot)) return 0;
    uint32_t key = platform::user_slot_key(slot);
    const std::shared_ptr<const lockout_table> table = stored_lockouts();
    const slot_lockout* stored = stored_entry(*table, slot, key);
    if (!stored || !stored->locked) return 0;
    platform::lockout_policy policy = platform::read_lockout_policy();
    return with_lockout(0, [&](lockout_table& table, bool& changed) {
        slot_lockout* entry = entry_of(table, slot, key, changed);
        if (!entry || !entry->locked) return 0;
        if (age(*entry, policy, now())) {
            changed = true;
            bool locked = entry->locked;
            drop_if_empty(table, slot);
            if (!locked) return 0;
        }
        return lockout_active(policy) ? 1 : 0;
    });
}

// A slot without a user (a name that is no user) costs the same locked
// write as a bad password of a user, so the time of the answer tells
// nothing; it records nothing.
extern "C" int AddBadPwdRecords(int slot) {
    platform::lockout_policy policy = platform::read_lockout_policy();
    uint32_t key = valid_slot(slot) ? platform::user_slot_key(slot) : 0;
    return with_lockout(-1, [&](lockout_table& table, bool& changed) {
        changed = true;
        if (key == 0) return -1;
        long long time = now();
        slot_lockout* entry = entry_of(table, slot, key, changed);
        if (!entry) {
            entry = &table[slot];
            entry->key = key;
        }
        age(*entry, policy, time);
        if (entry->locked) return 0;  // a locked account collects no records
        entry->failures.push_back(time);
        const int counted = static_cast<int>(entry->failures.size());
        if (lockout_active(policy) && counted >= policy.threshold) {
            entry->locked = true;
            entry->locked_at = time;
            entry->failures.clear();
        }
        return counted;
    });
}

extern "C" int ClearBadPwdRecords(int slot) {
    if (!valid_slot(slot)) return -1;
    uint32_t key = platform::user_slot_key(slot);
    const std::shared_ptr<const lockout_table> table = stored_lockouts();
    const slot_lockout* stored = stored_entry(*table, slot, key);
    if (!stored || stored->failures.empty()) return 0;
    return with_lockout(-1, [&](lockout_table& table, bool& changed) {
        slot_lockout* entry = entry_of(table, slot, key, changed);
        if (entry && !entry->failures.empty()) {
            entry->failures.clear();
            drop_if_empty(table, slot);
            changed = true;
        }
        return 0;
    });
}

extern "C" int UnlockUser(int slot) {
    if (!valid_slot(slot)) return -1;
    return with_lockout(-1, [&](lockout_table& table, bool& changed) {
        changed = table.erase(slot) > 0;
        return 0;
    });
}

// Re-reads the policy (every call does) and sweeps the state: stale
// entries, expired locks and records that no longer count go.
extern "C" int LoadUserLockFromFile(void) {
    platform::lockout_policy policy = platform::read_lockout_policy();
    uint32_t keys[MAX_USER_SLOTS];
    for (int slot = 0; slot < MAX_USER_SLOTS; ++slot) keys[slot] = platform::user_slot_key(slot);
    return with_lockout(-1, [&](lockout_table& table, bool& changed) {
        long long time = now();
        for (int slot = 0; slot < MAX_USER_SLOTS; ++slot) {
            slot_lockout* entry = entry_of(table, slot, keys[slot], changed);
            if (entry && age(*entry, policy, time)) {
                changed = true;
                drop_if_empty(table, slot);
            }
        }
        return 0;
    });
}
