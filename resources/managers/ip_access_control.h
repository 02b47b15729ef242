// The manager's IP access control: its switch, and its rules as a
// collection whose members are the platform's rule slots (rule n is slot
// n - 1).
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class ipaccesscontrol : public redfish {
public:
    explicit ipaccesscontrol(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

class filterrulecollection : public redfish {
public:
    explicit filterrulecollection(request_context& context);
    int get(request_context& context) override;
    int post(request_context& context) override;
};

class filterrule : public redfish {
public:
    explicit filterrule(request_context& context);
    // The rule with id (from 1) of the stored rules.
    filterrule(request_context& context, int id);
    int get(request_context& context) override;
    int patch(request_context& context) override;
    int del(request_context& context) override;

private:
    int id_;
};

}  // namespace odata::redfish
