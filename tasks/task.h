// One task of the store; DELETE cancels it.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class task : public redfish {
public:
    explicit task(request_context& context);
    int get(request_context& context) override;
    int del(request_context& context) override;
};

}  // namespace odata::redfish
