#include "resources/managers/csr_parameters.h"

#include <algorithm>
#include <iostream>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libweb.h"
#include "platform/libwebcert.h"
#include "resources/managers/action_parameters.h"

namespace odata::redfish {
namespace {

// PKCS#9 bounds a challenge password to 255 characters.
constexpr std::size_t max_challenge_password = 255;

bool printable(std::string_view text) {
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
}

}  // namespace

void csr_parameters::report(result_record& result, const char* message_id, const std::string& value,
                            const std::string& name) const {
    add_parameter_message(result, message_id, value, name, action_);
}

std::optional<std::string> csr_parameters::text(const std::string& name,
                                                const boost::json::value& value,
                                                std::size_t max_length, result_record& result,
                                                bool secret) const {
    const boost::json::string* string = value.if_string();
    const std::string shown = secret ? hidden_value : shown_value(value);
    if (!string) {
        report(result, "Base.1.10.ActionParameterValueTypeError", shown, name);
        return std::nullopt;
    }
    if (string->empty() || string->size() > max_length || !printable(*string)) {
        report(result, "Base.1.10.ActionParameterValueFormatError", shown, name);
        return std::nullopt;
    }
    return std::string(*string);
}

bool csr_parameters::read(const std::string& name, const boost::json::value& value,
                          result_record& result) {
    if (name == "KeyPairAlgorithm") {
        key_.algorithm = text(name, value, 32, result);
    } else if (name == "KeyCurveId") {
        key_.curve = text(name, value, 32, result);
    } else if (name == "KeyBitLength") {
        if (value.is_int64())
            key_.bits = static_cast<long>(value.get_int64());
        else
            report(result, "Base.1.10.ActionParameterValueTypeError", shown_value(value), name);
    } else if (name == "ChallengePassword") {
        challenge_password_ = text(name, value, max_challenge_password, result, true).value_or("");
    } else {
        return false;
    }
    return true;
}

std::optional<key_spec> csr_parameters::ec_key(result_record& result) const {
    key_spec spec{key_algorithm::ec, 0, 256};
    if (key_.curve && *key_.curve != p256_curve && *key_.curve != p384_curve) {
        report(result, "Base.1.10.ActionParameterValueNotInList", *key_.curve, "KeyCurveId");
        return std::nullopt;
    }
    if (key_.curve) spec.ec_bits = *key_.curve == p384_curve ? 384 : 256;
    const bool offered_bits = key_.bits && (*key_.bits == 256 || *key_.bits == 384);
    if (key_.bits && (!offered_bits || (key_.curve && *key_.bits != spec.ec_bits))) {
        report(result, "Base.1.10.ActionParameterValueNotInList", std::to_string(*key_.bits),
               "KeyBitLength");
        return std::nullopt;
    }
    if (key_.bits) spec.ec_bits = static_cast<int>(*key_.bits);
    return spec;
}

std::optional<key_spec> csr_parameters::key(result_record& result) const {
    const std::string algorithm =
        key_.algorithm.value_or(key_.curve ? ec_algorithm : rsa_algorithm);
    if (algorithm == ec_algorithm) return ec_key(result);
    if (algorithm != rsa_algorithm) {
        report(result, "Base.1.10.ActionParameterValueNotInList", algorithm, "KeyPairAlgorithm");
        return std::nullopt;
    }
    bool offered = true;
    if (key_.curve) {
        report(result, "Base.1.10.ActionParameterValueNotInList", *key_.curve, "KeyCurveId");
        offered = false;
    }
    const long bits = key_.bits.value_or(2048);
    if (bits != 2048 && bits != 3072 && bits != 4096) {
        report(result, "Base.1.10.ActionParameterValueNotInList", std::to_string(bits),
               "KeyBitLength");
        offered = false;
    }
    if (!offered) return std::nullopt;
    return key_spec{key_algorithm::rsa, static_cast<int>(bits), 0};
}

const actioninfo_parameters& key_parameter_infos() {
    static const actioninfo_parameters infos = {
        {"KeyPairAlgorithm", false, "String", {rsa_algorithm, ec_algorithm}, {}, {}, {}},
        {"KeyBitLength", false, "Number", {"2048", "3072", "4096", "256", "384"}, {}, {}, {}},
        {"KeyCurveId", false, "String", {p256_curve, p384_curve}, {}, {}, {}},
        {"ChallengePassword", false, "String", {}, {}, {}, {}},
    };
    return infos;
}

void answer_signing_request(const std::string& csr, const char* link_name, const char* link_uri) {
    const std::string body = boost::json::serialize(
        boost::json::object{{"CSRString", csr}, {link_name, {{"@odata.id", link_uri}}}});
    write_status_line(200);
    write_header_block(body.size());
    std::cout << body;
}

std::string request_with_new_key(const key_spec& spec, const csr_content& content) {
    const std::string key = new_private_key(spec);
    const std::string csr = key.empty() ? std::string() : signing_request(key, content);
    if (csr.empty()) {
        console_log("[ERROR] GenerateCSR: no key pair or request could be made\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    if (PltWEB_SetPendingKey(key.c_str()) != PLT_OK) {
        console_log("[ERROR] GenerateCSR: the new key was not kept\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    return csr;
}

}  // namespace odata::redfish
