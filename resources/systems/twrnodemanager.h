// The host's node manager, /redfish/v1/Systems/1/Oem/Tarnwright/NodeManager:
// its power policies, and the action that removes them all. Served only
// while the board has a node manager.
#pragma once

#include <memory>

#include "framework/redfish.h"

namespace odata::redfish {

class twrnodemanager : public redfish {
public:
    explicit twrnodemanager(request_context& context);
    int get(request_context& context) override;
};

class twrnodemanager_clearallpolicies : public webservice {
public:
    explicit twrnodemanager_clearallpolicies(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<twrnodemanager> node_manager_;
};

}  // namespace odata::redfish
