#include "framework/published_file.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"

namespace odata::redfish {
namespace {

std::string captured_id(const request_context& context) {
    return context.captures.empty() ? std::string() : context.captures.front();
}

}  // namespace

published_file::published_file(request_context& context, std::string entity_type,
                               std::string_view collection_uri)
    : redfish(context, entity_type, std::string(schema_file_of(entity_type).version), "",
              std::string(collection_uri) + "/" + captured_id(context)),
      id_(captured_id(context)) {}

void published_file::set_file_properties(std::string_view description,
                                         std::string_view content_property,
                                         std::string_view content, std::string location_uri) {
    set("Description", description);
    set("Languages", {"en"});
    set(content_property, content);
    set("Location", {{{"Language", "en"}, {"Uri", std::move(location_uri)}}});
    set("Oem", boost::json::object(answer_storage()));
}

}  // namespace odata::redfish
