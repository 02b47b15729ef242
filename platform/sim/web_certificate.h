// The simulated web server's certificate: <root>/etc/ssl/server.pem, key
// first, as lighttpd's ssl.pemfile. A reload is lighttpd's graceful restart,
// SIGUSR1 to the process named in <root>/run/lighttpd.pid. The key of a
// signing request waits in <root>/etc/ssl/pending-key.pem (owner only).
#pragma once

#include <string>

namespace platform {

const std::string& web_certificate_file();

}  // namespace platform
