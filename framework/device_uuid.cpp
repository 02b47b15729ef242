#include "framework/device_uuid.h"

#include <cstddef>

#include "platform/device_guid.h"

namespace odata::redfish {

std::string device_uuid_text() {
    unsigned char guid[16];
    if (GetDeviceGUID(guid) != 0) return {};
    static const char hex[] = "0123456789abcdef";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < sizeof guid; ++i) {
        // 8-4-4-4-12 digits
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += hex[guid[i] >> 4];
        text += hex[guid[i] & 0x0f];
    }
    return text;
}

}  // namespace odata::redfish
