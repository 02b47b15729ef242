#include "resources/managers/x509_certificate.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "base/utc_time.h"

namespace odata::redfish {
namespace {

using bio_ptr = std::unique_ptr<BIO, decltype(&BIO_free)>;
using x509_ptr = std::unique_ptr<X509, decltype(&X509_free)>;
using key_ptr = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;

// Keys protected by a passphrase are refused, never prompted for.
int no_passphrase(char*, int, int, void*) { return 0; }

bio_ptr memory_bio(std::string_view text) {
    return bio_ptr(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())), BIO_free);
}

x509_ptr first_certificate(std::string_view pem) {
    bio_ptr bio = memory_bio(pem);
    return x509_ptr(bio ? PEM_read_bio_X509(bio.get(), nullptr, no_passphrase, nullptr) : nullptr,
                    X509_free);
}

struct name_field {
    int nid;
    const char* property;
};

constexpr name_field name_fields[] = {
    {NID_commonName, "CommonName"},
    {NID_organizationName, "Organization"},
    {NID_organizationalUnitName, "OrganizationalUnit"},
    {NID_localityName, "City"},
    {NID_stateOrProvinceName, "State"},
    {NID_countryName, "Country"},
};

boost::json::object identifier(const X509_NAME* name) {
    boost::json::object object;
    for (const name_field& field : name_fields) {
        const int index = X509_NAME_get_index_by_NID(name, field.nid, -1);
        if (index < 0) continue;
        const ASN1_STRING* data = X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, index));
        unsigned char* utf8 = nullptr;
        const int length = ASN1_STRING_to_UTF8(&utf8, data);
        if (length >= 0)
            object[field.property] = std::string(reinterpret_cast<char*>(utf8), length);
        OPENSSL_free(utf8);
    }
    return object;
}

long long seconds_since_epoch(const ASN1_TIME* time) {
    std::tm parts{};
    if (ASN1_TIME_to_tm(time, &parts) != 1) return 0;
    return static_cast<long long>(timegm(&parts));
}

// In the service's own 64-bit seconds: OpenSSL's X509_cmp_time takes the
// library's time_t, which a 32-bit BMC's system may keep in 32 bits.
bool valid_at(const X509* certificate, long long now) {
    std::tm from{};
    std::tm to{};
    return ASN1_TIME_to_tm(X509_get0_notBefore(certificate), &from) == 1 &&
           ASN1_TIME_to_tm(X509_get0_notAfter(certificate), &to) == 1 && timegm(&from) <= now &&
           now <= timegm(&to);
}

std::string hex(const unsigned char* bytes, std::size_t size, const char* separator) {
    static const char digits[] = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        if (i > 0) text += separator;
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0f];
    }
    return text;
}

std::string serial_number(const X509* certificate) {
    const ASN1_INTEGER* serial = X509_get0_serialNumber(certificate);
    return hex(serial->data, static_cast<std::size_t>(serial->length), ":");
}

std::string sha256_fingerprint(const X509* certificate) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (X509_digest(certificate, EVP_sha256(), digest, &length) != 1) return {};
    return hex(digest, length, ":");
}

std::vector<x509_ptr> certificates_of(std::string_view pem) {
    std::vector<x509_ptr> certificates;
    bio_ptr in = memory_bio(pem);
    while (X509* next = in ? PEM_read_bio_X509(in.get(), nullptr, no_passphrase, nullptr) : nullptr)
        certificates.emplace_back(next, X509_free);
    ERR_clear_error();
    return certificates;
}

// Every certificate in order, re-encoded: nothing but certificates reaches
// the chain.
std::string chain_text(const std::vector<x509_ptr>& certificates) {
    bio_ptr out(BIO_new(BIO_s_mem()), BIO_free);
    if (!out) return {};
    for (const x509_ptr& certificate : certificates)
        PEM_write_bio_X509(out.get(), certificate.get());
    char* data = nullptr;
    const long length = BIO_get_mem_data(out.get(), &data);
    return length > 0 ? std::string(data, static_cast<std::size_t>(length)) : std::string();
}

// The web server's TLS library refuses to load a certificate whose key or
// signature gives less than 112 bits of security (its security level 2); the
// server's own key must also be one that clients accept: RSA of 2048 bits or
// more, or EC on a curve of 256 bits or more.
constexpr int min_security_bits = 112;

bool strong_server_key(EVP_PKEY* key) {
    const int bits = EVP_PKEY_get_bits(key);
    switch (EVP_PKEY_get_base_id(key)) {
        case EVP_PKEY_RSA:
            return bits >= 2048;
        case EVP_PKEY_EC:
            return bits >= 256;
        default:
            return false;
    }
}

bool strong_certificate(X509* certificate) {
    EVP_PKEY* key = X509_get0_pubkey(certificate);
    if (!key || EVP_PKEY_get_security_bits(key) < min_security_bits) return false;
    // As in the TLS library, a self-signed certificate's signature counts for
    // nothing.
    if (X509_get_extension_flags(certificate) & EXFLAG_SS) return true;
    int signature_bits = 0;
    const bool known =
        X509_get_signature_info(certificate, nullptr, nullptr, &signature_bits, nullptr) == 1;
    ERR_clear_error();
    return known && signature_bits >= min_security_bits;
}

bool strong_chain(const std::vector<x509_ptr>& certificates, EVP_PKEY* key) {
    return strong_server_key(key) &&
           std::all_of(certificates.begin(), certificates.end(), [](const x509_ptr& certificate) {
               return strong_certificate(certificate.get());
           });
}

// The private key, re-encoded as PKCS#8.
std::string key_text(EVP_PKEY* key) {
    bio_ptr out(BIO_new(BIO_s_mem()), BIO_free);
    if (!out ||
        PEM_write_bio_PrivateKey(out.get(), key, nullptr, nullptr, 0, nullptr, nullptr) != 1)
        return {};
    char* data = nullptr;
    const long length = BIO_get_mem_data(out.get(), &data);
    return std::string(data, static_cast<std::size_t>(length));
}

}  // namespace

std::optional<boost::json::object> certificate_properties(std::string_view pem) {
    const x509_ptr certificate = first_certificate(pem);
    if (!certificate) return std::nullopt;
    return boost::json::object{
        {"Issuer", identifier(X509_get_issuer_name(certificate.get()))},
        {"Subject", identifier(X509_get_subject_name(certificate.get()))},
        {"ValidNotBefore",
         platform::utc_timestamp(seconds_since_epoch(X509_get0_notBefore(certificate.get())))},
        {"ValidNotAfter",
         platform::utc_timestamp(seconds_since_epoch(X509_get0_notAfter(certificate.get())))},
        {"SerialNumber", serial_number(certificate.get())},
        {"Fingerprint", sha256_fingerprint(certificate.get())},
        {"FingerprintHashAlgorithm", "TPM_ALG_SHA256"},
    };
}

pair_problem read_certificate_pair(std::string_view pem, long long now, certificate_pair& pair) {
    bio_ptr bio = memory_bio(pem);
    if (!bio) return pair_problem::unreadable;
    const key_ptr key(PEM_read_bio_PrivateKey(bio.get(), nullptr, no_passphrase, nullptr),
                      EVP_PKEY_free);
    const std::vector<x509_ptr> certificates = certificates_of(pem);
    if (certificates.empty()) return pair_problem::no_certificate;
    if (!key) return pair_problem::no_key;
    X509* certificate = certificates.front().get();
    const bool matches = X509_check_private_key(certificate, key.get()) == 1;
    ERR_clear_error();
    if (!matches) return pair_problem::key_mismatch;
    if (!valid_at(certificate, now)) return pair_problem::expired;
    if (!strong_chain(certificates, key.get())) return pair_problem::weak;
    pair = {chain_text(certificates), key_text(key.get())};
    return pair.chain.empty() || pair.key.empty() ? pair_problem::unreadable : pair_problem::none;
}

}  // namespace odata::redfish
