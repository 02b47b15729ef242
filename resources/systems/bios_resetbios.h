// The Bios.ResetBios action: the BIOS takes its attributes' defaults at its
// next start. Answers through the BIOS resource.
#pragma once

#include <memory>

#include "framework/webservice.h"
#include "resources/systems/bios.h"

namespace odata::redfish {

class bios_resetbios : public webservice {
public:
    explicit bios_resetbios(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<bios> bios_;
};

}  // namespace odata::redfish
