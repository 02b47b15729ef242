// The ResetType values of the system's Reset action, each with the
// platform call that performs it; the action and its ActionInfo both read
// this one table.
#pragma once

#include <string_view>
#include <vector>

namespace odata::redfish {

struct reset_type {
    std::string_view name;
    int (*perform)();  // a plt_result.h code
};

// In the order in which a requested value is matched.
const std::vector<reset_type>& reset_types();

// The entry whose name equals name exactly, or null.
const reset_type* find_reset_type(std::string_view name);

// The names of reset_types(), in order.
const std::vector<std::string_view>& reset_type_names();

}  // namespace odata::redfish
