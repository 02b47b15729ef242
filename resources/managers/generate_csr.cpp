#include "resources/managers/generate_csr.h"

#include <algorithm>
#include <cctype>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "resources/managers/certificate_uris.h"
#include "resources/managers/csr_parameters.h"

namespace odata::redfish {
namespace {

constexpr const char* generate_csr_action = "CertificateService.GenerateCSR";

// A parameter that becomes a field of the subject, with the upper bound
// that X.509 sets for it.
struct subject_parameter {
    std::string_view name;
    const char* field;
    std::size_t max_length;
};

constexpr subject_parameter subject_parameters[] = {
    {"CommonName", "CN", 64},
    {"Organization", "O", 64},
    {"OrganizationalUnit", "OU", 64},
    {"City", "L", 128},
    {"State", "ST", 128},
    {"Country", "C", 2},
    {"Email", "emailAddress", 128},
    {"Surname", "SN", 64},
    {"GivenName", "GN", 64},
    {"Initials", "initials", 64},
};

constexpr std::size_t max_alternative_names = 16;
constexpr std::size_t max_host_name = 253;

bool address_character(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '-' || c == ':' ||
           c == '*';
}

// Host names (a leading "*." for a wildcard) and IP addresses.
bool address_text(const boost::json::value& value) {
    const boost::json::string* text = value.if_string();
    return text && !text->empty() && text->size() <= max_host_name &&
           std::all_of(text->begin(), text->end(), address_character);
}

void read_alternative_names(const csr_parameters& checks, const boost::json::value& value,
                            csr_content& content, result_record& result) {
    const boost::json::array* names = value.if_array();
    if (!names || names->size() > max_alternative_names ||
        !std::all_of(names->begin(), names->end(), address_text))
        return checks.report(result, "Base.1.10.ActionParameterValueFormatError",
                             shown_value(value), "AlternativeNames");
    for (const boost::json::value& name : *names)
        content.alternative_names.emplace_back(name.get_string());
}

void read_subject(const csr_parameters& checks, const subject_parameter& parameter,
                  const boost::json::value& value, csr_content& content, result_record& result) {
    const std::string name(parameter.name);
    const std::optional<std::string> text = checks.text(name, value, parameter.max_length, result);
    if (!text) return;
    const bool country = std::string_view(parameter.field) == "C";
    if (country && (text->size() != 2 || !std::isalpha(static_cast<unsigned char>((*text)[0])) ||
                    !std::isalpha(static_cast<unsigned char>((*text)[1]))))
        return checks.report(result, "Base.1.10.ActionParameterValueFormatError", *text, name);
    content.subject.emplace_back(parameter.field, *text);
}

void read_parameter(csr_parameters& checks, const std::string& name,
                    const boost::json::value& value, csr_content& content, result_record& result) {
    for (const subject_parameter& parameter : subject_parameters)
        if (parameter.name == name) return read_subject(checks, parameter, value, content, result);
    if (checks.read(name, value, result)) return;
    if (name == "AlternativeNames") return read_alternative_names(checks, value, content, result);
    if (name == "UnstructuredName") {
        content.unstructured_name = checks.text(name, value, 255, result).value_or("");
    } else if (name == "CertificateCollection") {
        const boost::json::object* target = value.if_object();
        const boost::json::value* id = target ? target->if_contains("@odata.id") : nullptr;
        if (!id || *id != https_certificates_uri)
            checks.report(result, "Base.1.10.ActionParameterValueFormatError", shown_value(value),
                          name);
    } else if (name == "ContactPerson" || name == "KeyUsage") {
        add_message(result, "Base.1.10.ActionParameterNotSupported", {name, generate_csr_action},
                    {"/" + name});
    } else {
        unknown_property::in_post(generate_csr_action).report(result, name);
    }
}

}  // namespace

int generate_csr::post(request_context& context) {
    const boost::json::value body = context.body_json();
    const boost::json::object& parameters = request_object(body);
    result_record result = general_error();
    csr_parameters checks(generate_csr_action);
    csr_content content;
    for (const auto& [name, value] : parameters)
        read_parameter(checks, std::string(name), value, content, result);
    for (const char* required : {"CommonName", "CertificateCollection"})
        if (!parameters.contains(required))
            add_message(result, "Base.1.10.ActionParameterMissing",
                        {generate_csr_action, required});
    const std::optional<key_spec> key = checks.key(result);
    if (!result.entries.empty()) throw_http_result(400, result);
    content.challenge_password = checks.challenge_password();
    answer_signing_request(request_with_new_key(*key, content), "CertificateCollection",
                           https_certificates_uri);
    return 0;
}

generate_csr_actioninfo::generate_csr_actioninfo(request_context& context)
    : common_actioninfo(context, "Generate CSR Action Info", generate_csr_actioninfo_uri) {}

const actioninfo_parameters* generate_csr_actioninfo::parameters() const {
    static const actioninfo_parameters generate = [] {
        actioninfo_parameters list = {
            {"CertificateCollection", true, "Object", {}, {}, {}, "CertificateCollection"},
            {"AlternativeNames", false, "StringArray", {}, {}, {}, {}},
            {"UnstructuredName", false, "String", {}, {}, {}, {}},
        };
        for (const subject_parameter& parameter : subject_parameters)
            list.push_back(
                {parameter.name, parameter.name == "CommonName", "String", {}, {}, {}, {}});
        for (const actioninfo_parameter& parameter : key_parameter_infos())
            list.push_back(parameter);
        return list;
    }();
    return &generate;
}

}  // namespace odata::redfish
