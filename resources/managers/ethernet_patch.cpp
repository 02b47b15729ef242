#include "resources/managers/ethernet_patch.h"

#include <cstdio>

#include "framework/property_checks.h"
#include "resources/managers/ipv4_address.h"

namespace odata::redfish {
namespace {

using lan_property = odata::redfish::patch_property<lan_changes>;

// What GET shows and a client cannot change.
constexpr std::string_view ethernet_read_only[] = {
    "@odata.id", "@odata.type",      "Id",         "Name",        "Description",
    "Status",    "InterfaceEnabled", "LinkStatus", "MACAddress",  "PermanentMACAddress",
    "SpeedMbps", "IPv4Addresses",    "FQDN",       "NameServers",
};

const char* static_addresses = "IPv4StaticAddresses";

void read_host_name(const request_member& member, lan_changes& changes, result_record& result) {
    if (std::optional<std::string> name = require_host_name(member, result))
        changes.host_name = std::move(name);
}

void read_dhcp_member(const request_member& member, lan_changes& changes, result_record& result) {
    if (member.name != "DHCPEnabled")
        return unknown_property::in_patch().report(result, member.path);
    if (const std::optional<bool> enabled = require_boolean(member.value, member.path, result))
        changes.dhcp_enabled = *enabled;
}

void read_dhcp(const request_member& member, lan_changes& changes, result_record& result) {
    for_each_member(member.value, member.path, result, [&](const request_member& dhcp_member) {
        read_dhcp_member(dhcp_member, changes, result);
    });
}

// A dotted quad into field, or a message.
void read_address_member(const request_member& member, std::optional<std::string>& field,
                         result_record& result) {
    const boost::json::string* text = require_text(member.value, member.path, result);
    if (!text) return;
    if (!parse_ipv4(*text))
        return add_value_message(result, "Base.1.10.PropertyValueFormatError", std::string(*text),
                                 member.path);
    field = std::string(*text);
}

void read_static_entry(const request_member& entry, ipv4_static_address& address,
                       result_record& result) {
    for_each_member(entry.value, entry.path, result, [&](const request_member& member) {
        if (member.name == "Address") return read_address_member(member, address.address, result);
        if (member.name == "SubnetMask")
            return read_address_member(member, address.subnet_mask, result);
        if (member.name == "Gateway") return read_address_member(member, address.gateway, result);
        unknown_property::in_patch().report(result, member.path);
    });
}

// The interface has one address: the array holds one entry.
void read_static_addresses(const request_member& member, lan_changes& changes,
                           result_record& result) {
    const boost::json::array* entries = member.value.if_array();
    if (!entries)
        return add_value_message(result, "Base.1.10.PropertyValueTypeError",
                                 shown_value(member.value), member.path);
    if (entries->size() != 1)
        return add_value_message(result, "Base.1.10.PropertyValueFormatError",
                                 shown_value(member.value), member.path);
    ipv4_static_address address;
    read_static_entry({"0", entries->front(), member.path + "/0"}, address, result);
    changes.static_address = address;
}

const lan_property lan_properties[] = {
    {"HostName", read_host_name},
    {"DHCPv4", read_dhcp},
    {"IPv4StaticAddresses", read_static_addresses},
};

void check_addresses(const St_LanConfig& config, result_record& result) {
    const uint32_t mask = parse_ipv4(config.subnet_mask).value_or(0);
    const uint32_t address = parse_ipv4(config.ipv4_address).value_or(0);
    const uint32_t gateway = parse_ipv4(config.gateway).value_or(0);
    const std::string entry = std::string(static_addresses) + "/0/";
    if (!is_subnet_mask(mask))
        return add_value_message(result, "Base.1.10.PropertyValueFormatError", config.subnet_mask,
                                 entry + "SubnetMask");
    if (!is_host_address(address, mask))
        return add_value_message(result, "Base.1.10.PropertyValueFormatError", config.ipv4_address,
                                 entry + "Address");
    if (gateway != 0 && ((gateway ^ address) & mask) != 0)
        add_message(result, "Base.1.10.PropertyValueConflict", {"Gateway", "Address"},
                    {"/" + entry + "Gateway"});
}

// The checked texts always fit; a field never loses its terminator.
template <std::size_t size>
void put_text(char (&field)[size], const std::string& text) {
    std::snprintf(field, size, "%s", text.c_str());
}

}  // namespace

std::optional<std::string> require_host_name(const request_member& member, result_record& result) {
    const boost::json::string* text = require_text(member.value, member.path, result);
    if (!text) return std::nullopt;
    if (is_host_name(*text)) return std::string(*text);
    add_value_message(result, "Base.1.10.PropertyValueFormatError", std::string(*text),
                      member.path);
    return std::nullopt;
}

lan_changes read_lan_changes(const boost::json::object& body, result_record& result) {
    lan_changes changes;
    for (const auto& [name, value] : body) {
        const request_member member{std::string(name), value, std::string(name)};
        if (listed_in(ethernet_read_only, member.name))
            add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
        else
            read_patch_property(lan_properties, member, changes, result);
    }
    return changes;
}

St_LanConfig changed_lan_config(const St_LanConfig& current, const lan_changes& changes,
                                result_record& result) {
    St_LanConfig config = current;
    if (changes.host_name) put_text(config.host_name, *changes.host_name);
    if (changes.dhcp_enabled) config.dhcp_enabled = *changes.dhcp_enabled;
    if (!changes.static_address) return config;
    if (config.dhcp_enabled) {
        add_message(result, "Base.1.10.PropertyValueConflict",
                    {static_addresses, "DHCPv4/DHCPEnabled"}, {"/IPv4StaticAddresses"});
        return config;
    }
    const ipv4_static_address& requested = *changes.static_address;
    if (requested.address) put_text(config.ipv4_address, *requested.address);
    if (requested.subnet_mask) put_text(config.subnet_mask, *requested.subnet_mask);
    if (requested.gateway) put_text(config.gateway, *requested.gateway);
    check_addresses(config, result);
    return config;
}

}  // namespace odata::redfish
