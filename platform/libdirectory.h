// External account providers (the BMC's libldap_client.so and
// libradius_client.so). Each process call returns 0 when the provider
// accepts the name and password, and gives the privilege level it grants.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

int UtilGetLdapEnable(void);
int UtilGetNewADEnable(void);
int UtilGetRadiusEnable(void);
int AuthLdapProcess2(const char* name, const char* password, int* privilege);
int AuthADProcess2(const char* name, const char* password, int* privilege);
int AuthRadiusProcess(const char* name, const char* password, int* privilege);

enum { RADIUS_SERVER_SIZE = 64, RADIUS_SECRET_SIZE = 32, RADIUS_TIMEOUT_MAX = 60 };

// The RADIUS client's settings. The shared secret is never read back: only
// whether one is set.
struct St_RadiusConfig {
    uint8_t enabled;
    char server[RADIUS_SERVER_SIZE];  // host name or address; empty: none
    uint16_t port;                    // 1..65535
    uint8_t timeout_seconds;          // 1..RADIUS_TIMEOUT_MAX
    uint8_t secret_set;
};

int PltRADIUS_GetConfig(St_RadiusConfig* config);
// Stores the settings and, unless secret is null, a new shared secret
// (1..RADIUS_SECRET_SIZE-1 printable characters). PLT_ERR_ARGUMENT for a
// value out of range, and for enabled without a server or a secret.
// RADIUS logins are accepted only while it is enabled.
int PltRADIUS_SetConfig(const St_RadiusConfig* config, const char* secret);

}  // extern "C"
