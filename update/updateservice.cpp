#include "update/updateservice.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

boost::json::object action(const char* target) {
    return boost::json::object({{"target", target}}, answer_storage());
}

boost::json::object actions() {
    boost::json::object simple_update = action(simple_update_uri);
    simple_update["TransferProtocol@Redfish.AllowableValues"] = {"HTTP", "HTTPS", "FTP"};
    simple_update["@Redfish.ActionInfo"] = simple_update_actioninfo_uri;
    boost::json::object install = action(install_uri);
    install["@Redfish.ActionInfo"] = install_actioninfo_uri;
    return boost::json::object({{"#UpdateService.SimpleUpdate", std::move(simple_update)},
                                {"#UpdateService.StartUpdate", action(start_update_uri)},
                                {"Oem", {{"#TwrUpdateService.Install", std::move(install)}}}},
                               answer_storage());
}

boost::json::object oem() {
    return boost::json::object(
        {{"Tarnwright",
          {{"@odata.type", "#TwrUpdateServiceExtensions.v1_0_0.UpdateService"},
           {"SSLCert", link(ssl_cert_uri)},
           {"IPMIConfig", link(ipmi_config_uri)},
           {"TwrFirmwareInventory", link(twr_firmware_inventory_uri)}}}},
        answer_storage());
}

}  // namespace

updateservice::updateservice(request_context& context)
    : redfish(context, "UpdateService", std::string(schema_file_of("UpdateService").version),
              "Update Service", update_service_uri) {}

int updateservice::get(request_context&) {
    set_common_properties();
    set("Description", "Service for updating firmware and includes inventory of firmware");
    set("Status", {{"State", "Enabled"}, {"Health", "OK"}});
    set("ServiceEnabled", true);
    set("HttpPushUri", http_push_uri);
    // The push URI takes the multipart form of DSP0266.
    set("MultipartHttpPushUri", http_push_uri);
    set("FirmwareInventory", link(firmware_inventory_uri));
    set("Actions", actions());
    set("Oem", oem());
    return 0;
}

}  // namespace odata::redfish
