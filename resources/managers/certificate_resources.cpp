#include "resources/managers/certificate_resources.h"

#include <vector>

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "platform/libweb.h"
#include "platform/libwebcert.h"
#include "resources/managers/certificate_uris.h"
#include "resources/managers/x509_certificate.h"

namespace odata::redfish {
std::string served_certificate() {
    std::vector<char> pem(WEB_CERT_PEM_SIZE);
    const int length = PltWEB_GetCertificate(pem.data(), static_cast<int>(pem.size()));
    if (length > 0) return std::string(pem.data(), static_cast<std::size_t>(length));
    console_log("[ERROR] Certificate: the web server's certificate is unreadable (%d)\n", length);
    throw_http_error(500, "Base.1.10.InternalError");
}

const shown_certificate& served_certificate_shown() {
    static shown_certificate shown;
    std::string pem = served_certificate();
    if (shown.properties.empty() || pem != shown.pem) {
        std::optional<boost::json::object> properties = certificate_properties(pem);
        if (!properties) throw_http_error(500, "Base.1.10.InternalError");
        shown = {std::move(pem), std::move(*properties)};
    }
    return shown;
}

certificateservice::certificateservice(request_context& context)
    : redfish(context, "CertificateService",
              std::string(schema_file_of("CertificateService").version), "Certificate Service",
              certificate_service_uri) {}

int certificateservice::get(request_context&) {
    set_common_properties();
    set("Description", "Certificates of the BMC's services");
    set("CertificateLocations", link(certificate_locations_uri));
    set("Actions", {{"#CertificateService.GenerateCSR",
                     {{"target", generate_csr_target_uri},
                      {"@Redfish.ActionInfo", generate_csr_actioninfo_uri}}},
                    {"#CertificateService.ReplaceCertificate",
                     {{"target", replace_certificate_target_uri},
                      {"@Redfish.ActionInfo", replace_certificate_actioninfo_uri}}}});
    return 0;
}

certificatelocations::certificatelocations(request_context& context)
    : redfish(context, "CertificateLocations",
              std::string(schema_file_of("CertificateLocations").version), "Certificate Locations",
              certificate_locations_uri) {}

int certificatelocations::get(request_context&) {
    set_common_properties();
    set("Links", {{"Certificates", link_array(https_certificate_uri)}});
    return 0;
}

certificatecollection::certificatecollection(request_context& context)
    : redfish(context, "CertificateCollection", "", "HTTPS Certificate Collection",
              https_certificates_uri) {}

int certificatecollection::get(request_context&) {
    set_common_properties();
    set_members({https_certificate_uri});
    return 0;
}

certificate::certificate(request_context& context)
    : redfish(context, "Certificate", std::string(schema_file_of("Certificate").version),
              "HTTPS Certificate", https_certificate_uri) {}

int certificate::get(request_context&) {
    const shown_certificate& shown = served_certificate_shown();
    set_common_properties();
    set("CertificateString", shown.pem);
    set("CertificateType", "PEM");
    for (const auto& [name, value] : shown.properties) set(name, value);
    set("Actions", {{"#Certificate.Rekey",
                     {{"target", rekey_target_uri}, {"@Redfish.ActionInfo", rekey_actioninfo_uri}}},
                    {"#Certificate.Renew", {{"target", renew_target_uri}}}});
    return 0;
}

}  // namespace odata::redfish
