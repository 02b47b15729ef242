#include "resources/systems/raid_actioninfo.h"

#include <boost/algorithm/string/predicate.hpp>

#include "frontend/exception_http.h"
#include "resources/systems/raid_paths.h"
#include "resources/systems/volume.h"

namespace odata::redfish {
namespace {

const actioninfo_parameters indicator = {
    {"LocationIndicatorActive", true, "Boolean", {}, {}, {}, {}},
};

const actioninfo_parameters controller = {
    {"Controller", false, "Number", {}, 0.0, {}, {}},
};

const actioninfo_parameters& volume_creation() {
    static const actioninfo_parameters parameters = {
        {"RAIDType", true, "String", raid_type_names(), {}, {}, {}},
        {"Drives", true, "ObjectArray", {}, {}, {}, "#Drive.Drive"},
        {"Name", false, "String", {}, {}, {}, {}},
    };
    return parameters;
}

[[noreturn]] void not_found(const request_context& context) {
    throw_http_error(404, "Base.1.10.ResourceNotFound", {"ActionInfo", context.uri});
}

}  // namespace

haraidactioninfo::haraidactioninfo(request_context& context)
    : common_actioninfo(context, "RAID Storage Action Info", context.uri) {}

int haraidactioninfo::get(request_context& context) {
    for (const raid_family& family : raid_families())
        if (boost::starts_with(context.uri, raid_storage_uri(family) + "/") &&
            raid_controller_count(family) > 0)
            return common_actioninfo::get(context);
    not_found(context);
}

const actioninfo_parameters* haraidactioninfo::parameters() const {
    return boost::ends_with(uri_, "VDActionInfo") || boost::ends_with(uri_, "VolumeActionInfo")
               ? &volume_creation()
               : &controller;
}

volumeactioninfo::volumeactioninfo(request_context& context)
    : common_actioninfo(context, "Volume Indicate Action Info", context.uri) {}

int volumeactioninfo::get(request_context& context) {
    volume_of_request(context);
    return common_actioninfo::get(context);
}

const actioninfo_parameters* volumeactioninfo::parameters() const { return &indicator; }

drivesactioninfo::drivesactioninfo(request_context& context)
    : common_actioninfo(context, "Drive Indicate Action Info", context.uri) {}

int drivesactioninfo::get(request_context& context) {
    if (!raid_drive_of_path(context.uri)) not_found(context);
    return common_actioninfo::get(context);
}

const actioninfo_parameters* drivesactioninfo::parameters() const { return &indicator; }

}  // namespace odata::redfish
