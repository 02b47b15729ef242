// Crashdump.SendRawPeci: raw PECI commands to the host's processors,
// {"PECICommands": [[address, write length, read length, bytes...], ...]},
// answered with {"PECIResponse": [[read bytes...], ...]} in the same order.
#pragma once

#include "framework/webservice.h"

namespace odata::redfish {

class peci_sendraw : public webservice {
public:
    using webservice::webservice;
    int post(request_context& context) override;
};

}  // namespace odata::redfish
