#include "resources/managers/replace_certificate.h"

#include <vector>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "platform/libwebcert.h"
#include "resources/managers/action_parameters.h"
#include "resources/managers/certificate_uris.h"
#include "resources/managers/x509_certificate.h"

namespace odata::redfish {
namespace {

constexpr const char* replace_certificate_action = "CertificateService.ReplaceCertificate";

struct replacement {
    std::string pem;
    bool has_pem = false;
};

void report_value(result_record& result, const char* message_id, const std::string& value,
                  const std::string& name) {
    add_parameter_message(result, message_id, value, name, replace_certificate_action);
}

// The private key travels in CertificateString: messages never show it.
void read_parameter(const std::string& name, const boost::json::value& value, replacement& request,
                    result_record& result) {
    const boost::json::string* text = value.if_string();
    if (name == "CertificateString") {
        if (!text || text->empty() || text->size() >= WEB_CERT_PEM_SIZE)
            return report_value(result, "Base.1.10.ActionParameterValueFormatError", hidden_value,
                                name);
        request = {std::string(*text), true};
    } else if (name == "CertificateType") {
        if (!text)
            return report_value(result, "Base.1.10.ActionParameterValueTypeError",
                                shown_value(value), name);
        if (*text != "PEM")
            report_value(result, "Base.1.10.ActionParameterValueNotInList", std::string(*text),
                         name);
    } else if (name == "CertificateUri") {
        const boost::json::object* target = value.if_object();
        const boost::json::value* id = target ? target->if_contains("@odata.id") : nullptr;
        if (!id || *id != https_certificate_uri)
            report_value(result, "Base.1.10.ActionParameterValueFormatError", shown_value(value),
                         name);
    } else {
        unknown_property::in_post(replace_certificate_action).report(result, name);
    }
}

replacement read_request(const boost::json::object& parameters, result_record& result) {
    replacement request;
    for (const auto& [name, value] : parameters)
        read_parameter(std::string(name), value, request, result);
    for (const char* required : {"CertificateString", "CertificateType", "CertificateUri"})
        if (!parameters.contains(required))
            add_message(result, "Base.1.10.ActionParameterMissing",
                        {replace_certificate_action, required});
    return request;
}

[[noreturn]] void refuse(pair_problem problem) {
    console_log("[ReplaceCertificate] refused: problem %d\n", static_cast<int>(problem));
    result_record result = general_error();
    report_value(result, "Base.1.10.ActionParameterValueFormatError", hidden_value,
                 "CertificateString");
    throw_http_result(400, result);
}

std::string kept_key(int which) {
    std::vector<char> pem(WEB_CERT_PEM_SIZE);
    const int length = PltWEB_GetKey(which, pem.data(), static_cast<int>(pem.size()));
    return length > 0 ? std::string(pem.data(), static_cast<std::size_t>(length)) : "";
}

// A certificate alone is signed for a key the BMC keeps: the one made for
// the last signing request, or the one it serves with (a renewal). The pair
// names the kept key's text as the platform stored it.
certificate_pair pair_for_kept_key(const std::string& pem) {
    for (const int which : {WEB_KEY_PENDING, WEB_KEY_SERVED}) {
        const std::string key = kept_key(which);
        if (key.empty()) continue;
        certificate_pair pair;
        const pair_problem problem = read_certificate_pair(key + pem, lx_time_get(), pair);
        if (problem == pair_problem::none) return {pair.chain, key};
        if (problem != pair_problem::key_mismatch) refuse(problem);
    }
    console_log("[ReplaceCertificate] refused: the certificate belongs to no key of the BMC\n");
    throw_http_error(400, "TWR.1.0.OemSslcertIllegalPair");
}

certificate_pair checked_pair(const std::string& pem) {
    if (pem.find("PRIVATE KEY-----") == std::string::npos) return pair_for_kept_key(pem);
    certificate_pair pair;
    const pair_problem problem = read_certificate_pair(pem, lx_time_get(), pair);
    if (problem != pair_problem::none) refuse(problem);
    return pair;
}

}  // namespace

replace_certificate::replace_certificate(request_context& context)
    : webservice(context), certificate_(std::make_shared<certificate>(context)) {}

int replace_certificate::post(request_context& context) {
    const boost::json::value body = context.body_json();
    result_record result = general_error();
    const replacement request = read_request(request_object(body), result);
    if (!result.entries.empty()) throw_http_result(400, result);
    const certificate_pair pair = checked_pair(request.pem);
    if (PltWEB_ReplaceCertificate(pair.chain.c_str(), pair.key.c_str()) != PLT_OK) {
        console_log("[ERROR] ReplaceCertificate: the web server's certificate was not written\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    certificate_->answer_success();
    return 0;
}

void replace_certificate::send_response() { certificate_->send_response(); }

replace_certificate_actioninfo::replace_certificate_actioninfo(request_context& context)
    : common_actioninfo(context, "Replace Certificate Action Info",
                        replace_certificate_actioninfo_uri) {}

const actioninfo_parameters* replace_certificate_actioninfo::parameters() const {
    static const actioninfo_parameters replace = {
        {"CertificateString", true, "String", {}, {}, {}, {}},
        {"CertificateType", true, "String", {"PEM"}, {}, {}, {}},
        {"CertificateUri", true, "Object", {}, {}, {}, "Certificate"},
    };
    return &replace;
}

}  // namespace odata::redfish
