#include "resources/chassis/chassiscollection.h"

#include "frontend/exception_http.h"
#include "platform/libweb.h"
#include "resources/chassis/chassis_uris.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/chassis/storage_enclosures.h"

namespace odata::redfish {
namespace {

// How long clients should wait for the storage inventory.
constexpr int storage_retry_seconds = 10;

[[noreturn]] void throw_storage_loading() {
    console_log("HDDLoading[%d]=%s\n", 1, chassis_collection_uri);
    result_record result = general_error();
    add_message(result, "Base.1.10.ServiceTemporarilyUnavailable",
                {std::to_string(storage_retry_seconds)});
    exception_http error = http_error(503, result);
    error.add_header("Retry-After", std::to_string(storage_retry_seconds));
    throw error;
}

}  // namespace

chassiscollection::chassiscollection(request_context& context)
    : redfish(context, "ChassisCollection", "", "Chassis Collection", chassis_collection_uri) {}

int chassiscollection::get(request_context&) {
    if (storage_inventory_loading()) throw_storage_loading();
    set_common_properties();
    std::vector<std::string> members{chassis_uri, sata_backplane_uri};
    for (std::string& enclosure : storage_enclosure_uris()) members.push_back(std::move(enclosure));
    set_members(members);
    return 0;
}

}  // namespace odata::redfish
