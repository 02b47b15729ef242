#include "resources/managers/certificate_rekey.h"

#include <vector>

#include "frontend/exception_http.h"
#include "platform/libweb.h"
#include "platform/libwebcert.h"
#include "resources/managers/action_parameters.h"
#include "resources/managers/certificate_resources.h"
#include "resources/managers/certificate_uris.h"
#include "resources/managers/csr_parameters.h"

namespace odata::redfish {
namespace {

// The subject and names of the certificate served now.
csr_content served_content() {
    const std::optional<csr_content> content = certified_content(served_certificate());
    if (content) return *content;
    console_log("[ERROR] Certificate: the served certificate is unreadable\n");
    throw_http_error(500, "Base.1.10.InternalError");
}

std::string served_key() {
    std::vector<char> pem(WEB_CERT_PEM_SIZE);
    const int length = PltWEB_GetKey(WEB_KEY_SERVED, pem.data(), static_cast<int>(pem.size()));
    if (length > 0) return std::string(pem.data(), static_cast<std::size_t>(length));
    console_log("[ERROR] Certificate: the web server's key is unreadable (%d)\n", length);
    throw_http_error(500, "Base.1.10.InternalError");
}

// Reads the action's parameters through checks, the key parameters only
// when the action makes a key; every refusal is reported at once.
std::optional<key_spec> read_parameters(request_context& context, const char* action,
                                        csr_parameters& checks, bool takes_key) {
    std::optional<key_spec> key;
    read_optional_parameters(
        context, action,
        [&](const std::string& name, const boost::json::value& value, result_record& result) {
            return (takes_key || name == "ChallengePassword") && checks.read(name, value, result);
        },
        [&](result_record& result) {
            if (takes_key) key = checks.key(result);
        });
    return key;
}

}  // namespace

int certificate_rekey::post(request_context& context) {
    constexpr const char* action = "Certificate.Rekey";
    csr_parameters checks(action);
    const std::optional<key_spec> key = read_parameters(context, action, checks, true);
    csr_content content = served_content();
    content.challenge_password = checks.challenge_password();
    answer_signing_request(request_with_new_key(*key, content), "Certificate",
                           https_certificate_uri);
    return 0;
}

int certificate_renew::post(request_context& context) {
    constexpr const char* action = "Certificate.Renew";
    csr_parameters checks(action);
    read_parameters(context, action, checks, false);
    csr_content content = served_content();
    content.challenge_password = checks.challenge_password();
    const std::string csr = signing_request(served_key(), content);
    if (csr.empty()) {
        console_log("[ERROR] Certificate.Renew: no request could be made\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    answer_signing_request(csr, "Certificate", https_certificate_uri);
    return 0;
}

rekeyactioninfo::rekeyactioninfo(request_context& context)
    : common_actioninfo(context, "Rekey Action Info", rekey_actioninfo_uri) {}

const actioninfo_parameters* rekeyactioninfo::parameters() const { return &key_parameter_infos(); }

}  // namespace odata::redfish
