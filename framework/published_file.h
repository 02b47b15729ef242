// A resource that tells where the web server publishes a file: a message
// registry or a JSON schema.
#pragma once

#include <string>
#include <string_view>

#include "framework/redfish.h"

namespace odata::redfish {

class published_file : public redfish {
protected:
    // The member of collection_uri that the route's capture names; its
    // schema version comes from the schema table, its name from GET.
    published_file(request_context& context, std::string entity_type,
                   std::string_view collection_uri);
    ~published_file() = default;

    // The captured member id, "" when the route captured none.
    const std::string& id() const { return id_; }

    // "Description", "Languages", the property that names the file's
    // content (as "Registry" or "Schema"), "Location" and "Oem", in order,
    // after the common properties.
    void set_file_properties(std::string_view description, std::string_view content_property,
                             std::string_view content, std::string location_uri);

private:
    std::string id_;
};

}  // namespace odata::redfish
