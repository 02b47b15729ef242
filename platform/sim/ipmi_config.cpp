// PltIPMI_BackupConfig and PltIPMI_RestoreConfig over the simulator's
// stores: the user table, the alert table, lan.ini and serial.ini.
#include <algorithm>
#include <cstring>

#include "base/atomic_file.h"
#include "platform/libipmi_config.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "platform/sim/bmc_lan.h"
#include "platform/sim/ipmi_config_document.h"
#include "platform/sim/serial_port.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

using platform::sim::ipmi_configuration;

bool read_configuration(ipmi_configuration& config) {
    if (PltLAN_GetConfig(&config.lan) != PLT_OK) return false;
    for (int service = 0; service < NET_SERVICE_COUNT; ++service)
        if (PltNET_GetService(service, &config.services[service]) != PLT_OK) return false;
    if (PltSERIAL_GetConfig(1, &config.serial) != PLT_OK ||
        !platform::read_user_slots(config.users))
        return false;
    config.alerts = platform::read_alert_table();
    return true;
}

// The settings files keep what is not configuration (the link, the lease).
bool settings_texts(const ipmi_configuration& config, std::string& lan, std::string& serial) {
    pt::ptree lan_tree = platform::sim::read_state_ini(platform::lan_settings_file());
    platform::put_lan_config(lan_tree, config.lan);
    for (int service = 0; service < NET_SERVICE_COUNT; ++service)
        platform::put_net_service(lan_tree, service, config.services[service]);
    pt::ptree serial_tree = platform::sim::read_state_ini(platform::serial_settings_file());
    platform::put_serial_config(serial_tree, config.serial);
    return platform::sim::ini_text(platform::lan_settings_file(), lan_tree, lan) &&
           platform::sim::ini_text(platform::serial_settings_file(), serial_tree, serial);
}

// Called with every store locked.
bool stage_and_commit(const ipmi_configuration& config) {
    std::string lan, serial;
    if (!settings_texts(config, lan, serial)) return false;
    platform::staged_files files;
    for (const std::string& path :
         {platform::user_table_file(), platform::alert_table_file(), platform::lan_settings_file(),
          platform::serial_settings_file()})
        if (!platform::sim::make_parent_dirs(path)) return false;
    return files.stage(platform::user_table_file(), platform::user_table_text(config.users),
                       0600) &&
           files.stage(platform::alert_table_file(), platform::alert_table_text(config.alerts),
                       0600) &&
           files.stage(platform::lan_settings_file(), lan, 0644) &&
           files.stage(platform::serial_settings_file(), serial, 0644) && files.commit();
}

void leave_out_secrets(ipmi_configuration& config) {
    for (platform::user_slot& user : config.users) user.password.clear();
    for (St_AlertDest& entry : config.alerts) {
        entry.authentication_key[0] = '\0';
        entry.encryption_key[0] = '\0';
    }
}

// Secrets that a document without them leaves as they are stored.
void keep_stored_secrets(ipmi_configuration& config, const platform::user_slots& users,
                         const platform::alert_table& alerts) {
    for (int slot = 0; slot < MAX_USER_SLOTS; ++slot) {
        platform::user_slot& user = config.users[slot];
        if (user.used() && user.password.empty() && users[slot].key == user.key &&
            users[slot].name == user.name)
            user.password = users[slot].password;
    }
    for (int index = 0; index < ALERT_DEST_COUNT; ++index) {
        St_AlertDest& entry = config.alerts[index];
        const St_AlertDest& stored = alerts[index];
        if (entry.type != ALERT_DEST_SNMPV3_TRAP || stored.type != entry.type ||
            std::strcmp(entry.snmp_user, stored.snmp_user) != 0)
            continue;
        if (!entry.authentication_key[0])
            std::memcpy(entry.authentication_key, stored.authentication_key,
                        sizeof entry.authentication_key);
        if (!entry.encryption_key[0])
            std::memcpy(entry.encryption_key, stored.encryption_key, sizeof entry.encryption_key);
    }
}

bool same_users(const platform::user_slots& left, const platform::user_slots& right) {
    for (int slot = 0; slot < MAX_USER_SLOTS; ++slot)
        if (platform::user_slot_json(slot, left[slot]) !=
            platform::user_slot_json(slot, right[slot]))
            return false;
    return true;
}

// Called with every store locked.
int complete_and_commit(ipmi_configuration& config, bool may_change_users) {
    platform::user_slots users;
    if (!platform::read_user_slots(users)) return PLT_ERR_IO;
    keep_stored_secrets(config, users, platform::read_alert_table());
    if (!may_change_users && !same_users(config.users, users)) return PLT_ERR_STATE;
    return stage_and_commit(config) ? PLT_OK : PLT_ERR_IO;
}

// Locks in one order: the alert table, the user table (as an alert-table
// commit that finds no alert change may commit the user table), the LAN
// settings, the serial settings.
int store_configuration(ipmi_configuration& config, bool may_change_users) {
    if (lx_mutex_get(ALERT_TABLE_MUTEX) != 0) return PLT_ERR_IO;
    int result = PLT_ERR_IO;
    if (lx_mutex_get(USER_TABLE_MUTEX) == 0) {
        platform::sim::with_file_lock(platform::lan_settings_file(), [&] {
            return platform::sim::with_file_lock(platform::serial_settings_file(), [&] {
                result = complete_and_commit(config, may_change_users);
                return true;
            });
        });
        lx_mutex_put(USER_TABLE_MUTEX);
    }
    lx_mutex_put(ALERT_TABLE_MUTEX);
    return result;
}

void copy_reason(const std::string& text, char* reason, int reason_size) {
    if (!reason || reason_size <= 0) return;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(reason_size - 1));
    std::memcpy(reason, text.data(), length);
    reason[length] = '\0';
}

}  // namespace

extern "C" int PltIPMI_BackupConfig(char* text, int size, int with_secrets) {
    if (!text || size <= 0) return PLT_ERR_ARGUMENT;
    ipmi_configuration config;
    if (!read_configuration(config)) return PLT_ERR_FORMAT;
    if (!with_secrets) leave_out_secrets(config);
    const std::string document = platform::sim::ipmi_config_text(config);
    if (document.size() >= static_cast<std::size_t>(size)) return PLT_ERR_ARGUMENT;
    std::memcpy(text, document.c_str(), document.size() + 1);
    return static_cast<int>(document.size());
}

extern "C" int PltIPMI_RestoreConfig(const char* text, int length, int may_change_users,
                                     char* reason, int reason_size) {
    if (!text || length < 0 || length > IPMI_CONFIG_MAX_SIZE) {
        copy_reason("the file is too large", reason, reason_size);
        return PLT_ERR_FORMAT;
    }
    ipmi_configuration config;
    std::string refused;
    if (!platform::sim::parse_ipmi_config({text, static_cast<std::size_t>(length)}, config,
                                          refused)) {
        copy_reason(refused, reason, reason_size);
        return PLT_ERR_FORMAT;
    }
    const int result = store_configuration(config, may_change_users != 0);
    if (result == PLT_ERR_IO)
        console_log("[ERROR] PltIPMI_RestoreConfig: the stores were not written\n");
    return result;
}
