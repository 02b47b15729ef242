#include "resources/systems/bmc_info.h"

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "platform/libbmc.h"
#include "platform/libipmi_users.h"
#include "platform/liblan.h"

namespace odata::redfish {
namespace {

constexpr const char* bmc_info_uri = "/redfish/v1/Systems/1/Oem/Tarnwright/BmcInfo";
constexpr int bmc_version_size = 64;

}  // namespace

bmc_info::bmc_info(request_context& context)
    : redfish(context, "TwrBmcInfo", std::string(schema_file_of("TwrBmcInfo").version),
              "BMC Information", bmc_info_uri) {}

int bmc_info::get(request_context&) {
    char version[bmc_version_size] = {};
    St_LanConfig lan{};
    if (UtilGetBmcFwVersion(version, bmc_version_size) != PLT_OK ||
        PltLAN_GetConfig(&lan) != PLT_OK)
        throw_http_error(500, "Base.1.10.InternalError");
    set_common_properties();
    set("FirmwareVersion", version);
    set("MACAddress", lan.mac_address);
    set("IPv4Address", lan.ipv4_address);
    set("HostName", lan.host_name);
    set("Manager", link("/redfish/v1/Managers/1"));
    set("HostInterfaceEnabled", UtilGetHostInterfaceEnable() != 0);
    return 0;
}

}  // namespace odata::redfish
