// SessionService, its Sessions collection (GET, and POST: the login) and
// each Session (GET, and DELETE: the logout).
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class sessionservice : public redfish {
public:
    explicit sessionservice(request_context& context);
    int get(request_context& context) override;
    int patch(request_context& context) override;
};

class sessionscollection : public redfish {
public:
    explicit sessionscollection(request_context& context);
    int get(request_context& context) override;
    int post(request_context& context) override;
};

class sessions : public redfish {
public:
    explicit sessions(request_context& context);
    // The session of an id, for the login's answer.
    sessions(request_context& context, int id);
    int get(request_context& context) override;
    int del(request_context& context) override;

private:
    int id_;
};

}  // namespace odata::redfish
