// A Redfish resource handler: GET fills the resource value, send-response
// serialises it once and writes it with its ETag.
#pragma once

#include <boost/json.hpp>
#include <string>
#include <string_view>

#include "framework/webservice.h"

namespace odata::redfish {

class redfish : public webservice {
public:
    // For example "ServiceRoot", "v1_5_2", "Root Service", "/redfish/v1/";
    // collections give an empty schema version.
    redfish(request_context& context, std::string entity_type, std::string schema_version,
            std::string name, std::string uri);

    void send_response() override;
    std::string_view schema_name() const override { return entity_type_; }
    std::string_view answer_etag() const override { return etag_; }

    // The quoted MD5 of the serialised body; serialises the value first.
    // GET responses always carry it.
    const std::string& etag();
    // The serialised value (or the ready text of set_body).
    const std::string& body();
    // Answers with a body and ETag that the same resource built before.
    void reuse_body(std::string body, std::string etag);
    const boost::json::object& value() const { return value_; }
    const std::string& uri() const { return uri_; }

    // "Status: 200 OK" and the "Success" message, for a resource's changes
    // and the actions that answer through it; send-response completes it.
    void answer_success();

protected:
    ~redfish() = default;

    // The property setter that GET builds the resource with, in order.
    void set(std::string_view name, boost::json::value property);
    void set(std::string_view name, std::initializer_list<boost::json::value_ref> property);
    void set(std::string_view name, const char* text);
    void set(std::string_view name, const std::string& text);
    void set(std::string_view name, std::string_view text);
    // "@odata.id", "@odata.type", "Id" (resources, not collections; the
    // URI's last segment unless given), "Name".
    void set_common_properties(std::string_view id = {});
    // "Members" and "Members@odata.count" of a collection.
    void set_members(const std::vector<std::string>& member_uris);
    // Handlers that answer with a ready text instead of the value.
    void set_body(std::string text) { body_ = std::move(text); }

    std::string entity_type_;
    std::string schema_version_;
    std::string name_;
    std::string uri_;

private:
    boost::json::object value_;
    std::string etag_;
    std::string body_;
};

// Both in the answer's storage.
// {"@odata.id": uri}
boost::json::object link(std::string_view uri);

// [{"@odata.id": uri}]
boost::json::array link_array(std::string_view uri);

}  // namespace odata::redfish
