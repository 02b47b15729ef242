// The checks of a replacement HTTPS certificate and what the certificate
// resource shows of one, on pairs made here.
#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

#include "resources/managers/x509_certificate.h"

using namespace odata::redfish;

namespace {

constexpr long long now = 1800000000;  // 2027-01-15
constexpr long day = 86400;

using key_ptr = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;

key_ptr new_key() { return key_ptr(EVP_EC_gen("P-256"), EVP_PKEY_free); }

template <class write_function>
std::string pem_of(write_function write) {
    std::unique_ptr<BIO, decltype(&BIO_free)> out(BIO_new(BIO_s_mem()), BIO_free);
    write(out.get());
    char* data = nullptr;
    const long length = BIO_get_mem_data(out.get(), &data);
    return std::string(data, static_cast<std::size_t>(length));
}

// A self-signed certificate for key, valid from now + from to now + to.
std::string certificate_for(EVP_PKEY* key, const char* common_name, long from, long to) {
    std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 0x1234);
    time_t base = static_cast<time_t>(now);
    X509_time_adj(X509_getm_notBefore(certificate.get()), from, &base);
    X509_time_adj(X509_getm_notAfter(certificate.get()), to, &base);
    X509_NAME* name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char*>(common_name), -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    X509_set_pubkey(certificate.get(), key);
    X509_sign(certificate.get(), key, EVP_sha256());
    return pem_of([&](BIO* out) { PEM_write_bio_X509(out, certificate.get()); });
}

std::string key_pem(EVP_PKEY* key) {
    return pem_of([&](BIO* out) {
        PEM_write_bio_PrivateKey(out, key, nullptr, nullptr, 0, nullptr, nullptr);
    });
}

pair_problem problem_of(const std::string& pem) {
    certificate_pair pair;
    return read_certificate_pair(pem, now, pair);
}

}  // namespace

TEST(X509Certificate, AMatchingCurrentPairIsSplitIntoChainAndKey) {
    const key_ptr key = new_key();
    const std::string certificate = certificate_for(key.get(), "bmc.rack7", -day, 30 * day);
    certificate_pair pair;
    // Either order, with text around the blocks.
    ASSERT_EQ(read_certificate_pair("note\n" + certificate + key_pem(key.get()), now, pair),
              pair_problem::none);
    EXPECT_EQ(pair.chain, certificate);
    EXPECT_NE(pair.key.find("BEGIN PRIVATE KEY"), std::string::npos);
    EXPECT_EQ(pair.chain.find("PRIVATE"), std::string::npos);
}

TEST(X509Certificate, EveryWayAPairCanBeWrong) {
    const key_ptr key = new_key();
    const key_ptr other = new_key();
    const std::string current = certificate_for(key.get(), "a", -day, day);
    EXPECT_EQ(problem_of(key_pem(key.get())), pair_problem::no_certificate);
    EXPECT_EQ(problem_of(current), pair_problem::no_key);
    EXPECT_EQ(problem_of(key_pem(other.get()) + current), pair_problem::key_mismatch);
    EXPECT_EQ(problem_of(key_pem(key.get()) + certificate_for(key.get(), "a", -2 * day, -day)),
              pair_problem::expired);
    EXPECT_EQ(problem_of(key_pem(key.get()) + certificate_for(key.get(), "a", day, 2 * day)),
              pair_problem::expired);
    EXPECT_EQ(problem_of(""), pair_problem::no_certificate);
    EXPECT_EQ(problem_of("-----BEGIN CERTIFICATE-----\nAAAA\n-----END CERTIFICATE-----\n"),
              pair_problem::no_certificate);
    // A key protected by a passphrase is refused without asking for one.
    const std::string encrypted = pem_of([&](BIO* out) {
        PEM_write_bio_PrivateKey(out, key.get(), EVP_aes_128_cbc(), nullptr, 0, nullptr,
                                 const_cast<char*>("secret"));
    });
    EXPECT_EQ(problem_of(encrypted + current), pair_problem::no_key);
}

TEST(X509Certificate, PropertiesOfTheFirstCertificate) {
    const key_ptr key = new_key();
    const auto properties = certificate_properties(certificate_for(key.get(), "bmc.rack7", 0, day) +
                                                   certificate_for(key.get(), "second", 0, day));
    ASSERT_TRUE(properties);
    EXPECT_EQ(properties->at("Subject").at("CommonName"), "bmc.rack7");
    EXPECT_EQ(properties->at("Issuer").at("CommonName"), "bmc.rack7");
    EXPECT_EQ(properties->at("ValidNotBefore"), "2027-01-15T08:00:00+00:00");
    EXPECT_EQ(properties->at("SerialNumber"), "12:34");
    EXPECT_EQ(properties->at("Fingerprint").as_string().size(), 32u * 3 - 1);
    EXPECT_FALSE(certificate_properties("no certificate here"));
}
