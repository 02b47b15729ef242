// The manager's clock source: NTP with up to three servers, or the clock
// as set by hand.
#pragma once

#include "framework/redfish.h"
#include "platform/libntp.h"

namespace odata::redfish {

// The servers that config names, in order; NetworkProtocol's NTP shows them too.
boost::json::array configured_ntp_servers(const St_NtpConfig& config);

class ntp : public redfish {
public:
    explicit ntp(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

}  // namespace odata::redfish
