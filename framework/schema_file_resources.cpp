#include "framework/schema_file_resources.h"

#include "base/joined_text.h"
#include "framework/schema_files.h"
#include "frontend/exception_http.h"

namespace odata::redfish {
namespace {

constexpr const char* schemas_uri = "/redfish/v1/JsonSchemas";

}  // namespace

jsonschemafilecollection::jsonschemafilecollection(request_context& context)
    : redfish(context, "JsonSchemaFileCollection", "", "JSON Schema File Collection", schemas_uri) {
}

int jsonschemafilecollection::get(request_context&) {
    set_common_properties();
    set("Description", "Schema Repository");
    // The published schemas are a fixed table: their URIs are made once.
    static const std::vector<std::string> members = [] {
        std::vector<std::string> uris;
        for (const auto& schema : schema_files()) {
            if (schema.json_published)
                uris.push_back(schemas_uri + ("/" + std::string(schema.name)));
        }
        return uris;
    }();
    set_members(members);
    return 0;
}

json_file_common::json_file_common(request_context& context)
    : published_file(context, "JsonSchemaFile", schemas_uri) {}

int json_file_common::get(request_context&) {
    const schema_file* schema = find_schema_file(id());
    if (!schema || !schema->json_published)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"JsonSchemaFile", id()});
    name_ = platform::joined({id(), " Schema File"});
    set_common_properties();
    set_file_properties(platform::joined({name_, " Location"}), "Schema", schema_type(*schema),
                        platform::joined({"/schemas/v1/", id(), ".json"}));
    return 0;
}

}  // namespace odata::redfish
