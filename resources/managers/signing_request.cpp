#include "resources/managers/signing_request.h"

#include <arpa/inet.h>
#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <memory>

namespace odata::redfish {
namespace {

using bio_ptr = std::unique_ptr<BIO, decltype(&BIO_free)>;
using key_ptr = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using request_ptr = std::unique_ptr<X509_REQ, decltype(&X509_REQ_free)>;
using names_ptr = std::unique_ptr<GENERAL_NAMES, decltype(&GENERAL_NAMES_free)>;
using x509_ptr = std::unique_ptr<X509, decltype(&X509_free)>;

int no_passphrase(char*, int, int, void*) { return 0; }

std::string memory_text(BIO* bio) {
    char* data = nullptr;
    const long length = BIO_get_mem_data(bio, &data);
    return length > 0 ? std::string(data, static_cast<std::size_t>(length)) : std::string();
}

key_ptr read_key(std::string_view pem) {
    bio_ptr in(BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())), BIO_free);
    return key_ptr(
        in ? PEM_read_bio_PrivateKey(in.get(), nullptr, no_passphrase, nullptr) : nullptr,
        EVP_PKEY_free);
}

// An address is an IP address when it reads as one, otherwise a DNS name;
// the caller has checked its characters.
GENERAL_NAME* general_name(const std::string& text) {
    GENERAL_NAME* name = GENERAL_NAME_new();
    if (!name) return nullptr;
    if (ASN1_OCTET_STRING* address = a2i_IPADDRESS(text.c_str())) {
        GENERAL_NAME_set0_value(name, GEN_IPADD, address);
        return name;
    }
    ASN1_IA5STRING* dns = ASN1_IA5STRING_new();
    if (!dns || ASN1_STRING_set(dns, text.data(), static_cast<int>(text.size())) != 1) {
        ASN1_IA5STRING_free(dns);
        GENERAL_NAME_free(name);
        return nullptr;
    }
    GENERAL_NAME_set0_value(name, GEN_DNS, dns);
    return name;
}

bool add_alternative_names(X509_REQ* request, const std::vector<std::string>& texts) {
    if (texts.empty()) return true;
    names_ptr names(GENERAL_NAMES_new(), GENERAL_NAMES_free);
    if (!names) return false;
    for (const std::string& text : texts) {
        GENERAL_NAME* name = general_name(text);
        if (!name || !sk_GENERAL_NAME_push(names.get(), name)) {
            GENERAL_NAME_free(name);
            return false;
        }
    }
    STACK_OF(X509_EXTENSION)* extensions = sk_X509_EXTENSION_new_null();
    X509_EXTENSION* extension = X509V3_EXT_i2d(NID_subject_alt_name, 0, names.get());
    const bool added = extensions && extension && sk_X509_EXTENSION_push(extensions, extension) &&
                       X509_REQ_add_extensions(request, extensions) == 1;
    if (!added) X509_EXTENSION_free(extension);
    sk_X509_EXTENSION_pop_free(extensions, X509_EXTENSION_free);
    return added;
}

bool add_attribute(X509_REQ* request, int nid, const std::string& value) {
    return value.empty() || X509_REQ_add1_attr_by_NID(
                                request, nid, MBSTRING_UTF8,
                                reinterpret_cast<const unsigned char*>(value.c_str()), -1) == 1;
}

bool fill_request(X509_REQ* request, EVP_PKEY* key, const csr_content& content) {
    X509_NAME* subject = X509_REQ_get_subject_name(request);
    for (const auto& [field, value] : content.subject)
        if (X509_NAME_add_entry_by_txt(subject, field.c_str(), MBSTRING_UTF8,
                                       reinterpret_cast<const unsigned char*>(value.c_str()), -1,
                                       -1, 0) != 1)
            return false;
    return add_alternative_names(request, content.alternative_names) &&
           add_attribute(request, NID_pkcs9_challengePassword, content.challenge_password) &&
           add_attribute(request, NID_pkcs9_unstructuredName, content.unstructured_name) &&
           X509_REQ_set_version(request, 0) == 1 && X509_REQ_set_pubkey(request, key) == 1 &&
           X509_REQ_sign(request, key, EVP_sha256()) > 0;
}

std::string utf8_text(const ASN1_STRING* data) {
    unsigned char* utf8 = nullptr;
    const int length = ASN1_STRING_to_UTF8(&utf8, data);
    std::string text = length >= 0 ? std::string(reinterpret_cast<char*>(utf8), length) : "";
    OPENSSL_free(utf8);
    return text;
}

std::string address_text(const ASN1_OCTET_STRING* address) {
    char text[INET6_ADDRSTRLEN] = "";
    const int family = address->length == 4 ? AF_INET : AF_INET6;
    if (address->length != 4 && address->length != 16) return {};
    return inet_ntop(family, address->data, text, sizeof text) ? text : "";
}

std::vector<std::string> alternative_names_of(const X509* certificate) {
    std::vector<std::string> texts;
    names_ptr names(static_cast<GENERAL_NAMES*>(
                        X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)),
                    GENERAL_NAMES_free);
    for (int i = 0; names && i < sk_GENERAL_NAME_num(names.get()); ++i) {
        const GENERAL_NAME* name = sk_GENERAL_NAME_value(names.get(), i);
        const std::string text = name->type == GEN_DNS     ? utf8_text(name->d.dNSName)
                                 : name->type == GEN_IPADD ? address_text(name->d.iPAddress)
                                                           : "";
        if (!text.empty()) texts.push_back(text);
    }
    return texts;
}

}  // namespace

std::string new_private_key(const key_spec& spec) {
    const key_ptr key(spec.algorithm == key_algorithm::rsa
                          ? EVP_RSA_gen(static_cast<unsigned>(spec.rsa_bits))
                          : EVP_EC_gen(spec.ec_bits == 384 ? "P-384" : "P-256"),
                      EVP_PKEY_free);
    bio_ptr out(BIO_new(BIO_s_mem()), BIO_free);
    if (!key || !out ||
        PEM_write_bio_PrivateKey(out.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) != 1)
        return {};
    return memory_text(out.get());
}

std::string signing_request(std::string_view key_pem, const csr_content& content) {
    const key_ptr key = read_key(key_pem);
    request_ptr request(X509_REQ_new(), X509_REQ_free);
    bio_ptr out(BIO_new(BIO_s_mem()), BIO_free);
    const bool made = key && request && out && fill_request(request.get(), key.get(), content) &&
                      PEM_write_bio_X509_REQ(out.get(), request.get()) == 1;
    ERR_clear_error();
    return made ? memory_text(out.get()) : std::string();
}

std::optional<csr_content> certified_content(std::string_view certificate_pem) {
    bio_ptr in(BIO_new_mem_buf(certificate_pem.data(), static_cast<int>(certificate_pem.size())),
               BIO_free);
    const x509_ptr certificate(
        in ? PEM_read_bio_X509(in.get(), nullptr, no_passphrase, nullptr) : nullptr, X509_free);
    ERR_clear_error();
    if (!certificate) return std::nullopt;
    csr_content content;
    const X509_NAME* subject = X509_get_subject_name(certificate.get());
    for (int i = 0; i < X509_NAME_entry_count(subject); ++i) {
        const X509_NAME_ENTRY* entry = X509_NAME_get_entry(subject, i);
        const int nid = OBJ_obj2nid(X509_NAME_ENTRY_get_object(entry));
        if (nid != NID_undef)
            content.subject.emplace_back(OBJ_nid2sn(nid),
                                         utf8_text(X509_NAME_ENTRY_get_data(entry)));
    }
    content.alternative_names = alternative_names_of(certificate.get());
    return content;
}

}  // namespace odata::redfish
