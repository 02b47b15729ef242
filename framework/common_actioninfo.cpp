#include "framework/common_actioninfo.h"

#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

boost::json::array allowable_values_json(const actioninfo_parameter& parameter) {
    boost::json::array values(answer_storage());
    for (std::string_view value : parameter.allowable_values) {
        if (value.empty()) {
            console_log("[ERROR][nullptr] Property_AllowValues\n");
            continue;
        }
        values.emplace_back(value);
    }
    return values;
}

boost::json::object parameter_json(const actioninfo_parameter& parameter) {
    boost::json::object object({{"Name", parameter.name},
                                {"Required", parameter.required},
                                {"DataType", parameter.data_type}},
                               answer_storage());
    if (!parameter.allowable_values.empty())
        object["AllowableValues"] = allowable_values_json(parameter);
    if (parameter.minimum_value) object["MinimumValue"] = *parameter.minimum_value;
    if (parameter.maximum_value) object["MaximumValue"] = *parameter.maximum_value;
    if (!parameter.object_data_type.empty()) object["ObjectDataType"] = parameter.object_data_type;
    return object;
}

// A row without a name or a type cannot describe a parameter; it is
// logged and skipped so that the rest still reaches the client.
boost::json::array parameters_json(const actioninfo_parameters* parameters) {
    boost::json::array array(answer_storage());
    if (!parameters) {
        console_log("[ERROR][nullptr] ActionInfos\n");
        return array;
    }
    for (const actioninfo_parameter& parameter : *parameters) {
        if (parameter.name.empty()) {
            console_log("[ERROR][nullptr] Property\n");
        } else if (parameter.data_type.empty()) {
            console_log("[ERROR][nullptr] Property_Item\n");
        } else {
            array.emplace_back(parameter_json(parameter));
        }
    }
    return array;
}

}  // namespace

common_actioninfo::common_actioninfo(request_context& context, std::string name, std::string uri)
    : redfish(context, "ActionInfo", std::string(schema_file_of("ActionInfo").version),
              std::move(name), std::move(uri)) {}

int common_actioninfo::get(request_context&) {
    set_common_properties();
    set("Parameters", parameters_json(parameters()));
    set("Oem", boost::json::object(answer_storage()));
    return 0;
}

}  // namespace odata::redfish
