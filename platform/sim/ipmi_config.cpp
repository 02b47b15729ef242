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

// Locks in one order: the alert table, the user table (as an alert-table
// commit that finds no alert change may commit the user table), the LAN
// settings, the serial settings.
bool store_configuration(const ipmi_configuration& config) {
    if (lx_mutex_get(ALERT_TABLE_MUTEX) != 0) return false;
    bool stored = false;
    if (lx_mutex_get(USER_TABLE_MUTEX) == 0) {
        stored = platform::sim::with_file_lock(platform::lan_settings_file(), [&] {
            return platform::sim::with_file_lock(platform::serial_settings_file(),
                                                 [&] { return stage_and_commit(config); });
        });
        lx_mutex_put(USER_TABLE_MUTEX);
    }
    lx_mutex_put(ALERT_TABLE_MUTEX);
    return stored;
}

void copy_reason(const std::string& text, char* reason, int reason_size) {
    if (!reason || reason_size <= 0) return;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(reason_size - 1));
    std::memcpy(reason, text.data(), length);
    reason[length] = '\0';
}

}  // namespace

extern "C" int PltIPMI_BackupConfig(char* text, int size) {
    if (!text || size <= 0) return PLT_ERR_ARGUMENT;
    ipmi_configuration config;
    if (!read_configuration(config)) return PLT_ERR_FORMAT;
    const std::string document = platform::sim::ipmi_config_text(config);
    if (document.size() >= static_cast<std::size_t>(size)) return PLT_ERR_ARGUMENT;
    std::memcpy(text, document.c_str(), document.size() + 1);
    return static_cast<int>(document.size());
}

extern "C" int PltIPMI_RestoreConfig(const char* text, int length, char* reason, int reason_size) {
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
    if (!store_configuration(config)) {
        console_log("[ERROR] PltIPMI_RestoreConfig: the stores were not written\n");
        return PLT_ERR_IO;
    }
    return PLT_OK;
}
