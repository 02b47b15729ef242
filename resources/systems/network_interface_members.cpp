// An adapter has one function per port, numbered as its ports are.
#include "resources/systems/network_interface_members.h"

#include "resources/chassis/host_adapters.h"
#include "resources/systems/member_uri.h"
#include "resources/systems/system_uris.h"

namespace odata::redfish {
namespace {

std::string interface_path(const request_context& context, const char* segment) {
    return member_uri(network_interfaces_uri, context) + segment;
}

// The adapter's members under the chassis, one per port; 404 when the
// system has no such interface.
std::vector<std::string> adapter_members(const request_context& context, const char* segment) {
    const std::optional<St_HostNicAdapter> adapter = host_adapter(member_number(context));
    if (!adapter) throw_member_not_found("NetworkInterface", context);
    const std::string base = network_adapter_member_uri(adapter->adapter) + segment + "/";
    std::vector<std::string> uris;
    for (int index = 0; index < NicGetPortCount(); ++index) {
        St_HostNicPort port{};
        if (NicGetPort(index, &port) == PLT_OK && port.adapter == adapter->adapter)
            uris.push_back(base + std::to_string(port.port));
    }
    return uris;
}

}  // namespace

adapter_member_collection::adapter_member_collection(request_context& context,
                                                     const char* entity_type, const char* name,
                                                     const char* segment)
    : redfish(context, entity_type, "", name, interface_path(context, segment)),
      segment_(segment) {}

int adapter_member_collection::get(request_context& context) {
    const std::vector<std::string> members = adapter_members(context, segment_);
    set_common_properties();
    set_members(members);
    return 0;
}

sysnetworkdevicefunctcollection::sysnetworkdevicefunctcollection(request_context& context)
    : adapter_member_collection(context, "NetworkDeviceFunctionCollection",
                                "Network Device Function Collection", "/NetworkDeviceFunctions") {}

sysnetworkportscollection::sysnetworkportscollection(request_context& context)
    : adapter_member_collection(context, "NetworkPortCollection", "Network Port Collection",
                                "/NetworkPorts") {}

}  // namespace odata::redfish
