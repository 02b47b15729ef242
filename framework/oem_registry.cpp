#include "framework/oem_registry.h"

#include <cctype>
#include <stdexcept>
#include <string>

#include "framework/registry_files.h"
#include "framework/schema_files.h"
#include "frontend/message_table.h"

namespace odata::redfish {
namespace {

constexpr std::string_view registry_id = "TWR.v1_0_0";

// The message table keeps the severities as the service sends them; the
// registry's MessageSeverity is an enumeration.
std::string_view message_severity(std::string_view severity) {
    if (severity == "OK" || severity == "Ok" || severity == "Info") return "OK";
    if (severity == "Warning" || severity == "Critical") return severity;
    throw std::invalid_argument("no MessageSeverity for severity " + std::string(severity));
}

boost::json::object registry_message(const message_text& row) {
    const unsigned args = number_of_args(row.message);
    boost::json::object message;
    message["Description"] = row.message;
    message["Message"] = row.message;
    message["Severity"] = row.severity;
    message["MessageSeverity"] = message_severity(row.severity);
    message["NumberOfArgs"] = args;
    if (args > 0) {
        boost::json::array types;
        for (unsigned i = 0; i < args; ++i) types.emplace_back("string");
        message["ParamTypes"] = std::move(types);
    }
    message["Resolution"] = row.resolution;
    return message;
}

}  // namespace

unsigned number_of_args(std::string_view message) {
    unsigned highest = 0;
    for (size_t at = message.find('%'); at != std::string_view::npos;
         at = message.find('%', at + 1)) {
        unsigned number = 0;
        for (size_t digit = at + 1;
             digit < message.size() && std::isdigit(static_cast<unsigned char>(message[digit]));
             ++digit)
            number = number * 10 + static_cast<unsigned>(message[digit] - '0');
        if (number > highest) highest = number;
    }
    return highest;
}

boost::json::object message_registry_document(std::string_view registry_id,
                                              std::string_view description,
                                              const std::vector<message_text>& messages) {
    const std::string registry = registry_of(registry_id);  // "TWR.1.0.0"
    const std::string prefix = registry.substr(0, registry.find('.'));
    const std::string version = registry.substr(prefix.size() + 1);
    boost::json::object by_name;
    for (const message_text& row : messages) by_name[row.id] = registry_message(row);
    boost::json::object document;
    document["@odata.type"] = schema_type(schema_file_of("MessageRegistry"));
    document["Id"] = registry;
    document["Name"] = prefix + " Message Registry";
    document["Language"] = "en";
    document["Description"] = description;
    document["RegistryPrefix"] = prefix;
    document["RegistryVersion"] = version;
    document["OwningEntity"] = "Tarnwright";
    document["Messages"] = std::move(by_name);
    return document;
}

boost::json::object oem_message_registry() {
    // Message ids carry the major and minor version only: "TWR.1.0.".
    const std::string registry = registry_of(registry_id);
    const std::string id_prefix = registry.substr(0, registry.rfind('.') + 1);
    std::vector<message_text> messages;
    for (auto row = message_table_begin(); row != message_table_end(); ++row) {
        if (row->id.substr(0, id_prefix.size()) != id_prefix) continue;
        message_text named = *row;
        named.id = row->id.substr(id_prefix.size());
        messages.push_back(named);
    }
    return message_registry_document(
        registry_id, "This registry defines the OEM messages of the Redfish service", messages);
}

}  // namespace odata::redfish
