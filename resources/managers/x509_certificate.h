// What the certificate resources show of an X.509 certificate, and the
// checks a new certificate and key pass before the web server gets them.
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace odata::redfish {

// Properties of the Certificate resource for the first certificate of a PEM
// chain: "Issuer", "Subject", "ValidNotBefore", "ValidNotAfter",
// "SerialNumber", "Fingerprint", "FingerprintHashAlgorithm". None when the
// text holds no certificate.
std::optional<boost::json::object> certificate_properties(std::string_view pem);

// A replacement split into its parts: the certificate chain and the key,
// each as PEM.
struct certificate_pair {
    std::string chain;
    std::string key;
};

enum class pair_problem { none, unreadable, no_certificate, no_key, key_mismatch, expired, weak };

// Reads a PEM text with one private key and one or more certificates, the
// first of which belongs to the key and is valid at now (seconds). The key
// must be RSA of at least 2048 bits or EC of at least 256, and no
// certificate of the chain may be weaker than the web server loads.
pair_problem read_certificate_pair(std::string_view pem, long long now, certificate_pair& pair);

}  // namespace odata::redfish
