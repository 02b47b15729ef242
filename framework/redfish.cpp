#include "framework/redfish.h"

#include <openssl/evp.h>

#include <iostream>
#include <memory>

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"

namespace odata::redfish {
namespace {

// The quoted MD5 of text. The digest is looked up once per process (each
// implicit lookup costs as much as hashing a kilobyte), and its context
// made once per thread.
std::string quoted_md5(const std::string& text) {
    static EVP_MD* const md5 = EVP_MD_fetch(nullptr, "MD5", nullptr);
    thread_local const std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> context(EVP_MD_CTX_new(),
                                                                                  EVP_MD_CTX_free);
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (!context || !EVP_DigestInit_ex2(context.get(), md5, nullptr) ||
        !EVP_DigestUpdate(context.get(), text.data(), text.size()) ||
        !EVP_DigestFinal_ex(context.get(), digest, &length))
        length = 0;
    static const char hex[] = "0123456789abcdef";
    std::string result(2 * std::size_t{length} + 2, '"');
    for (std::size_t i = 0; i < length; ++i) {
        result[2 * i + 1] = hex[digest[i] >> 4];
        result[2 * i + 2] = hex[digest[i] & 0x0f];
    }
    return result;
}

// The property made in place, in the value's storage, without a temporary.
template <class property_type>
void put_property(boost::json::object& value, std::string_view name, property_type&& property) {
    // Room for a typical resource's properties, which are few enough to be
    // scanned, taken at the first, since a reused answer sets none.
    if (value.empty()) value.reserve(scanned_properties);
    value.insert_or_assign(name, std::forward<property_type>(property));
}

std::string_view last_segment(std::string_view uri) {
    const std::string_view trimmed = uri.substr(0, uri.find_last_not_of('/') + 1);
    return trimmed.substr(trimmed.find_last_of('/') + 1);
}

}  // namespace

redfish::redfish(request_context& context, std::string entity_type, std::string schema_version,
                 std::string name, std::string uri)
    : webservice(context),
      entity_type_(std::move(entity_type)),
      schema_version_(std::move(schema_version)),
      name_(std::move(name)),
      uri_(std::move(uri)),
      value_(answer_storage()) {}

void redfish::set(std::string_view name, boost::json::value property) {
    put_property(value_, name, std::move(property));
}

void redfish::set(std::string_view name, std::initializer_list<boost::json::value_ref> property) {
    put_property(value_, name, boost::json::value(property, value_.storage()));
}

void redfish::set(std::string_view name, const char* text) { put_property(value_, name, text); }

void redfish::set(std::string_view name, const std::string& text) {
    put_property(value_, name, boost::json::string_view(text));
}

void redfish::set(std::string_view name, std::string_view text) {
    put_property(value_, name, boost::json::string_view(text));
}

void redfish::set_common_properties(std::string_view id) {
    set("@odata.id", uri_);
    put_property(value_, "@odata.type",
                 type_text(entity_type_, schema_version_, boost::json::string(value_.storage())));
    if (!schema_version_.empty()) set("Id", id.empty() ? last_segment(uri_) : id);
    set("Name", name_);
}

void redfish::set_members(const std::vector<std::string>& member_uris) {
    boost::json::array members(value_.storage());
    members.reserve(member_uris.size());
    for (const auto& member : member_uris) members.push_back(link(member));
    set("Members@odata.count", members.size());
    set("Members", std::move(members));
}

const std::string& redfish::etag() {
    if (etag_.empty()) etag_ = quoted_md5(body());
    return etag_;
}

const std::string& redfish::body() {
    if (body_.empty()) body_ = boost::json::serialize(value_);
    return body_;
}

void redfish::reuse_body(std::string body, std::string etag) {
    body_ = std::move(body);
    etag_ = std::move(etag);
}

void redfish::send_response() {
    if (end_if_no_content()) return;
    if (context_.method == GET) etag();
    body();
    write_headers(static_cast<unsigned>(body_.size()), body_);
    std::cout << body_;
}

void redfish::answer_success() {
    write_status_line(200);
    set_body(render_result({"Success", "Successfully Completed Request.", {}}));
}

boost::json::object link(std::string_view uri) {
    boost::json::object object(1, answer_storage());
    object.emplace("@odata.id", uri);
    return object;
}

boost::json::array link_array(std::string_view uri) {
    boost::json::array links(answer_storage());
    links.push_back(link(uri));
    return links;
}

}  // namespace odata::redfish
