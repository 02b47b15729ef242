#include "platform/sim/web_certificate.h"

#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "base/bmc_root.h"
#include "base/file_cache.h"
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

// The first private key block of a PEM text, ending in a newline.
std::string key_block(std::string_view pem) {
    const std::size_t marker = pem.find("PRIVATE KEY-----");
    if (marker == std::string_view::npos) return {};
    const std::size_t begin = pem.rfind("-----BEGIN", marker);
    const std::size_t end_line = pem.find("-----END", marker);
    const std::size_t end =
        end_line == std::string_view::npos ? end_line : pem.find("-----", end_line + 5);
    if (begin == std::string_view::npos || end == std::string_view::npos) return {};
    return std::string(pem.substr(begin, end + 5 - begin)) + '\n';
}

const std::string& pending_key_file() {
    static platform::fixed_bmc_path path("/etc/ssl/pending-key.pem");
    return path.get();
}

struct served_pair {
    std::string chain;
    std::string key;
};

// The served pair, read once per version of the file; none when unreadable.
std::shared_ptr<const served_pair> stored_pair() {
    static platform::file_cache<served_pair> cache;
    const std::string path = platform::web_certificate_file();
    std::shared_ptr<const served_pair> pair;
    const int result = cache.get(
        path,
        [&path](served_pair& parsed) {
            std::string text;
            if (!platform::sim::read_file(path, text)) return PLT_ERR_IO;
            parsed = {certificate_blocks(text), key_block(text)};
            return PLT_OK;
        },
        pair);
    return result == PLT_OK ? pair : nullptr;
}

std::string stored_key(int which) {
    std::string text;
    if (which == WEB_KEY_PENDING)
        return platform::sim::read_file(pending_key_file(), text) ? key_block(text) : "";
    if (which != WEB_KEY_SERVED) return {};
    const std::shared_ptr<const served_pair> pair = stored_pair();
    return pair ? pair->key : "";
}

int copy_pem(const std::string& text, char* pem, int size) {
    if (!pem || size <= 0) return PLT_ERR_ARGUMENT;
    if (text.empty()) return PLT_ERR_IO;
    if (text.size() >= static_cast<std::size_t>(size)) return PLT_ERR_ARGUMENT;
    std::memcpy(pem, text.c_str(), text.size() + 1);
    return static_cast<int>(text.size());
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

const std::string& web_certificate_file() {
    static fixed_bmc_path path("/etc/ssl/server.pem");
    return path.get();
}

}  // namespace platform

extern "C" int PltWEB_GetCertificate(char* pem, int size) {
    if (!pem) return PLT_ERR_ARGUMENT;
    const std::shared_ptr<const served_pair> pair = stored_pair();
    return pair ? copy_pem(pair->chain, pem, size) : PLT_ERR_IO;
}

extern "C" int PltWEB_GetKey(int which, char* pem, int size) {
    return copy_pem(stored_key(which), pem, size);
}

extern "C" int PltWEB_SetPendingKey(const char* key_pem) {
    if (!key_pem || !*key_pem || std::strlen(key_pem) >= WEB_CERT_PEM_SIZE) return PLT_ERR_ARGUMENT;
    return platform::sim::replace_file(pending_key_file(), with_newline(key_pem), 0600)
               ? PLT_OK
               : PLT_ERR_IO;
}

extern "C" int PltWEB_ReplaceCertificate(const char* certificate_pem, const char* key_pem) {
    if (!certificate_pem || !key_pem || !*certificate_pem || !*key_pem) return PLT_ERR_ARGUMENT;
    const std::string pair = with_newline(key_pem) + with_newline(certificate_pem);
    if (pair.size() > WEB_CERT_PEM_SIZE) return PLT_ERR_ARGUMENT;
    const bool installs_pending = with_newline(key_pem) == stored_key(WEB_KEY_PENDING);
    if (!platform::sim::replace_file(platform::web_certificate_file(), pair, 0600))
        return PLT_ERR_IO;
    if (installs_pending) ::unlink(pending_key_file().c_str());
    reload_web_server();
    return PLT_OK;
}
