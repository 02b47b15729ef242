// The DMTF schemas whose types the service's bodies carry, with the version
// of each. The JSON schema collection and the metadata document both list
// this table; the files themselves are installed as static content.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace odata::redfish {

struct schema_file {
    std::string_view name;     // "Chassis": the files Chassis.json and Chassis_v1.xml
    std::string_view version;  // "v1_10_0"; empty for collections
    bool json_published;       // false: only the CSDL file is installed
};

// Sorted by name.
const std::vector<schema_file>& schema_files();

// The row of a schema name, or null.
const schema_file* find_schema_file(std::string_view name);

// The row of a schema name; throws std::out_of_range for a name the table
// does not hold (a programming fault).
const schema_file& schema_file_of(std::string_view name);

// "#Chassis.v1_10_0.Chassis", "#ChassisCollection.ChassisCollection".
std::string schema_type(const schema_file& schema);

// That text for a type and a version (empty for a collection), made in
// text, an empty std::string or boost::json::string (in its storage): sized
// once and filled in place, as every resource names its type.
template <class string_type>
string_type type_text(std::string_view type, std::string_view version, string_type text) {
    text.resize(2 * type.size() + version.size() + (version.empty() ? 2 : 3));
    char* out = text.data();
    const auto put = [&out](std::string_view piece) {
        out = std::copy(piece.begin(), piece.end(), out);
    };
    put("#");
    put(type);
    put(".");
    if (!version.empty()) {
        put(version);
        put(".");
    }
    put(type);
    return text;
}

// The JSON schema of a type: the service's copy where it publishes one
// ("/redfish/v1/JsonSchemas/Chassis"), else DMTF's file of its version.
// schema is a row of the table.
const std::string& schema_uri(const schema_file& schema);

}  // namespace odata::redfish
