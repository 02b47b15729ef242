#include "platform/sim/user_table.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <boost/json.hpp>
#include <cerrno>
#include <cstring>
#include <mutex>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "base/file_watch.h"
#include "base/input_recording.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "platform/sim/alert_table.h"
#include "platform/sim/password_hash.h"
#include "platform/sim/sim_file.h"

namespace json = boost::json;

namespace {

constexpr int user_table_format = 1;
constexpr std::size_t max_password_length = 20;

using slot_record = platform::user_slot;
using slot_array = platform::user_slots;

// The table of this process, for the root it was loaded from.
struct table_state {
    std::string root;
    bool loaded = false;
    platform::file_version identity;
    platform::watched_files watched;  // not watching: the version decides
    slot_array slots;
    bool damaged = false;  // the file is malformed: kept as it is for repair
    std::array<bool, MAX_USER_SLOTS> dirty{};
    int selected = 0;
    // lx_mutex_get: the locked descriptor, the nesting depth, the owner.
    int lock_fd = -1;
    int depth = 0;
    pid_t owner = 0;
};

std::recursive_mutex guard;

bool valid_slot(int slot) { return slot >= 0 && slot < MAX_USER_SLOTS; }

// Slot 0 is reserved: it is never written.
bool writable_slot(int slot) { return slot > 0 && slot < MAX_USER_SLOTS; }

bool valid_privilege(int level) {
    return (level >= PRIV_CALLBACK && level <= PRIV_ADMINISTRATOR) || level == PRIV_NO_ACCESS;
}

// A lock inherited over fork belongs to the parent: forget it without
// unlocking (the parent still holds it through the shared description).
void forget_foreign_lock(table_state& state) {
    if (state.lock_fd >= 0 && state.owner != ::getpid()) {
        ::close(state.lock_fd);
        state.lock_fd = -1;
        state.depth = 0;
        state.owner = 0;
    }
}

void release_lock(table_state& state) {
    if (state.lock_fd >= 0) {
        if (state.owner == ::getpid()) ::flock(state.lock_fd, LOCK_UN);
        ::close(state.lock_fd);
    }
    state.lock_fd = -1;
    state.depth = 0;
    state.owner = 0;
}

// Tests point the process at a fresh root; nothing of the old one is kept.
table_state& state() {
    static table_state current;
    if (current.root != platform::bmc_root()) {
        release_lock(current);
        current = table_state();
        current.root = platform::bmc_root();
    }
    forget_foreign_lock(current);
    return current;
}

// ---------------------------------------------------------------- file

const json::value* member(const json::object& object, const char* name) {
    return object.if_contains(name);
}

bool parse_slot(const json::value& value, slot_record& record, int& slot) {
    const json::object* object = value.if_object();
    if (!object) return false;
    const json::value* number = member(*object, "slot");
    const json::value* key = member(*object, "key");
    const json::value* name = member(*object, "name");
    const json::value* privilege = member(*object, "privilege");
    const json::value* enabled = member(*object, "enabled");
    const json::value* password = member(*object, "password");
    if (!number || !number->is_int64() || !key || !key->is_int64() || !name || !name->is_string() ||
        !privilege || !privilege->is_int64() || !enabled || !enabled->is_bool() || !password ||
        !password->is_string())
        return false;
    if (!valid_slot(static_cast<int>(number->get_int64())) || key->get_int64() < 0 ||
        key->get_int64() > UINT32_MAX || !valid_privilege(static_cast<int>(privilege->get_int64())))
        return false;
    slot = static_cast<int>(number->get_int64());
    record.key = static_cast<uint32_t>(key->get_int64());
    record.name = std::string(name->get_string());
    record.privilege = static_cast<int>(privilege->get_int64());
    record.enabled = enabled->get_bool();
    record.password = std::string(password->get_string());
    if (record.name.size() > MAX_USER_NAME_LEN) record.name.resize(MAX_USER_NAME_LEN);
    return true;
}

bool parse_table(const std::string& text, slot_array& slots) {
    json::parse_options options;
    options.allow_invalid_utf8 = true;  // names are bytes to the BMC
    json::error_code error;
    json::value document = json::parse(text, error, {}, options);
    const json::object* object = error ? nullptr : document.if_object();
    const json::value* format = object ? member(*object, "format") : nullptr;
    const json::value* list = object ? member(*object, "slots") : nullptr;
    if (!format || !format->is_int64() || format->get_int64() != user_table_format || !list ||
        !list->is_array())
        return false;
    slots = slot_array();
    for (const json::value& entry : list->get_array()) {
        slot_record record;
        int slot = 0;
        if (!parse_slot(entry, record, slot)) return false;
        slots[slot] = std::move(record);
    }
    return true;
}

json::object slot_json(int slot, const slot_record& record) {
    return {{"slot", slot},
            {"key", static_cast<std::int64_t>(record.key)},
            {"name", record.name},
            {"privilege", record.privilege},
            {"enabled", record.enabled},
            {"password", record.password}};
}

std::string serialise_table(const slot_array& slots) {
    json::array list;
    for (int slot = 0; slot < MAX_USER_SLOTS; ++slot) list.push_back(slot_json(slot, slots[slot]));
    // One slot a line, for people who look at the file.
    std::string text = "{\"format\":" + std::to_string(user_table_format) + ",\"slots\":[\n";
    for (std::size_t i = 0; i < list.size(); ++i)
        text += json::serialize(list[i]) + (i + 1 < list.size() ? ",\n" : "\n");
    return text + "]}\n";
}

// Reads the file as it is now; a missing file is the empty table. A
// malformed file also reads as empty (and is said so once per version);
// damaged tells the caller, so that no commit writes over it.
void read_table(slot_array& slots, platform::file_version& identity, bool& damaged) {
    std::string path = platform::user_table_file();
    slots = slot_array();
    identity = platform::file_version();
    damaged = false;
    platform::sim::unique_fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status;
    if (!fd.valid() || ::fstat(fd.get(), &status) != 0) return;
    const platform::file_version version = platform::version_of(status);
    if (platform::settled(version)) identity = version;
    std::string text;
    if (!platform::sim::read_all(fd.get(), text) || !parse_table(text, slots)) {
        console_log(
            "[ERROR] user table %s is malformed; read as empty, no login succeeds and no "
            "account change is stored until it is restored\n",
            path.c_str());
        slots = slot_array();
        damaged = true;
    }
}

// The file's version when it can tell every later change, else one that
// matches no file, so that the next use reads the file again.
platform::file_version trusted_identity() {
    const platform::file_version version = platform::version_of(platform::user_table_file());
    return platform::settled(version) ? version : platform::file_version();
}

// Whether the table read last is still the file's content: while it is
// watched, no event named the file; else its version is the same. A file
// read before it settled is looked at until it has, so that answers built
// from it can be kept.
bool still_current(table_state& table, const std::string& path) {
    if (table.identity.exists && table.watched.unchanged()) {
        platform::note_input(path, table.identity);
        return true;
    }
    // Armed before the version is taken and the file read again, so that
    // any later change shows.
    table.watched.watch({path});
    return platform::version_of(path) == table.identity;
}

// Brings the slots this process has not changed up to the file.
void refresh(table_state& table, bool force) {
    if (table.loaded && !force && still_current(table, platform::user_table_file())) return;
    slot_array fresh;
    read_table(fresh, table.identity, table.damaged);
    for (int slot = 0; slot < MAX_USER_SLOTS; ++slot)
        if (!table.dirty[slot]) table.slots[slot] = std::move(fresh[slot]);
    table.loaded = true;
}

table_state& loaded_table() {
    table_state& table = state();
    refresh(table, false);
    return table;
}

int open_lock_file() {
    std::string path = platform::user_table_lock_file();
    if (!platform::sim::make_parent_dirs(path)) return -1;
    return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
}

bool lock_exclusive(int fd) {
    int result;
    do {
        result = ::flock(fd, LOCK_EX);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

// Writes the table under the user-table lock: the lock of lx_mutex_get
// when this process holds it, else one taken for the commit.
bool commit(table_state& table) {
    platform::sim::unique_fd own_lock(table.lock_fd >= 0 ? -1 : open_lock_file());
    if (table.lock_fd < 0 && (!own_lock.valid() || !lock_exclusive(own_lock.get()))) return false;
    refresh(table, true);
    std::string path = platform::user_table_file();
    bool written =
        !table.damaged && platform::sim::replace_file(path, serialise_table(table.slots), 0600);
    if (written) {
        table.dirty.fill(false);
        table.identity = trusted_identity();
    } else {
        // A refused change must not reach the file with a later commit.
        console_log("[ERROR] PSCommit: cannot write %s: %s\n", path.c_str(), std::strerror(errno));
        table.dirty.fill(false);
        table.loaded = false;
    }
    if (own_lock.valid()) ::flock(own_lock.get(), LOCK_UN);
    return written;
}

bool name_matches(const std::string& stored, const char* name) {
    return !stored.empty() && std::strncmp(stored.c_str(), name, MAX_USER_NAME_LEN) == 0;
}

// Runs change on a slot that may be written, marking it changed.
template <typename Change>
int change_slot(int slot, Change change) {
    if (!writable_slot(slot)) return -1;
    std::lock_guard<std::recursive_mutex> hold(guard);
    table_state& table = loaded_table();
    if (!change(table, table.slots[slot])) return -1;
    table.dirty[slot] = true;
    return 0;
}

}  // namespace

namespace platform {

const std::string& user_table_file() {
    static fixed_bmc_path path("/nv/bmc/users");
    return path.get();
}

const std::string& user_table_lock_file() {
    static fixed_bmc_path path("/var/bmc/user_table.lock");
    return path.get();
}

bool parse_user_slot(const json::value& value, user_slot& record, int& slot) {
    return parse_slot(value, record, slot);
}

json::object user_slot_json(int slot, const user_slot& record) { return slot_json(slot, record); }

bool read_user_slots(user_slots& slots) {
    slots = user_slots();
    std::string text;
    struct stat status;
    if (::stat(user_table_file().c_str(), &status) != 0 && errno == ENOENT) return true;
    return sim::read_file(user_table_file(), text) && parse_table(text, slots);
}

std::string user_table_text(const user_slots& slots) { return serialise_table(slots); }

bool valid_user_name(const std::string& name) {
    if (name.empty() || name.size() > MAX_USER_NAME_LEN) return false;
    for (char c : name) {
        auto byte = static_cast<unsigned char>(c);
        if (byte <= 0x20 || byte == 0x7F) return false;
    }
    return true;
}

bool valid_user_password(const std::string& password) {
    return !password.empty() && password.size() <= max_password_length &&
           password.find('\0') == std::string::npos;
}

void discard_user_table_changes() {
    std::lock_guard<std::recursive_mutex> hold(guard);
    table_state& table = state();
    table.dirty.fill(false);
    table.loaded = false;
}

uint32_t user_slot_key(int slot) {
    if (!valid_slot(slot)) return 0;
    std::lock_guard<std::recursive_mutex> hold(guard);
    const slot_record& record = loaded_table().slots[slot];
    return record.used() ? record.key : 0;
}

std::string user_slot_name(int slot) {
    if (!valid_slot(slot)) return {};
    std::lock_guard<std::recursive_mutex> hold(guard);
    const slot_record& record = loaded_table().slots[slot];
    return record.used() ? record.name : std::string();
}

seed_result seed_first_administrator(const std::string& name, const std::string& password) {
    if (!valid_user_name(name) || !valid_user_password(password)) return seed_result::failed;
    std::lock_guard<std::recursive_mutex> hold(guard);
    if (lx_mutex_get(USER_TABLE_MUTEX) != 0) return seed_result::failed;
    seed_result result = seed_result::exists;
    struct stat status;
    if (::stat(user_table_file().c_str(), &status) != 0) {
        table_state& table = state();
        slot_array slots;
        slot_record& admin = slots[1];
        admin.key = sim::random_key();
        admin.name = name;
        admin.privilege = PRIV_ADMINISTRATOR;
        admin.enabled = true;
        admin.password = sim::hash_secret(password);
        result = seed_result::failed;
        if (admin.key != 0 && !admin.password.empty() &&
            sim::replace_file(user_table_file(), serialise_table(slots), 0600)) {
            table.slots = slots;
            table.dirty.fill(false);
            table.identity = trusted_identity();
            table.loaded = true;
            result = seed_result::seeded;
        }
    }
    lx_mutex_put(USER_TABLE_MUTEX);
    return result;
}

}  // namespace platform

// ---------------------------------------------------------------- lock

extern "C" int lx_mutex_get(int mutex_id) {
    if (mutex_id == ALERT_TABLE_MUTEX) return platform::lock_alert_table() ? 0 : -1;
    if (mutex_id != USER_TABLE_MUTEX) return -1;
    std::lock_guard<std::recursive_mutex> hold(guard);
    table_state& table = state();
    if (table.depth == 0) {
        int fd = open_lock_file();
        if (fd < 0 || !lock_exclusive(fd)) {
            console_log("[ERROR] lx_mutex_get: %s: %s\n", platform::user_table_lock_file().c_str(),
                        std::strerror(errno));
            if (fd >= 0) ::close(fd);
            return -1;
        }
        table.lock_fd = fd;
        table.owner = ::getpid();
    }
    ++table.depth;
    refresh(table, true);
    return 0;
}

extern "C" int lx_mutex_put(int mutex_id) {
    if (mutex_id == ALERT_TABLE_MUTEX) {
        platform::unlock_alert_table();
        return 0;
    }
    if (mutex_id != USER_TABLE_MUTEX) return -1;
    std::lock_guard<std::recursive_mutex> hold(guard);
    table_state& table = state();
    if (table.depth > 0 && --table.depth == 0) {
        release_lock(table);
        // Changes that were not committed go with the lock, so that no
        // later commit writes half of a refused change.
        if (std::find(table.dirty.begin(), table.dirty.end(), true) != table.dirty.end())
            platform::discard_user_table_changes();
    }
    return 0;
}

// ---------------------------------------------------------------- records

extern "C" void LibSetUserIndex(int slot) {
    std::lock_guard<std::recursive_mutex> hold(guard);
    state().selected = slot;
}

extern "C" int LibGetUserIndex(void) {
    std::lock_guard<std::recursive_mutex> hold(guard);
    return state().selected;
}

extern "C" int LibInitUserInfo(St_UserInfo* info) {
    if (!info) return -1;
    std::lock_guard<std::recursive_mutex> hold(guard);
    table_state& table = loaded_table();
    if (!valid_slot(table.selected)) return -1;
    const slot_record& record = table.slots[table.selected];
    std::memset(info, 0, sizeof *info);
    if (record.used()) {
        info->key = record.key;
        std::memcpy(info->name, record.name.data(),
                    std::min<std::size_t>(record.name.size(), MAX_USER_NAME_LEN));
        info->lan_privilege = static_cast<uint8_t>(record.privilege);
        info->enabled = record.enabled ? 1 : 0;
    } else {
        info->lan_privilege = PRIV_NO_ACCESS;
    }
    return 0;
}

extern "C" int UtilGetLANPriv(int slot) {
    if (!valid_slot(slot)) return -1;
    std::lock_guard<std::recursive_mutex> hold(guard);
    const slot_record& record = loaded_table().slots[slot];
    return record.used() ? record.privilege : PRIV_NO_ACCESS;
}

extern "C" int UtilSetLANPriv(int slot, int level) {
    if (!valid_privilege(level)) return -1;
    return change_slot(slot, [&](table_state&, slot_record& record) {
        record.privilege = level;
        return true;
    });
}

extern "C" int UtilIsValidUserName(const char* name, int slot) {
    if (!name) return 0;
    std::lock_guard<std::recursive_mutex> hold(guard);
    const table_state& table = loaded_table();
    for (int other = 0; other < MAX_USER_SLOTS; ++other)
        if (other != slot && table.slots[other].used() &&
            name_matches(table.slots[other].name, name))
            return 1;
    return 0;
}

extern "C" int UtilFindUser(const char* name) {
    if (!name || !*name) return -1;
    std::lock_guard<std::recursive_mutex> hold(guard);
    const table_state& table = loaded_table();
    for (int slot = 1; slot < MAX_USER_SLOTS; ++slot) {
        const slot_record& record = table.slots[slot];
        if (record.used() && record.enabled && name_matches(record.name, name)) return slot;
    }
    return -1;
}

// A name that is no user costs one hash like a wrong password does, so the
// time of the answer does not tell the two apart.
extern "C" int UtilCheckUserPassword(int slot, const char* password) {
    static const std::string dummy = platform::sim::unmatched_secret();
    if (!password) return -1;
    std::string stored;
    if (valid_slot(slot)) {
        std::lock_guard<std::recursive_mutex> hold(guard);
        const slot_record& record = loaded_table().slots[slot];
        if (record.used()) stored = record.password;
    }
    const bool matches = platform::sim::verify_secret(stored.empty() ? dummy : stored, password);
    return !stored.empty() && matches ? 0 : -1;
}

extern "C" int UtilSetUserName(int slot, const char* name) {
    if (!name || !platform::valid_user_name(name)) return -1;
    return change_slot(slot, [&](table_state& table, slot_record& record) {
        for (int other = 0; other < MAX_USER_SLOTS; ++other)
            if (other != slot && table.slots[other].used() &&
                name_matches(table.slots[other].name, name))
                return false;
        if (!record.used()) {
            record.key = platform::sim::random_key();
            if (record.key == 0) return false;
        }
        record.name = name;
        return true;
    });
}

extern "C" int UtilSetUserPassword(int slot, const char* password) {
    if (!password || !platform::valid_user_password(password)) return -1;
    std::string hash = platform::sim::hash_secret(password);
    if (hash.empty()) return -1;
    return change_slot(slot, [&](table_state&, slot_record& record) {
        record.password = hash;
        return true;
    });
}

extern "C" int UtilSetUserEnable(int slot, int enable) {
    return change_slot(slot, [&](table_state&, slot_record& record) {
        record.enabled = enable != 0;
        return true;
    });
}

extern "C" int UtilDelUserName(int slot) {
    return change_slot(slot, [](table_state&, slot_record& record) {
        record.name.clear();
        record.key = 0;
        return true;
    });
}

extern "C" int UtilDelUserPassword(int slot) {
    return change_slot(slot, [](table_state&, slot_record& record) {
        record.password.clear();
        return true;
    });
}

extern "C" int clear_user_privilege(int slot) {
    return change_slot(slot, [](table_state&, slot_record& record) {
        record.privilege = PRIV_NO_ACCESS;
        return true;
    });
}

extern "C" int PSCommit(void) {
    // The alert table commits on its own: its changes never come with the
    // user table's.
    if (platform::alert_table_changed()) return platform::commit_alert_table() ? 0 : -1;
    std::lock_guard<std::recursive_mutex> hold(guard);
    return commit(state()) ? 0 : -1;
}
