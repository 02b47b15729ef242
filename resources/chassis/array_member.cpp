#include "resources/chassis/array_member.h"

#include "framework/schema_files.h"

namespace odata::redfish {

std::string array_member_uri(std::string_view resource_uri, std::string_view array, size_t index) {
    return std::string(resource_uri) + "#/" + std::string(array) + "/" + std::to_string(index);
}

boost::json::object array_member(std::string_view resource_uri, std::string_view array,
                                 size_t index, std::string_view schema, std::string_view type) {
    const std::string version(schema_file_of(schema).version);
    return {{"@odata.id", array_member_uri(resource_uri, array, index)},
            {"@odata.type", "#" + std::string(schema) + "." + version + "." + std::string(type)},
            {"MemberId", std::to_string(index)}};
}

}  // namespace odata::redfish
