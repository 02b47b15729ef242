#include "framework/service_root.h"

#include <string>

#include "framework/device_uuid.h"
#include "framework/schema_files.h"
#include "framework/top_level_services.h"
#include "frontend/answer_storage.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr const char* redfish_protocol_version = "1.9.0";

// The service's own services, which DMTF's root has no property for.
boost::json::object oem_services() {
    return boost::json::object(
        {{"Tarnwright",
          {{"@odata.type", "#TwrServiceRootExtensions.v1_0_0.ServiceRoot"},
           {"DumpService", link("/redfish/v1/Oem/Tarnwright/DumpService")}}}},
        answer_storage());
}

}  // namespace

service_root::service_root(request_context& context)
    : redfish(context, "ServiceRoot", std::string(schema_file_of("ServiceRoot").version),
              "Root Service", "/redfish/v1/") {}

int service_root::get(request_context&) {
    set_common_properties("RootService");
    set("RedfishVersion", redfish_protocol_version);
    if (const std::string uuid = device_uuid_text(); !uuid.empty())
        set("UUID", uuid);
    else
        console_log("[ERROR] service root: no device GUID\n");
    set("Product", "Tarnwright Baseboard Management Controller");
    set("Vendor", "Tarnwright");
    // No query option is served (a query answers 400); clients read this
    // before they try one.
    set("ProtocolFeaturesSupported",
        {{"ExcerptQuery", false},
         {"ExpandQuery",
          {{"ExpandAll", false}, {"Levels", false}, {"Links", false}, {"NoLinks", false}}},
         {"FilterQuery", false},
         {"OnlyMemberQuery", false},
         {"SelectQuery", false}});
    set_service_links();
    set("Oem", oem_services());
    return 0;
}

void service_root::set_service_links() {
    boost::json::object links(answer_storage());
    for (const auto& service : top_level_services()) {
        switch (service.in_root) {
            case root_link::property:
                set(service.name, link(service.url));
                break;
            case root_link::links:
                links[service.name] = link(service.url);
                break;
            case root_link::none:
                break;
        }
    }
    set("Links", std::move(links));
}

}  // namespace odata::redfish
