// One subscription: an EventDestination over an alert-destination entry.
#pragma once

#include "framework/redfish.h"
#include "platform/libalert.h"

namespace odata::redfish {

class eventdestination : public redfish {
public:
    explicit eventdestination(request_context& context);
    eventdestination(request_context& context, int id);
    int get(request_context& context) override;
    int patch(request_context& context) override;
    int del(request_context& context) override;

private:
    // The entry of the id; 404 for an id outside 1 to 16 or a free entry.
    St_AlertDest existing_entry() const;

    int id_;
    int index_;
};

}  // namespace odata::redfish
