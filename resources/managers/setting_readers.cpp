#include "resources/managers/setting_readers.h"

#include <algorithm>

#include "frontend/exception_http.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"

namespace odata::redfish {
namespace {

constexpr std::string_view common_read_only[] = {"@odata.id", "@odata.type", "@odata.context",
                                                 "Id",        "Name",        "Description"};

}  // namespace

std::optional<int> require_listed(const request_member& member, const std::string_view* names,
                                  std::size_t count, result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (!text) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(member.value),
                          member.path);
        return std::nullopt;
    }
    const std::string_view* found = std::find(names, names + count, std::string_view(*text));
    if (found != names + count) return static_cast<int>(found - names);
    add_value_message(result, "Base.1.10.PropertyValueNotInList", std::string(*text), member.path);
    return std::nullopt;
}

bool is_common_read_only(std::string_view name) { return listed_in(common_read_only, name); }

void refuse_not_writable(const request_member& member, result_record& result) {
    add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
}

void require_platform_ok(int platform_result, const char* resource) {
    if (platform_result == PLT_OK) return;
    console_log("[ERROR] %s: the BMC's settings call failed (%d)\n", resource, platform_result);
    throw_http_error(500, "Base.1.10.InternalError");
}

}  // namespace odata::redfish
