// The BMC's virtual media: the collection of drives and one drive with the
// image mounted on it.
#pragma once

#include <optional>

#include "framework/redfish.h"
#include "resources/managers/media_drives.h"

namespace odata::redfish {

class virtualmediacollection : public redfish {
public:
    explicit virtualmediacollection(request_context& context);
    int get(request_context& context) override;
};

class virtualmedia : public redfish {
public:
    explicit virtualmedia(request_context& context);
    int get(request_context& context) override;

    // The drive the URI names; throws 404 when there is no such drive.
    const media_drive& drive() const;

private:
    std::optional<media_drive> drive_;
};

}  // namespace odata::redfish
