// The ActionInfo resources: the parameters an action takes, read from a
// table that each subclass supplies.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/redfish.h"

namespace odata::redfish {

// One parameter of an action; empty texts, lists and values are left out.
struct actioninfo_parameter {
    std::string_view name;
    bool required = false;
    std::string_view data_type;  // "String", "Number", "Boolean", "Object", ...
    std::vector<std::string_view> allowable_values;
    std::optional<double> minimum_value;
    std::optional<double> maximum_value;
    std::string_view object_data_type;
};

using actioninfo_parameters = std::vector<actioninfo_parameter>;

class common_actioninfo : public redfish {
public:
    // uri ends in the resource's Id, for example ".../ResetActionInfo".
    common_actioninfo(request_context& context, std::string name, std::string uri);

    // "Id", "Name", "Parameters", "Oem".
    int get(request_context& context) override;

protected:
    ~common_actioninfo() = default;

    // The action's parameters, built once per process; null when unknown.
    virtual const actioninfo_parameters* parameters() const = 0;
};

}  // namespace odata::redfish
