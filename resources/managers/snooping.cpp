// Snooping: the POST codes the host's BIOS wrote, as the BMC snooped them.
#include <cstdio>

#include "platform/libsnoop.h"
#include "resources/managers/oem_settings.h"
#include "resources/managers/setting_readers.h"

namespace odata::redfish {
namespace {

std::string code_text(uint8_t code) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", code);
    return text;
}

}  // namespace

snooping::snooping(request_context& context)
    : oem_setting(context, "TwrSnooping", "Snooping", "Snooping") {}

int snooping::get(request_context&) {
    St_PostCodes codes{};
    require_platform_ok(PltSNOOP_GetPostCodes(&codes), "Snooping");
    const int count = std::min<int>(codes.count, POST_CODE_HISTORY);
    boost::json::array list;
    for (int index = 0; index < count; ++index) list.emplace_back(code_text(codes.codes[index]));
    set_heading("The last BIOS POST codes, oldest first");
    set("CurrentPostCode", count ? boost::json::value(code_text(codes.codes[count - 1])) : nullptr);
    set("PostCodes", std::move(list));
    return 0;
}

}  // namespace odata::redfish
