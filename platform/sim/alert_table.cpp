#include "platform/sim/alert_table.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <boost/json.hpp>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <string_view>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

namespace json = boost::json;

namespace {

constexpr int alert_table_format = 1;

// The table locked by this process and the changes made to it.
struct locked_table {
    int lock_fd = -1;
    int depth = 0;
    pid_t owner = 0;
    bool changed = false;
    platform::alert_table entries{};

    // A lock inherited over fork belongs to the parent.
    bool held() const { return lock_fd >= 0 && owner == ::getpid(); }
};

std::recursive_mutex guard;

locked_table& state() {
    static locked_table table;
    return table;
}

const std::string& alert_lock_file() {
    static platform::fixed_bmc_path path("/var/bmc/alert_dest.lock");
    return path.get();
}

template <std::size_t N>
bool copy_whole_text(char (&field)[N], std::string_view text) {
    if (text.size() >= N || text.find('\0') != std::string_view::npos) return false;
    std::memcpy(field, text.data(), text.size());
    field[text.size()] = '\0';
    return true;
}

template <std::size_t N>
void read_text(const json::object& object, const char* key, char (&field)[N]) {
    const json::value* value = object.if_contains(key);
    if (value && value->is_string()) copy_whole_text(field, value->get_string());
}

uint8_t read_small(const json::object& object, const char* key, int max) {
    const json::value* value = object.if_contains(key);
    if (!value || !value->is_int64() || value->get_int64() < 0 || value->get_int64() > max)
        return 0;
    return static_cast<uint8_t>(value->get_int64());
}

}  // namespace

namespace platform {

St_AlertDest parse_alert_entry(const json::object& object) {
    St_AlertDest entry{};
    const json::value* enabled = object.if_contains("enabled");
    entry.enabled = enabled && enabled->is_bool() && enabled->get_bool();
    entry.type = read_small(object, "type", ALERT_DEST_SNMPV3_TRAP);
    entry.event_types = read_small(object, "event_types", 0xFF);
    read_text(object, "destination", entry.destination);
    read_text(object, "context", entry.context);
    read_text(object, "community", entry.community);
    read_text(object, "snmp_user", entry.snmp_user);
    entry.authentication_protocol = read_small(object, "authentication_protocol", 2);
    read_text(object, "authentication_key", entry.authentication_key);
    entry.encryption_protocol = read_small(object, "encryption_protocol", 2);
    read_text(object, "encryption_key", entry.encryption_key);
    read_text(object, "smtp_subject", entry.smtp_subject);
    read_text(object, "smtp_user", entry.smtp_user);
    return entry;
}

json::object alert_entry_json(const St_AlertDest& entry) {
    return {{"enabled", entry.enabled != 0},
            {"type", entry.type},
            {"event_types", entry.event_types},
            {"destination", entry.destination},
            {"context", entry.context},
            {"community", entry.community},
            {"snmp_user", entry.snmp_user},
            {"authentication_protocol", entry.authentication_protocol},
            {"authentication_key", entry.authentication_key},
            {"encryption_protocol", entry.encryption_protocol},
            {"encryption_key", entry.encryption_key},
            {"smtp_subject", entry.smtp_subject},
            {"smtp_user", entry.smtp_user}};
}

std::string alert_table_text(const alert_table& table) {
    json::array entries;
    for (const St_AlertDest& entry : table) entries.emplace_back(alert_entry_json(entry));
    return json::serialize(
        json::object{{"format", alert_table_format}, {"entries", std::move(entries)}});
}

}  // namespace platform

namespace {

bool valid_index(int index) { return index >= 0 && index < ALERT_DEST_COUNT; }

// Runs change on an entry of the locked table, marking the table changed.
template <typename Change>
int change_entry(int index, Change change) {
    std::lock_guard<std::recursive_mutex> hold(guard);
    locked_table& table = state();
    if (!valid_index(index) || !table.held()) return -1;
    St_AlertDest changed = table.entries[index];
    if (!change(changed)) return -1;
    table.entries[index] = changed;
    table.changed = true;
    return 0;
}

std::string_view text_or_empty(const char* text) { return text ? text : ""; }

}  // namespace

namespace platform {

const std::string& alert_table_file() {
    static fixed_bmc_path path("/nv/bmc/alert_dest");
    return path.get();
}

alert_table read_alert_table() {
    alert_table table{};
    std::string text;
    if (!sim::read_file(alert_table_file(), text)) return table;
    json::error_code error;
    json::value document = json::parse(text, error);
    const json::object* object = error ? nullptr : document.if_object();
    const json::value* entries = object ? object->if_contains("entries") : nullptr;
    if (!entries || !entries->is_array()) return table;
    std::size_t index = 0;
    for (const json::value& entry : entries->get_array()) {
        if (index == table.size()) break;
        if (const json::object* fields = entry.if_object())
            table[index] = parse_alert_entry(*fields);
        ++index;
    }
    return table;
}

std::shared_ptr<const alert_table> stored_alert_table() {
    static file_cache<alert_table> cache;
    std::shared_ptr<const alert_table> table;
    cache.get(
        alert_table_file(),
        [](alert_table& parsed) {
            parsed = read_alert_table();
            return PLT_OK;
        },
        table);
    return table;
}

bool lock_alert_table() {
    std::lock_guard<std::recursive_mutex> hold(guard);
    locked_table& table = state();
    if (!table.held()) {
        std::string path = alert_lock_file();
        sim::unique_fd fd(sim::make_parent_dirs(path)
                              ? ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)
                              : -1);
        int result = -1;
        if (fd.valid()) {
            do {
                result = ::flock(fd.get(), LOCK_EX);
            } while (result != 0 && errno == EINTR);
        }
        if (result != 0) {
            console_log("[ERROR] lx_mutex_get: %s: %s\n", path.c_str(), std::strerror(errno));
            return false;
        }
        if (table.lock_fd >= 0) ::close(table.lock_fd);
        table = locked_table{};
        table.lock_fd = ::dup(fd.get());
        table.owner = ::getpid();
        table.entries = read_alert_table();
    }
    ++table.depth;
    return true;
}

void unlock_alert_table() {
    std::lock_guard<std::recursive_mutex> hold(guard);
    locked_table& table = state();
    if (!table.held() || --table.depth > 0) return;
    // Changes that were not committed are dropped with the lock.
    ::flock(table.lock_fd, LOCK_UN);
    ::close(table.lock_fd);
    table = locked_table{};
}

bool alert_table_changed() {
    std::lock_guard<std::recursive_mutex> hold(guard);
    return state().held() && state().changed;
}

bool commit_alert_table() {
    std::lock_guard<std::recursive_mutex> hold(guard);
    locked_table& table = state();
    if (!table.held()) return false;
    if (!sim::replace_file(alert_table_file(), platform::alert_table_text(table.entries), 0600)) {
        console_log("[ERROR] PSCommit: cannot write %s: %s\n", alert_table_file().c_str(),
                    std::strerror(errno));
        return false;
    }
    table.changed = false;
    return true;
}

}  // namespace platform

extern "C" int get_config_alert_dest(int index, St_AlertDest* entry) {
    if (!valid_index(index) || !entry) return -1;
    *entry = (*platform::stored_alert_table())[index];
    return 0;
}

extern "C" int get_config_alter_enable(int index) {
    if (!valid_index(index)) return -1;
    return (*platform::stored_alert_table())[index].enabled ? 1 : 0;
}

extern "C" int set_config_alert_dest(int index, const char* destination) {
    return change_entry(index, [&](St_AlertDest& entry) {
        return copy_whole_text(entry.destination, text_or_empty(destination));
    });
}

extern "C" int set_config_alert_proto(int index, int type) {
    return change_entry(index, [&](St_AlertDest& entry) {
        if (type < ALERT_DEST_SNMP_TRAP || type > ALERT_DEST_SNMPV3_TRAP) return false;
        entry.type = static_cast<uint8_t>(type);
        return true;
    });
}

extern "C" int set_config_alert_type(int index, int event_types) {
    return change_entry(index, [&](St_AlertDest& entry) {
        if (event_types < 0 || event_types > 0xFF) return false;
        entry.event_types = static_cast<uint8_t>(event_types);
        return true;
    });
}

extern "C" int set_config_alert_context(int index, const char* context) {
    return change_entry(index, [&](St_AlertDest& entry) {
        return copy_whole_text(entry.context, text_or_empty(context));
    });
}

extern "C" int set_config_alert_community(int index, const char* community) {
    return change_entry(index, [&](St_AlertDest& entry) {
        return copy_whole_text(entry.community, text_or_empty(community));
    });
}

extern "C" int set_config_alert_snmpv3(int index, const char* user, int authentication_protocol,
                                       const char* authentication_key, int encryption_protocol,
                                       const char* encryption_key) {
    return change_entry(index, [&](St_AlertDest& entry) {
        if (authentication_protocol < 0 || authentication_protocol > 2 || encryption_protocol < 0 ||
            encryption_protocol > 2)
            return false;
        entry.authentication_protocol = static_cast<uint8_t>(authentication_protocol);
        entry.encryption_protocol = static_cast<uint8_t>(encryption_protocol);
        return copy_whole_text(entry.snmp_user, text_or_empty(user)) &&
               (!authentication_key ||
                copy_whole_text(entry.authentication_key, authentication_key)) &&
               (!encryption_key || copy_whole_text(entry.encryption_key, encryption_key));
    });
}

extern "C" int set_smtp_paramters(int index, const char* subject, const char* user) {
    return change_entry(index, [&](St_AlertDest& entry) {
        return copy_whole_text(entry.smtp_subject, text_or_empty(subject)) &&
               copy_whole_text(entry.smtp_user, text_or_empty(user));
    });
}

extern "C" int enable_pef_filter(int index, int enable) {
    return change_entry(index, [&](St_AlertDest& entry) {
        entry.enabled = enable != 0;
        return true;
    });
}

extern "C" int clean_alert_dest(int index) {
    return change_entry(index, [](St_AlertDest& entry) {
        entry = St_AlertDest{};
        return true;
    });
}

// Printable ASCII without blanks, as SNMP managers accept in a community.
extern "C" int isVaildSNMPv2CMString(const char* text) {
    if (!text) return 0;
    std::size_t length = 0;
    for (; text[length] != '\0'; ++length) {
        const unsigned char c = static_cast<unsigned char>(text[length]);
        if (c <= 0x20 || c >= 0x7f || length >= sizeof(St_AlertDest::community) - 1) return 0;
    }
    return length > 0 ? 1 : 0;
}
