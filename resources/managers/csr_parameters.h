// The parameters that the certificate signing actions share: the key pair
// to make (KeyPairAlgorithm, KeyBitLength, KeyCurveId) and the
// ChallengePassword. Messages never show a challenge password.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>

#include "framework/common_actioninfo.h"
#include "frontend/message.h"
#include "resources/managers/signing_request.h"

namespace odata::redfish {

// What a request asked for, before the parameters are checked together.
struct key_parameters {
    std::optional<std::string> algorithm;
    std::optional<long> bits;
    std::optional<std::string> curve;
};

// The values offered, as the ActionInfo resources list them.
inline constexpr const char* rsa_algorithm = "TPM_ALG_RSA";
inline constexpr const char* ec_algorithm = "TPM_ALG_ECDSA";
inline constexpr const char* p256_curve = "TPM_ECC_NIST_P256";
inline constexpr const char* p384_curve = "TPM_ECC_NIST_P384";

class csr_parameters {
public:
    explicit csr_parameters(std::string action) : action_(std::move(action)) {}

    // Reads a key parameter or the challenge password; false for another.
    bool read(const std::string& name, const boost::json::value& value, result_record& result);

    // The key the parameters ask for (RSA 2048 when they name none); none,
    // with messages in result, when they are not offered or disagree.
    std::optional<key_spec> key(result_record& result) const;

    const std::string& challenge_password() const { return challenge_password_; }

    // A message about the value of a parameter of this action.
    void report(result_record& result, const char* message_id, const std::string& value,
                const std::string& name) const;

    // A string parameter of at most max_length printable characters
    // (hidden in messages when secret); none, with a message, otherwise.
    std::optional<std::string> text(const std::string& name, const boost::json::value& value,
                                    std::size_t max_length, result_record& result,
                                    bool secret = false) const;

private:
    std::optional<key_spec> ec_key(result_record& result) const;

    std::string action_;
    key_parameters key_;
    std::string challenge_password_;
};

// KeyPairAlgorithm, KeyBitLength, KeyCurveId and ChallengePassword, as an
// ActionInfo lists them.
const actioninfo_parameters& key_parameter_infos();

// Answers 200 with a JSON body of the request's CSRString and the link
// named link_name to link_uri.
void answer_signing_request(const std::string& csr, const char* link_name, const char* link_uri);

// Makes a new key for spec, keeps it as the BMC's pending key and returns
// the PEM request for it; 500 when the key cannot be made or kept.
std::string request_with_new_key(const key_spec& spec, const csr_content& content);

}  // namespace odata::redfish
