// The VLANs of the host's Ethernet interfaces, kept by the platform per
// port: the interface's number is its port's.
#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "frontend/message.h"
#include "frontend/response_headers.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/system_uris.h"
#include "resources/systems/vlan_request.h"
#include "resources/systems/vlannetworkinterface.h"

namespace odata::redfish {
namespace {

std::string vlans_uri(const request_context& context) {
    return member_uri(host_ethernet_interfaces_uri, context) + "/VLANs";
}

// The 0-based port of the interface; 404 when there is none.
int existing_port(const request_context& context) {
    const int number = member_number(context);
    St_HostNicPort port{};
    if (number < 1 || NicGetPort(number - 1, &port) != PLT_OK)
        throw_member_not_found("EthernetInterface", context);
    return number - 1;
}

std::vector<St_HostNicVlan> port_vlans(int port_index) {
    St_HostNicVlan vlans[NIC_MAX_VLANS];
    const int count = NicGetVlans(port_index, vlans);
    if (count < 0) throw_http_error(500, "Base.1.10.InternalError");
    return {vlans, vlans + count};
}

// Answers a platform refusal of an addition or change.
void check_stored(int code, uint16_t vlan_id) {
    if (code >= PLT_OK) return;
    if (code == NIC_ERR_VLAN_ID_IN_USE)
        throw_http_error(400, "Base.1.10.ResourceAlreadyExists",
                         {"VLanNetworkInterface", "VLANId", std::to_string(vlan_id)}, {"/VLANId"});
    if (code == PLT_ERR_STATE) throw_http_error(400, "Base.1.10.CreateLimitReachedForResource");
    if (code == PLT_ERR_NOT_FOUND) throw_http(404);
    throw_http_error(500, "Base.1.10.InternalError");
}

}  // namespace

vlannetworkinterfacecollection::vlannetworkinterfacecollection(request_context& context)
    : redfish(context, "VLanNetworkInterfaceCollection", "", "VLAN Network Interface Collection",
              vlans_uri(context)) {}

int vlannetworkinterfacecollection::get(request_context& context) {
    std::vector<std::string> uris;
    for (const St_HostNicVlan& vlan : port_vlans(existing_port(context)))
        uris.push_back(uri() + "/" + std::to_string(vlan.number));
    set_common_properties();
    set_members(uris);
    return 0;
}

int vlannetworkinterfacecollection::post(request_context& context) {
    const int port_index = existing_port(context);
    const vlan_request request = read_vlan_request(context.body_json(), true);
    const int number = NicAddVlan(port_index, *request.vlan_id, request.enabled.value_or(true));
    check_stored(number, *request.vlan_id);
    context.captures.resize(1);
    context.captures.push_back(std::to_string(number));
    vlannetworkinterface created(context);
    created.get(context);
    for (const auto& property : created.value()) set(property.key(), property.value());
    write_status_line(201);
    set_response_header(response_header::location, created.uri());
    return 0;
}

vlannetworkinterface::vlannetworkinterface(request_context& context)
    : redfish(context, "VLanNetworkInterface",
              std::string(schema_file_of("VLanNetworkInterface").version), "VLAN Network Interface",
              vlans_uri(context) + "/" + std::to_string(context.capture_number(1))) {}

St_HostNicVlan vlannetworkinterface::existing_vlan() const {
    for (const St_HostNicVlan& vlan : port_vlans(existing_port(context_)))
        if (vlan.number == context_.capture_number(1)) return vlan;
    throw_http_error(404, "Base.1.10.ResourceNotFound",
                     {"VLanNetworkInterface", context_.captures.at(1)});
}

int vlannetworkinterface::get(request_context&) {
    const St_HostNicVlan vlan = existing_vlan();
    set_common_properties();
    set("Description", "VLAN of the host's Ethernet interface");
    set("VLANEnable", vlan.enabled != 0);
    set("VLANId", vlan.vlan_id);
    return 0;
}

int vlannetworkinterface::patch(request_context& context) {
    St_HostNicVlan vlan = existing_vlan();
    const vlan_request request = read_vlan_request(context.body_json(), false);
    if (request.vlan_id) vlan.vlan_id = *request.vlan_id;
    if (request.enabled) vlan.enabled = *request.enabled ? 1 : 0;
    check_stored(NicSetVlan(existing_port(context), &vlan), vlan.vlan_id);
    write_status_line(204);
    return 0;
}

int vlannetworkinterface::del(request_context& context) {
    existing_vlan();
    check_stored(NicDeleteVlan(existing_port(context), context.capture_number(1)), 0);
    write_status_line(204);
    return 0;
}

}  // namespace odata::redfish
