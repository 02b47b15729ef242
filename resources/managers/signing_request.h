// New key pairs for the HTTPS certificate and the certificate signing
// requests (PKCS#10) that a certificate authority signs for them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace odata::redfish {

enum class key_algorithm { rsa, ec };

// RSA with rsa_bits (2048 or more), or EC on the NIST curve of ec_bits
// (256 or 384).
struct key_spec {
    key_algorithm algorithm = key_algorithm::rsa;
    int rsa_bits = 2048;
    int ec_bits = 256;
};

// What a request asks to be certified. Subject entries are OpenSSL short
// names with their values ("CN", "O", "OU", "L", "ST", "C", "emailAddress",
// "SN", "GN", "initials"); alternative names are DNS names or IP addresses.
struct csr_content {
    std::vector<std::pair<std::string, std::string>> subject;
    std::vector<std::string> alternative_names;
    std::string challenge_password;
    std::string unstructured_name;
};

// A new private key as unencrypted PKCS#8 PEM; empty when it cannot be made.
std::string new_private_key(const key_spec& spec);

// The PEM request for the key, signed with it (SHA-256); empty when the key
// is unreadable or a value does not fit its field (a country of other than
// two letters, an address that is neither name nor number).
std::string signing_request(std::string_view key_pem, const csr_content& content);

// The subject and alternative names of the first certificate of a PEM
// text, to ask again for the same; none when it holds no certificate.
std::optional<csr_content> certified_content(std::string_view certificate_pem);

}  // namespace odata::redfish
