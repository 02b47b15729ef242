// The web server's HTTPS certificate (the BMC's libweb.so): one PEM file
// with the private key and the certificate chain, which the web server reads
// when it starts and when it reloads.
#pragma once

#include "platform/plt_result.h"

extern "C" {

enum { WEB_CERT_PEM_SIZE = 32768 };

// Copies the certificate chain, without the key, as PEM and a NUL into pem
// (size bytes); returns its length, PLT_ERR_IO when there is none,
// PLT_ERR_ARGUMENT when it does not fit.
int PltWEB_GetCertificate(char* pem, int size);

// Replaces key and chain in one step (a reader sees the old pair or the new
// one, never a mix) and has the web server reload them. The caller has
// checked that they belong together. PLT_ERR_ARGUMENT for an empty text or
// a pair larger than WEB_CERT_PEM_SIZE. When key_pem is the pending key
// (below), it is installed and no longer pending.
int PltWEB_ReplaceCertificate(const char* certificate_pem, const char* key_pem);

// The private keys the BMC keeps for its web server: the one it serves with,
// and the one made for a certificate signing request, which waits, readable
// by the BMC alone, until its signed certificate arrives.
enum { WEB_KEY_SERVED, WEB_KEY_PENDING };

// Copies that key as PEM and a NUL into pem (size bytes); returns its
// length, PLT_ERR_IO when there is none, PLT_ERR_ARGUMENT when it does not
// fit.
int PltWEB_GetKey(int which, char* pem, int size);

// Keeps key_pem as the pending key, in place of an earlier one.
// PLT_ERR_ARGUMENT for an empty text or one of WEB_CERT_PEM_SIZE or more.
int PltWEB_SetPendingKey(const char* key_pem);

}  // extern "C"
