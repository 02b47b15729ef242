#include "platform/sim/snmp_users.h"

#include <fcntl.h>
#include <sys/file.h>

#include <boost/json.hpp>
#include <cstdint>

#include "base/bmc_root.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "platform/sim/password_hash.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/user_table.h"

namespace json = boost::json;

namespace {

constexpr int snmp_format = 1;

json::object read_document() {
    std::string text;
    if (platform::sim::read_file(platform::snmp_users_file(), text)) {
        json::error_code error;
        json::value value = json::parse(text, error);
        const json::object* object = error ? nullptr : value.if_object();
        const json::value* format = object ? object->if_contains("format") : nullptr;
        const json::value* slots = object ? object->if_contains("slots") : nullptr;
        if (format && format->is_int64() && format->get_int64() == snmp_format && slots &&
            slots->is_array())
            return *object;
        console_log("[ERROR] %s is malformed; read as empty\n",
                    platform::snmp_users_file().c_str());
    }
    return json::object{{"format", snmp_format}, {"slots", json::array()}};
}

// The slot's entry when it belongs to the user with this key.
const json::object* entry_of(const json::object& document, int slot, uint32_t key) {
    for (const json::value& each : document.at("slots").get_array()) {
        const json::object* entry = each.if_object();
        const json::value* number = entry ? entry->if_contains("slot") : nullptr;
        const json::value* owner = entry ? entry->if_contains("key") : nullptr;
        if (number && number->is_int64() && number->get_int64() == slot && owner &&
            owner->is_int64() && owner->get_int64() == static_cast<std::int64_t>(key))
            return entry;
    }
    return nullptr;
}

int number_of(const json::object& entry, const char* name) {
    const json::value* value = entry.if_contains(name);
    return value && value->is_int64() ? static_cast<int>(value->get_int64()) : 0;
}

bool key_set(const json::object& entry, const char* name) {
    const json::value* value = entry.if_contains(name);
    return value && value->is_string() && !value->get_string().empty();
}

// A null key keeps the stored one; an empty key removes it.
bool new_key(const json::object* old, const char* name, const char* key, std::string& stored) {
    if (!key) {
        stored =
            old && key_set(*old, name) ? std::string(old->at(name).get_string()) : std::string();
        return true;
    }
    if (!*key) {
        stored.clear();
        return true;
    }
    stored = platform::sim::hash_secret(key);
    return !stored.empty();
}

}  // namespace

namespace platform {

const std::string& snmp_users_file() {
    static fixed_bmc_path path("/nv/bmc/snmp_users");
    return path.get();
}

long long snmp_daemon_restarts() { return sim_setting_number("SNMP.DaemonRestarts", 0); }

}  // namespace platform

extern "C" int UtilSNMPSaveCfg(int slot, int authentication_protocol,
                               const char* authentication_key, int encryption_protocol,
                               const char* encryption_key) {
    uint32_t key = platform::user_slot_key(slot);
    if (key == 0 || authentication_protocol < 0 || encryption_protocol < 0) return -1;
    std::string lock_path = platform::bmc_path("/var/bmc/snmp_users.lock");
    if (!platform::sim::make_parent_dirs(lock_path)) return -1;
    platform::sim::unique_fd fd(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!fd.valid()) return -1;
    platform::sim::file_lock lock(fd.get(), LOCK_EX);
    if (!lock.locked()) return -1;
    json::object document = read_document();
    const json::object* old = entry_of(document, slot, key);
    std::string authentication_hash;
    std::string encryption_hash;
    if (!new_key(old, "authentication_key", authentication_key, authentication_hash) ||
        !new_key(old, "encryption_key", encryption_key, encryption_hash))
        return -1;
    json::array slots;
    for (const json::value& each : document.at("slots").get_array()) {
        const json::object* entry = each.if_object();
        const json::value* number = entry ? entry->if_contains("slot") : nullptr;
        if (number && number->is_int64() && number->get_int64() != slot) slots.push_back(each);
    }
    slots.push_back(json::object{{"slot", slot},
                                 {"key", static_cast<std::int64_t>(key)},
                                 {"authentication_protocol", authentication_protocol},
                                 {"authentication_key", authentication_hash},
                                 {"encryption_protocol", encryption_protocol},
                                 {"encryption_key", encryption_hash}});
    document["slots"] = std::move(slots);
    return platform::sim::replace_file(platform::snmp_users_file(),
                                       json::serialize(document) + '\n', 0600)
               ? 0
               : -1;
}

// A used slot without settings reads as protocols 0 and no keys.
extern "C" int UtilSNMPGetCfg(int slot, int* authentication_protocol, int* authentication_key_set,
                              int* encryption_protocol, int* encryption_key_set) {
    int values[4] = {0, 0, 0, 0};
    uint32_t key = platform::user_slot_key(slot);
    int result = -1;
    if (key != 0) {
        result = 0;
        json::object document = read_document();
        if (const json::object* entry = entry_of(document, slot, key)) {
            values[0] = number_of(*entry, "authentication_protocol");
            values[1] = key_set(*entry, "authentication_key") ? 1 : 0;
            values[2] = number_of(*entry, "encryption_protocol");
            values[3] = key_set(*entry, "encryption_key") ? 1 : 0;
        }
    }
    int* outputs[4] = {authentication_protocol, authentication_key_set, encryption_protocol,
                       encryption_key_set};
    for (int i = 0; i < 4; ++i)
        if (outputs[i]) *outputs[i] = values[i];
    return result;
}

// Records the operation (the simulation has no daemon to restart).
extern "C" int setSNMPDaemonOP(int operation) {
    return platform::update_sim_settings([&](boost::property_tree::ptree& tree) {
        tree.put("SNMP.DaemonRestarts", tree.get("SNMP.DaemonRestarts", 0LL) + 1);
        tree.put("SNMP.LastOperation", operation);
        return true;
    })
               ? 0
               : -1;
}
