// What the actions on RAID controllers, their volumes and drives share:
// their answer (Success, through the storage resource), their parameters,
// and how a controller's refusal is answered.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "framework/webservice.h"
#include "frontend/message.h"
#include "resources/systems/storage.h"

namespace odata::redfish {

class raid_action : public webservice {
public:
    // action: the action's name in messages, "TwrVolume.Delete".
    raid_action(request_context& context, std::string action);
    void send_response() override;

protected:
    ~raid_action() = default;
    // "Status: 200 OK" with the Success message.
    void answer_success();
    // Refuses every parameter of the body; a body without any is fine.
    void refuse_parameters(const request_context& context) const;
    // The optional integer parameter "Controller", 0 without it; 400 for one
    // that is not a controller of family.
    int controller_parameter(const request_context& context, const raid_family& family) const;
    // The required boolean "LocationIndicatorActive".
    bool indicator_parameter(const request_context& context) const;
    // Answers a controller's refusal (any PLT_* but PLT_OK): 404 for a
    // target that is gone, else 400 with the message.
    void check(int result, const std::string& message_id, const message_args& args = {}) const;
    // A step without parameters on the volume the path names, which the
    // controller may refuse as not possible for that volume.
    void apply_to_volume(const request_context& context,
                         int (*step)(int family, int controller, int volume));

    std::string action_;

private:
    std::shared_ptr<storage> answer_;
};

}  // namespace odata::redfish
