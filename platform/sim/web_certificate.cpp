#include "platform/sim/web_certificate.h"

#include <signal.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

#include "base/bmc_root.h"
#include "platform/libweb.h"
#include "platform/libwebcert.h"
#include "platform/sim/sim_file.h"

namespace {

constexpr std::string_view certificate_begin = "-----BEGIN CERTIFICATE-----";
constexpr std::string_view certificate_end = "-----END CERTIFICATE-----";

// The certificate blocks of a PEM text, each ending in a newline.
std::string certificate_blocks(std::string_view pem) {
    std::string chain;
    for (std::size_t begin = pem.find(certificate_begin); begin != std::string_view::npos;
         begin = pem.find(certificate_begin, begin)) {
        const std::size_t end = pem.find(certificate_end, begin);
        if (end == std::string_view::npos) break;
        chain.append(pem.substr(begin, end + certificate_end.size() - begin));
        chain += '\n';
        begin = end;
    }
    return chain;
}

// A server that is not running has nothing to reload.
void reload_web_server() {
    std::string text;
    if (!platform::sim::read_file(platform::bmc_path("/run/lighttpd.pid"), text)) return;
    const long pid = std::strtol(text.c_str(), nullptr, 10);
    if (pid > 1 && ::kill(static_cast<pid_t>(pid), SIGUSR1) != 0)
        console_log("[ERROR] web server %ld not reloaded\n", pid);
}

std::string with_newline(const char* text) {
    std::string line(text);
    if (!line.empty() && line.back() != '\n') line += '\n';
    return line;
}

}  // namespace

namespace platform {

std::string web_certificate_file() { return bmc_path("/etc/ssl/server.pem"); }

}  // namespace platform

extern "C" int PltWEB_GetCertificate(char* pem, int size) {
    if (!pem || size <= 0) return PLT_ERR_ARGUMENT;
    std::string stored;
    if (!platform::sim::read_file(platform::web_certificate_file(), stored)) return PLT_ERR_IO;
    const std::string chain = certificate_blocks(stored);
    if (chain.empty()) return PLT_ERR_IO;
    if (chain.size() >= static_cast<std::size_t>(size)) return PLT_ERR_ARGUMENT;
    std::memcpy(pem, chain.c_str(), chain.size() + 1);
    return static_cast<int>(chain.size());
}

extern "C" int PltWEB_ReplaceCertificate(const char* certificate_pem, const char* key_pem) {
    if (!certificate_pem || !key_pem || !*certificate_pem || !*key_pem) return PLT_ERR_ARGUMENT;
    const std::string pair = with_newline(key_pem) + with_newline(certificate_pem);
    if (pair.size() > WEB_CERT_PEM_SIZE) return PLT_ERR_ARGUMENT;
    if (!platform::sim::replace_file(platform::web_certificate_file(), pair, 0600))
        return PLT_ERR_IO;
    reload_web_server();
    return PLT_OK;
}
