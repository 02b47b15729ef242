#include "framework/device_uuid.h"

#include <cstdio>

#include "platform/device_guid.h"

namespace odata::redfish {

std::string device_uuid_text() {
    unsigned char guid[16];
    if (GetDeviceGUID(guid) != 0) return {};
    char text[37];
    std::snprintf(text, sizeof text,
                  "%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x", guid[0],
                  guid[1], guid[2], guid[3], guid[4], guid[5], guid[6], guid[7], guid[8], guid[9],
                  guid[10], guid[11], guid[12], guid[13], guid[14], guid[15]);
    return text;
}

}  // namespace odata::redfish
