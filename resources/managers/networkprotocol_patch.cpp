#include "resources/managers/networkprotocol_patch.h"

#include "framework/property_checks.h"
#include "resources/managers/ethernet_patch.h"

namespace odata::redfish {
namespace {

// What GET shows and a client cannot change.
constexpr std::string_view protocol_read_only[] = {
    "@odata.id", "@odata.type", "@odata.context", "Id", "Name", "Description", "Status", "FQDN"};

const network_protocol* protocol_named(std::string_view name) {
    for (const network_protocol& protocol : network_protocols)
        if (name == protocol.name) return &protocol;
    return nullptr;
}

void read_service_member(const request_member& member, service_change& change,
                         result_record& result) {
    if (member.name == "ProtocolEnabled") {
        change.enabled = require_boolean(member.value, member.path, result);
    } else if (member.name == "Port") {
        if (const std::optional<long> port =
                require_integer_in_range(member.value, 1, 65535, member.path, result))
            change.port = static_cast<int>(*port);
    } else if (member.name == "Certificates") {
        add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

void read_member(const request_member& member, network_protocol_changes& changes,
                 result_record& result) {
    if (listed_in(protocol_read_only, member.name))
        return add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
    if (member.name == "HostName") {
        changes.host_name = require_host_name(member, result);
        return;
    }
    const network_protocol* protocol = protocol_named(member.name);
    if (!protocol) return unknown_property::in_patch().report(result, member.path);
    for_each_member(member.value, member.path, result, [&](const request_member& setting) {
        read_service_member(setting, changes.services[protocol->service], result);
    });
}

void check_ports(const std::array<St_NetService, NET_SERVICE_COUNT>& services,
                 result_record& result) {
    for (const network_protocol& first : network_protocols)
        for (const network_protocol& second : network_protocols) {
            const St_NetService& a = services[first.service];
            const St_NetService& b = services[second.service];
            if (first.service < second.service && a.enabled && b.enabled && a.port == b.port)
                add_message(result, "Base.1.10.PropertyValueConflict",
                            {std::string(first.name) + "/Port", std::string(second.name) + "/Port"},
                            {"/" + std::string(second.name) + "/Port"});
        }
}

}  // namespace

network_protocol_changes read_network_protocol_changes(const boost::json::object& body,
                                                       result_record& result) {
    network_protocol_changes changes;
    for (const auto& [name, value] : body)
        read_member({std::string(name), value, std::string(name)}, changes, result);
    return changes;
}

std::array<St_NetService, NET_SERVICE_COUNT> changed_services(
    const std::array<St_NetService, NET_SERVICE_COUNT>& current,
    const network_protocol_changes& changes, result_record& result) {
    std::array<St_NetService, NET_SERVICE_COUNT> services = current;
    for (int service = 0; service < NET_SERVICE_COUNT; ++service) {
        const service_change& change = changes.services[service];
        if (change.enabled) services[service].enabled = *change.enabled;
        if (change.port) services[service].port = static_cast<uint16_t>(*change.port);
    }
    check_ports(services, result);
    if (!services[NET_SERVICE_HTTP].enabled && !services[NET_SERVICE_HTTPS].enabled)
        add_message(result, "Base.1.10.PropertyValueConflict",
                    {"HTTP/ProtocolEnabled", "HTTPS/ProtocolEnabled"}, {"/HTTPS/ProtocolEnabled"});
    return services;
}

}  // namespace odata::redfish
