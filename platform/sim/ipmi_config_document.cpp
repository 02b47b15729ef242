#include "platform/sim/ipmi_config_document.h"

#include <boost/json.hpp>
#include <initializer_list>
#include <set>

#include "platform/sim/bmc_lan.h"
#include "platform/sim/password_hash.h"
#include "platform/sim/serial_port.h"
#include "platform/sim/sim_file.h"

namespace json = boost::json;

namespace platform::sim {
namespace {

constexpr const char* format_name = "ipmi-config";

// The first fault of a document, thrown to the top of the parse.
struct refusal {
    std::string reason;
};

[[noreturn]] void refuse(const std::string& where, const char* fault) {
    throw refusal{where + " " + fault};
}

const json::object& object_at(const json::value& value, const std::string& where) {
    if (!value.is_object()) refuse(where, "is not an object");
    return value.get_object();
}

const json::array& array_at(const json::value& value, std::size_t size, const std::string& where) {
    if (!value.is_array() || value.get_array().size() != size)
        refuse(where, ("is not an array of " + std::to_string(size)).c_str());
    return value.get_array();
}

// Every name present, and no other.
const json::object& members(const json::value& value, std::initializer_list<const char*> names,
                            const std::string& where) {
    const json::object& object = object_at(value, where);
    for (const char* name : names)
        if (!object.contains(name)) refuse(where + "." + name, "is missing");
    if (object.size() != names.size()) refuse(where, "has an unknown member");
    return object;
}

bool boolean(const json::object& object, const char* name, const std::string& where) {
    const json::value& value = object.at(name);
    if (!value.is_bool()) refuse(where + "." + name, "is not true or false");
    return value.get_bool();
}

long long number(const json::object& object, const char* name, long long min, long long max,
                 const std::string& where) {
    const json::value& value = object.at(name);
    if (!value.is_int64() || value.get_int64() < min || value.get_int64() > max)
        refuse(where + "." + name, "is not a number in range");
    return value.get_int64();
}

template <std::size_t size>
void text(const json::object& object, const char* name, char (&field)[size],
          const std::string& where) {
    const json::value& value = object.at(name);
    if (!value.is_string() || value.get_string().size() >= size ||
        value.get_string().find('\0') != json::string::npos)
        refuse(where + "." + name, "is not a text that fits");
    copy_text(field, value.get_string());
}

void read_lan(const json::value& value, St_LanConfig& lan) {
    const std::string where = "lan";
    const json::object& object =
        members(value, {"dhcp_enabled", "address", "subnet_mask", "gateway", "host_name"}, where);
    lan.dhcp_enabled = boolean(object, "dhcp_enabled", where);
    text(object, "address", lan.ipv4_address, where);
    text(object, "subnet_mask", lan.subnet_mask, where);
    text(object, "gateway", lan.gateway, where);
    text(object, "host_name", lan.host_name, where);
    if (!valid_lan_config(lan)) refuse(where, "has an invalid address, mask or host name");
}

void read_services(const json::value& value,
                   std::array<St_NetService, NET_SERVICE_COUNT>& services) {
    const json::object& object = object_at(value, "services");
    if (object.size() != NET_SERVICE_COUNT) refuse("services", "is not every network service");
    for (int service = 0; service < NET_SERVICE_COUNT; ++service) {
        const std::string where = std::string("services.") + net_service_name(service);
        const json::value* entry = object.if_contains(net_service_name(service));
        if (!entry) refuse(where, "is missing");
        const json::object& fields = members(*entry, {"enabled", "port"}, where);
        services[service].enabled = boolean(fields, "enabled", where);
        services[service].port = static_cast<uint16_t>(number(fields, "port", 1, 65535, where));
    }
}

void read_serial(const json::value& value, St_SerialConfig& serial) {
    const std::string where = "serial";
    const json::object& object = members(
        value, {"enabled", "bit_rate", "data_bits", "parity", "stop_bits", "flow_control"}, where);
    serial.enabled = boolean(object, "enabled", where);
    serial.bit_rate = static_cast<uint32_t>(number(object, "bit_rate", 0, 1000000, where));
    serial.data_bits = static_cast<uint8_t>(number(object, "data_bits", 0, 255, where));
    char parity[2] = {};
    text(object, "parity", parity, where);
    serial.parity = parity[0];
    serial.stop_bits = static_cast<uint8_t>(number(object, "stop_bits", 0, 255, where));
    serial.hardware_flow_control = boolean(object, "flow_control", where);
    if (!valid_serial_config(serial)) refuse(where, "has a setting the port does not offer");
}

void check_user(const user_slot& user, int slot, std::set<std::string>& names,
                const std::string& where) {
    if (!user.used()) {
        if (user.key != 0 || !user.name.empty() || !user.password.empty())
            refuse(where, "is half an empty slot");
        if (slot == 1) refuse(where, "must hold the administrator");
        return;
    }
    if (slot == 0) refuse(where, "is reserved and must be empty");
    if (!valid_user_name(user.name)) refuse(where + ".name", "is not a valid user name");
    if (!names.insert(user.name).second) refuse(where + ".name", "is another user's name");
    if (!user.password.empty() && !well_formed_secret(user.password))
        refuse(where + ".password", "is not a password hash of this BMC");
    if (slot == 1 && (!user.enabled || user.privilege != PRIV_ADMINISTRATOR))
        refuse(where, "must be an enabled administrator");
}

void read_users(const json::value& value, user_slots& users) {
    const json::array& list = array_at(value, MAX_USER_SLOTS, "users");
    std::set<std::string> names;
    for (int index = 0; index < MAX_USER_SLOTS; ++index) {
        const std::string where = "users[" + std::to_string(index) + "]";
        int slot = -1;
        // Read back as the table would write it: nothing cut, nothing added.
        if (!parse_user_slot(list[index], users[index], slot) || slot != index ||
            json::value(user_slot_json(slot, users[index])) != list[index])
            refuse(where, "is not a user slot of this BMC");
        check_user(users[index], index, names, where);
    }
}

void read_alerts(const json::value& value, alert_table& alerts) {
    const json::array& list = array_at(value, ALERT_DEST_COUNT, "alert_destinations");
    for (int index = 0; index < ALERT_DEST_COUNT; ++index) {
        const std::string where = "alert_destinations[" + std::to_string(index) + "]";
        alerts[index] = parse_alert_entry(object_at(list[index], where));
        if (json::value(alert_entry_json(alerts[index])) != list[index])
            refuse(where, "is not an alert destination of this BMC");
    }
}

json::object lan_json(const St_LanConfig& lan) {
    return {{"dhcp_enabled", lan.dhcp_enabled != 0},
            {"address", lan.ipv4_address},
            {"subnet_mask", lan.subnet_mask},
            {"gateway", lan.gateway},
            {"host_name", lan.host_name}};
}

json::object services_json(const std::array<St_NetService, NET_SERVICE_COUNT>& services) {
    json::object object;
    for (int service = 0; service < NET_SERVICE_COUNT; ++service)
        object[net_service_name(service)] = {{"enabled", services[service].enabled != 0},
                                             {"port", services[service].port}};
    return object;
}

json::object serial_json(const St_SerialConfig& serial) {
    return {{"enabled", serial.enabled != 0}, {"bit_rate", serial.bit_rate},
            {"data_bits", serial.data_bits},  {"parity", std::string(1, serial.parity)},
            {"stop_bits", serial.stop_bits},  {"flow_control", serial.hardware_flow_control != 0}};
}

}  // namespace

std::string ipmi_config_text(const ipmi_configuration& config) {
    json::array users;
    for (int slot = 0; slot < MAX_USER_SLOTS; ++slot)
        users.push_back(user_slot_json(slot, config.users[slot]));
    json::array alerts;
    for (const St_AlertDest& entry : config.alerts) alerts.push_back(alert_entry_json(entry));
    return json::serialize(json::object{{"format", format_name},
                                        {"version", ipmi_config_version},
                                        {"lan", lan_json(config.lan)},
                                        {"services", services_json(config.services)},
                                        {"serial", serial_json(config.serial)},
                                        {"users", std::move(users)},
                                        {"alert_destinations", std::move(alerts)}}) +
           "\n";
}

bool parse_ipmi_config(std::string_view text, ipmi_configuration& config, std::string& reason) {
    json::parse_options options;
    options.allow_invalid_utf8 = true;  // names and texts are bytes to the BMC
    json::error_code error;
    const json::value document = json::parse(text, error, {}, options);
    try {
        if (error) refuse("the file", "is not JSON");
        const json::object& top = members(
            document,
            {"format", "version", "lan", "services", "serial", "users", "alert_destinations"},
            "the file");
        if (top.at("format") != format_name) refuse("the file", "is not an IPMI configuration");
        if (top.at("version") != ipmi_config_version) refuse("version", "is not 1");
        ipmi_configuration read;
        read_lan(top.at("lan"), read.lan);
        read_services(top.at("services"), read.services);
        read_serial(top.at("serial"), read.serial);
        read_users(top.at("users"), read.users);
        read_alerts(top.at("alert_destinations"), read.alerts);
        config = std::move(read);
        return true;
    } catch (const refusal& refused) {
        reason = refused.reason;
        return false;
    }
}

}  // namespace platform::sim
