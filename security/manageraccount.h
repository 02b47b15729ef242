// One local account: GET, PATCH and DELETE.
#pragma once

#include "framework/redfish.h"
#include "security/account_slots.h"

namespace odata::redfish {

class manageraccount : public redfish {
public:
    explicit manageraccount(request_context& context);
    // The account of an id, for the answer of its creation.
    manageraccount(request_context& context, int account_id);
    int get(request_context& context) override;
    int patch(request_context& context) override;
    int del(request_context& context) override;

private:
    // The account of this id; answers 404 when its slot holds no user.
    account_record existing_account() const;

    int account_id_;
};

}  // namespace odata::redfish
