#include "framework/service_root.h"

#include <cstdio>
#include <optional>
#include <string>

#include "framework/schema_files.h"
#include "framework/top_level_services.h"
#include "platform/device_guid.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr const char* redfish_protocol_version = "1.9.0";

// The device GUID as 8-4-4-4-12 hexadecimal digits.
std::optional<std::string> service_uuid() {
    unsigned char guid[16];
    if (GetDeviceGUID(guid) != 0) return std::nullopt;
    char text[37];
    std::snprintf(text, sizeof text,
                  "%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x", guid[0],
                  guid[1], guid[2], guid[3], guid[4], guid[5], guid[6], guid[7], guid[8], guid[9],
                  guid[10], guid[11], guid[12], guid[13], guid[14], guid[15]);
    return std::string(text);
}

}  // namespace

service_root::service_root(request_context& context)
    : redfish(context, "ServiceRoot", std::string(schema_file_of("ServiceRoot").version),
              "Root Service", "/redfish/v1/") {}

int service_root::get(request_context&) {
    set_common_properties("RootService");
    set("RedfishVersion", redfish_protocol_version);
    if (auto uuid = service_uuid())
        set("UUID", *uuid);
    else
        console_log("[ERROR] service root: no device GUID\n");
    set("Product", "Tarnwright Baseboard Management Controller");
    set("Vendor", "Tarnwright");
    set_service_links();
    return 0;
}

void service_root::set_service_links() {
    boost::json::object links;
    boost::json::object oem;
    for (const auto& service : top_level_services()) {
        switch (service.in_root) {
            case root_link::property:
                set(service.name, link(service.url));
                break;
            case root_link::links:
                links[service.name] = link(service.url);
                break;
            case root_link::oem:
                oem[service.name] = link(service.url);
                break;
            case root_link::none:
                break;
        }
    }
    set("Links", std::move(links));
    set("Oem", boost::json::object{{"Tarnwright", std::move(oem)}});
}

}  // namespace odata::redfish
