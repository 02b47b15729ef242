#include "resources/chassis/array_member.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"

namespace odata::redfish {

std::string array_member_uri(std::string_view resource_uri, std::string_view array, size_t index) {
    const std::string number = std::to_string(index);
    std::string uri;
    uri.reserve(resource_uri.size() + array.size() + number.size() + 3);
    uri.append(resource_uri).append("#/").append(array).append("/").append(number);
    return uri;
}

boost::json::object array_member(std::string_view resource_uri, std::string_view array,
                                 size_t index, std::string_view schema, std::string_view type) {
    const std::string_view version = schema_file_of(schema).version;
    std::string odata_type;
    odata_type.reserve(schema.size() + version.size() + type.size() + 3);
    odata_type.append("#").append(schema).append(".").append(version).append(".").append(type);
    // Room for the properties its builder adds, as many as are still scanned.
    boost::json::object member(scanned_properties, answer_storage());
    member.emplace("@odata.id", array_member_uri(resource_uri, array, index));
    member.emplace("@odata.type", odata_type);
    member.emplace("MemberId", std::to_string(index));
    return member;
}

}  // namespace odata::redfish
