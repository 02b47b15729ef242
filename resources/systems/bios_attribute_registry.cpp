#include "resources/systems/bios_attribute_registry.h"

#include <string>

#include "platform/libbios.h"

namespace odata::redfish {
namespace {

const char* type_name(int type) {
    switch (type) {
        case BIOS_ATTRIBUTE_INTEGER:
            return "Integer";
        case BIOS_ATTRIBUTE_STRING:
            return "String";
        case BIOS_ATTRIBUTE_BOOLEAN:
            return "Boolean";
        default:
            return "Enumeration";
    }
}

boost::json::value default_value(const St_BiosAttribute& attribute) {
    const std::string text = attribute.default_value ? attribute.default_value : "";
    if (attribute.type == BIOS_ATTRIBUTE_INTEGER) return std::stol(text);
    if (attribute.type == BIOS_ATTRIBUTE_BOOLEAN) return text == "true";
    return boost::json::string(text);
}

boost::json::array value_list(const St_BiosAttribute& attribute) {
    boost::json::array values;
    for (const char* const* value = attribute.values; value && *value; ++value)
        values.push_back({{"ValueName", *value}, {"ValueDisplayName", *value}});
    return values;
}

boost::json::object entry(const St_BiosAttribute& attribute) {
    boost::json::object entry{{"AttributeName", attribute.name},
                              {"DisplayName", attribute.display_name},
                              {"Type", type_name(attribute.type)},
                              {"DefaultValue", default_value(attribute)},
                              {"ReadOnly", attribute.read_only != 0}};
    if (attribute.type == BIOS_ATTRIBUTE_ENUMERATION) entry["Value"] = value_list(attribute);
    if (attribute.type == BIOS_ATTRIBUTE_INTEGER) {
        entry["LowerBound"] = attribute.lower_bound;
        entry["UpperBound"] = attribute.upper_bound;
    }
    if (attribute.type == BIOS_ATTRIBUTE_STRING) entry["MaxLength"] = attribute.max_length;
    return entry;
}

}  // namespace

boost::json::object bios_attribute_registry() {
    const St_BiosAttribute* table = nullptr;
    int count = 0;
    boost::json::array entries;
    if (UtilGetBiosAttributeTable(&table, &count) == PLT_OK)
        for (int i = 0; i < count; ++i) entries.push_back(entry(table[i]));
    return {{"@odata.type", "#AttributeRegistry.v1_3_0.AttributeRegistry"},
            {"Id", "BiosAttributeRegistry.1.0.0"},
            {"Name", "BIOS Attribute Registry"},
            {"Description", "The attributes of the host's BIOS setup"},
            {"Language", "en"},
            {"OwningEntity", "Tarnwright"},
            {"RegistryVersion", "1.0.0"},
            {"RegistryEntries", {{"Attributes", std::move(entries)}}}};
}

}  // namespace odata::redfish
