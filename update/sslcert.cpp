#include "update/sslcert.h"

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "platform/libwebcert.h"
#include "resources/managers/certificate_resources.h"
#include "resources/managers/x509_certificate.h"
#include "update/configuration_audit.h"
#include "update/form_parts.h"
#include "update/update_uris.h"

namespace odata::redfish {
namespace {

constexpr const char* certificate_part = "Certificate";
constexpr const char* key_part = "PrivateKey";

[[noreturn]] void throw_illegal_pair(const char* reason) {
    console_log("[SSLCert] upload refused: %s\n", reason);
    throw_http_error(400, "TWR.1.0.OemSslcertIllegalPair");
}

// Both parts, or 400 naming each one that is missing.
void check_items(const form_parts& form) {
    if (form.status == form_status::too_large) throw_illegal_pair("too large");
    result_record result = general_error();
    for (const char* part : {certificate_part, key_part})
        if (!form.parts.count(part)) add_message(result, "TWR.1.0.OemSslcertMissingItem", {part});
    if (!result.entries.empty()) throw_http_result(400, result);
}

// The key comes first, as the web server's file keeps it; the first
// certificate must belong to it and be valid now.
certificate_pair checked_pair(const form_parts& form) {
    const std::string pem = form.parts.at(key_part) + "\n" + form.parts.at(certificate_part);
    certificate_pair pair;
    if (read_certificate_pair(pem, lx_time_get(), pair) != pair_problem::none)
        throw_illegal_pair("not a valid certificate and key pair");
    // Each gains a newline in the file.
    if (pair.chain.size() + pair.key.size() + 2 > WEB_CERT_PEM_SIZE)
        throw_illegal_pair("too large");
    return pair;
}

}  // namespace

sslcert::sslcert(request_context& context)
    : redfish(context, "TwrSSLCert", std::string(schema_file_of("TwrSSLCert").version),
              "SSL Certificate", ssl_cert_uri) {}

int sslcert::get(request_context&) {
    const shown_certificate& shown = served_certificate_shown();
    set_common_properties();
    set("Description", "The HTTPS certificate of the BMC's web server");
    for (const auto& [name, value] : shown.properties) set(name, value);
    set("Actions", {{"#TwrSSLCert.Upload", {{"target", ssl_cert_upload_uri}}}});
    return 0;
}

int sslcert_upload::post(request_context& context) {
    const form_parts form = read_form_parts(context, WEB_CERT_PEM_SIZE, 2);
    check_items(form);
    const certificate_pair pair = checked_pair(form);
    if (PltWEB_ReplaceCertificate(pair.chain.c_str(), pair.key.c_str()) != PLT_OK) {
        console_log("[ERROR] SSLCert: the web server's certificate was not written\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    audit_configuration(context.user_name, "TWR.1.0.OemSslcertUploaded");
    answer_form_success("TWR.1.0.OemSslcertUploaded");
    return 0;
}

}  // namespace odata::redfish
