// index.fcgi: the BMC's Redfish service, started by the web server.
#include <openssl/crypto.h>

#include "base/atomic_file.h"
#include "frontend/service_loop.h"
#include "service/pipeline.h"

int main() {
    // The service only digests and reads certificates, with OpenSSL's
    // defaults; reading the system-wide configuration would cost every new
    // process milliseconds before its first answer. It never shows
    // OpenSSL's error texts, whose tables every process would hold.
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG | OPENSSL_INIT_NO_LOAD_CRYPTO_STRINGS, nullptr);
    // Before anything reads them: sets of files a killed writer left half-renamed.
    platform::finish_interrupted_commits();
    return odata::redfish::run_service(odata::redfish::run_pipeline);
}
