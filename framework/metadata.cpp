#include "framework/metadata.h"

#include <iostream>
#include <sstream>
#include <vector>

#include "framework/schema_files.h"
#include "frontend/response_headers.h"

namespace odata::redfish {
namespace {

// The service container extends the root's container of this version: the
// newest at or below the root's schema version.
constexpr const char* root_container_namespace = "ServiceRoot.v1_5_0";

std::vector<std::string> included_namespaces(const schema_file& schema) {
    std::vector<std::string> namespaces{std::string(schema.name)};
    if (schema.name == "ServiceRoot") namespaces.emplace_back(root_container_namespace);
    if (!schema.version.empty())
        namespaces.push_back(std::string(schema.name) + "." + std::string(schema.version));
    return namespaces;
}

void write_reference(std::ostream& out, const std::string& file,
                     const std::vector<std::string>& namespaces, const char* alias = nullptr) {
    out << "<edmx:Reference Uri=\"/schemas/v1/" << file << "_v1.xml\">";
    for (const auto& name : namespaces) {
        out << "<edmx:Include Namespace=\"" << name << "\"";
        if (alias) out << " Alias=\"" << alias << "\"";
        out << "/>";
    }
    out << "</edmx:Reference>";
}

}  // namespace

const std::string& metadata_text() {
    static const std::string text = [] {
        std::ostringstream out;
        out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
            << "<edmx:Edmx xmlns:edmx=\"http://docs.oasis-open.org/odata/ns/edmx\""
            << " Version=\"4.0\">";
        for (const auto& schema : schema_files())
            write_reference(out, std::string(schema.name), included_namespaces(schema));
        // The annotation vocabulary every Redfish schema uses.
        write_reference(out, "RedfishExtensions", {"RedfishExtensions.v1_0_0"}, "Redfish");
        out << "<edmx:DataServices>"
            << "<Schema xmlns=\"http://docs.oasis-open.org/odata/ns/edm\" Namespace=\"Service\">"
            << "<EntityContainer Name=\"Service\" Extends=\"" << root_container_namespace
            << ".ServiceContainer\"/>"
            << "</Schema></edmx:DataServices></edmx:Edmx>";
        return out.str();
    }();
    return text;
}

int metadata::write_headers(unsigned length, const std::string&) {
    write_header_block(length, body_kind::xml);
    return 0;
}

int metadata::get(request_context&) {
    set_lasting_text(metadata_text());
    return 0;
}

}  // namespace odata::redfish
