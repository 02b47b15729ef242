#include "platform/alert_settings.h"

#include <boost/property_tree/ptree.hpp>

#include "base/bmc_root.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace platform {
namespace {

int bounded(const pt::ptree& tree, const char* key, int min, int max, int fallback) {
    const int value = tree.get<int>(key, fallback);
    return value < min || value > max ? fallback : value;
}

event_service_settings parse(const pt::ptree& tree) {
    event_service_settings settings;
    settings.service_enabled = tree.get<int>("EventService.ServiceEnabled", 1) != 0;
    settings.delivery_retry_attempts =
        bounded(tree, "EventService.DeliveryRetryAttempts", 0, max_delivery_retry_attempts,
                settings.delivery_retry_attempts);
    settings.delivery_retry_interval_seconds =
        bounded(tree, "EventService.DeliveryRetryIntervalSeconds", min_delivery_retry_interval,
                max_delivery_retry_interval, settings.delivery_retry_interval_seconds);
    smtp_settings& smtp = settings.smtp;
    smtp.service_enabled = tree.get<int>("SMTP.ServiceEnabled", 0) != 0;
    smtp.server_address = tree.get<std::string>("SMTP.ServerAddress", "");
    smtp.port = bounded(tree, "SMTP.Port", 1, 65535, smtp.port);
    smtp.from_address = tree.get<std::string>("SMTP.FromAddress", "");
    smtp.connection_protocol = tree.get<std::string>("SMTP.ConnectionProtocol", "None");
    smtp.authentication = tree.get<std::string>("SMTP.Authentication", "None");
    smtp.username = tree.get<std::string>("SMTP.Username", "");
    smtp.password = tree.get<std::string>("SMTP.Password", "");
    return settings;
}

pt::ptree tree_of(const event_service_settings& settings) {
    pt::ptree tree;
    tree.put("EventService.ServiceEnabled", settings.service_enabled ? 1 : 0);
    tree.put("EventService.DeliveryRetryAttempts", settings.delivery_retry_attempts);
    tree.put("EventService.DeliveryRetryIntervalSeconds", settings.delivery_retry_interval_seconds);
    const smtp_settings& smtp = settings.smtp;
    tree.put("SMTP.ServiceEnabled", smtp.service_enabled ? 1 : 0);
    tree.put("SMTP.ServerAddress", smtp.server_address);
    tree.put("SMTP.Port", smtp.port);
    tree.put("SMTP.FromAddress", smtp.from_address);
    tree.put("SMTP.ConnectionProtocol", smtp.connection_protocol);
    tree.put("SMTP.Authentication", smtp.authentication);
    tree.put("SMTP.Username", smtp.username);
    tree.put("SMTP.Password", smtp.password);
    return tree;
}

}  // namespace

const std::string& event_settings_file() {
    static fixed_bmc_path path("/nv/redfish/event.ini");
    return path.get();
}

event_service_settings read_event_service_settings() {
    pt::ptree tree;
    sim::read_ini(event_settings_file(), tree);
    return parse(tree);
}

bool update_event_service_settings(const std::function<void(event_service_settings&)>& change) {
    const std::string path = event_settings_file();
    return sim::with_file_lock(path, [&] {
        event_service_settings settings = read_event_service_settings();
        change(settings);
        return sim::write_ini(path, tree_of(settings), 0600);
    });
}

}  // namespace platform
