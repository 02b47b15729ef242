#include "framework/published_file.h"

#include "base/joined_text.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"

namespace odata::redfish {
namespace {

std::string_view captured_id(const request_context& context) {
    return context.captures.empty() ? std::string_view() : context.captures.front();
}

}  // namespace

published_file::published_file(request_context& context, std::string entity_type,
                               std::string_view collection_uri)
    : redfish(context, entity_type, std::string(schema_file_of(entity_type).version), "",
              platform::joined({collection_uri, "/", captured_id(context)})),
      id_(captured_id(context)) {}

void published_file::set_file_properties(std::string_view description,
                                         std::string_view content_property,
                                         std::string_view content, std::string location_uri) {
    // Built member by member: a generic initializer list costs as much as
    // the rest of the resource.
    set("Description", description);
    boost::json::array languages(answer_storage());
    languages.emplace_back("en");
    set("Languages", std::move(languages));
    set(content_property, content);
    boost::json::array locations(answer_storage());
    locations.emplace_back(boost::json::object(
        {{"Language", "en"}, {"Uri", std::move(location_uri)}}, answer_storage()));
    set("Location", std::move(locations));
    set("Oem", boost::json::object(answer_storage()));
}

}  // namespace odata::redfish
