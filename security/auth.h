// Authenticators: HTTP Basic credentials on any request, and the user name
// and password of a login (the POST that opens a session).
#pragma once

#include <memory>
#include <string>

#include "frontend/request_context.h"
#include "security/credentials.h"

namespace odata::redfish {

class auth {
public:
    virtual ~auth() = default;

    // What a successful authentication adds to the response.
    virtual int respond_success(request_context& context);
    // The caller is not authenticated.
    virtual void refuse(request_context& context);
    // The caller's account is locked out.
    virtual void refuse_locked(request_context& context);
    virtual int open_session(request_context& context);

    std::string user_name;
    std::string password;
    credential_check matched;
    int privilege = 0;
    int success_result = 0;
    bool is_login = false;
};

class basic_auth : public auth {
public:
    explicit basic_auth(request_context& context);
    bool has_credentials = false;
};

class token_auth : public auth {
public:
    explicit token_auth(request_context& context);
    int respond_success(request_context& context) override;
    void refuse(request_context& context) override;
    int open_session(request_context& context) override;

    std::string token;
    std::string session_uri;
    int session_id = 0;
};

enum authenticator_mode { login_mode = 0, basic_mode = 1 };

// A basic_auth (mode 1) or token_auth (mode 0); null for another mode or
// without REQUEST_METHOD ("no method" is written then).
std::shared_ptr<auth> make_authenticator(request_context& context, int mode);

// Checks the authenticator's credentials; on success the caller's name and
// privilege are in context. Throws the locked-out answer.
bool authenticate(request_context& context, auth& authenticator);

}  // namespace odata::redfish
