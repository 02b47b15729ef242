// The "Boot" object of the computer system as GET shows it.
#pragma once

#include <boost/json.hpp>

namespace odata::redfish {

boost::json::object boot_object();

}  // namespace odata::redfish
