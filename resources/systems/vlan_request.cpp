#include "resources/systems/vlan_request.h"

#include "framework/property_checks.h"
#include "platform/libnic.h"

namespace odata::redfish {
namespace {

// What GET shows and a client cannot change.
constexpr std::string_view vlan_read_only[] = {"@odata.id", "@odata.type", "Id", "Name",
                                               "Description"};

void read_member(const request_member& member, vlan_request& request, result_record& result) {
    if (member.name == "VLANId") {
        if (const std::optional<long> id =
                require_integer_up_to(member.value, NIC_MAX_VLAN_ID, member.path, result))
            request.vlan_id = static_cast<uint16_t>(*id);
    } else if (member.name == "VLANEnable") {
        request.enabled = require_boolean(member.value, member.path, result);
    } else if (listed_in(vlan_read_only, member.name)) {
        add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

}  // namespace

vlan_request read_vlan_request(const boost::json::value& body, bool creating) {
    result_record result = general_error();
    vlan_request request;
    bool id_given = false;
    for (const auto& [name, value] : request_object(body)) {
        id_given = id_given || name == "VLANId";
        read_member({std::string(name), value, std::string(name)}, request, result);
    }
    if (creating && !id_given) add_property_message(result, "Base.1.10.PropertyMissing", "VLANId");
    refuse_if_reported(result);
    return request;
}

}  // namespace odata::redfish
