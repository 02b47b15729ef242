// External account providers (the BMC's libldap_client.so and
// libradius_client.so). Each process call returns 0 when the provider
// accepts the name and password, and gives the privilege level it grants.
#pragma once

extern "C" {

int UtilGetLdapEnable(void);
int UtilGetNewADEnable(void);
int UtilGetRadiusEnable(void);
int AuthLdapProcess2(const char* name, const char* password, int* privilege);
int AuthADProcess2(const char* name, const char* password, int* privilege);
int AuthRadiusProcess(const char* name, const char* password, int* privilege);

}  // extern "C"
