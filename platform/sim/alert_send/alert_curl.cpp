// Redfish events over HTTP and e-mail over SMTP, with libcurl.
#include <curl/curl.h>

#include <unistd.h>

#include <cctype>
#include <cstring>
#include <memory>

#include "base/bmc_root.h"
#include "platform/outbound_destinations.h"
#include "platform/sim/alert_send/alert_transports.h"

namespace platform::sim {
namespace {

struct curl_handle {
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy{curl_easy_init(), curl_easy_cleanup};
    curl_slist* list = nullptr;
    char error[CURL_ERROR_SIZE] = {};
    ~curl_handle() { curl_slist_free_all(list); }
};

// Every address a name resolves to is judged as the connection is made.
curl_socket_t open_allowed_socket(void*, curlsocktype, curl_sockaddr* address) {
    return platform::allowed_socket(address->family, address->socktype, address->protocol,
                                    &address->addr);
}

// Bounded, quiet, never redirected or handed to another protocol, and only
// to destinations that are allowed.
void set_common_options(curl_handle& handle, const std::string& url, const char* protocols) {
    CURL* easy = handle.easy.get();
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, protocols);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, alert_attempt_seconds / 2);
    curl_easy_setopt(easy, CURLOPT_TIMEOUT, alert_attempt_seconds);
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, handle.error);
    curl_easy_setopt(easy, CURLOPT_OPENSOCKETFUNCTION, open_allowed_socket);
    const std::string authorities = alert_ca_file();
    if (::access(authorities.c_str(), R_OK) == 0)
        curl_easy_setopt(easy, CURLOPT_CAINFO, authorities.c_str());
}

// "AUTH=PLAIN", "AUTH=LOGIN", "AUTH=CRAM-MD5" for the Redfish names.
std::string login_options(const std::string& authentication) {
    std::string mechanism = authentication;
    for (char& c : mechanism)
        c = c == '_' ? '-' : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return "AUTH=" + mechanism;
}

size_t discard(char*, size_t size, size_t count, void*) { return size * count; }

bool perform(curl_handle& handle, std::string& error) {
    const CURLcode result = curl_easy_perform(handle.easy.get());
    if (result == CURLE_OK) return true;
    error = handle.error[0] ? handle.error : curl_easy_strerror(result);
    return false;
}

struct upload {
    const std::string& text;
    size_t sent = 0;
};

size_t read_upload(char* buffer, size_t size, size_t count, void* source) {
    upload& data = *static_cast<upload*>(source);
    const size_t length = std::min(size * count, data.text.size() - data.sent);
    std::memcpy(buffer, data.text.data() + data.sent, length);
    data.sent += length;
    return length;
}

}  // namespace

const std::string& alert_ca_file() {
    static platform::fixed_bmc_path path("/etc/ssl/alert_ca.pem");
    return path.get();
}

bool post_redfish_event(const std::string& url, const std::string& body, std::string& error) {
    curl_handle handle;
    if (!handle.easy) return error = "no curl handle", false;
    set_common_options(handle, url, "http,https");
    CURL* easy = handle.easy.get();
    handle.list = curl_slist_append(handle.list, "Content-Type: application/json");
    handle.list = curl_slist_append(handle.list, "OData-Version: 4.0");
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, handle.list);
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body.c_str());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, discard);
    if (!perform(handle, error)) return false;
    long status = 0;
    curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    if (status >= 200 && status < 300) return true;
    error = "HTTP status " + std::to_string(status);
    return false;
}

bool send_mail(const smtp_settings& settings, const std::string& recipient,
               const std::string& message, std::string& error) {
    curl_handle handle;
    if (!handle.easy) return error = "no curl handle", false;
    const bool implicit_tls = settings.connection_protocol == "TLS_SSL";
    const std::string url = std::string(implicit_tls ? "smtps://" : "smtp://") +
                            settings.server_address + ":" + std::to_string(settings.port);
    set_common_options(handle, url, "smtp,smtps");
    CURL* easy = handle.easy.get();
    // Credentials go only inside TLS: a server that offers no STARTTLS gets
    // no mail rather than the password in clear.
    const bool logs_in = settings.authentication != "None";
    if (settings.connection_protocol == "StartTLS" || (logs_in && !implicit_tls))
        curl_easy_setopt(easy, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    else if (settings.connection_protocol == "AutoDetect")
        curl_easy_setopt(easy, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_TRY));
    if (logs_in) {
        curl_easy_setopt(easy, CURLOPT_USERNAME, settings.username.c_str());
        curl_easy_setopt(easy, CURLOPT_PASSWORD, settings.password.c_str());
    }
    // AutoDetect leaves the mechanism to what the server offers.
    const std::string mechanism = login_options(settings.authentication);
    if (logs_in && settings.authentication != "AutoDetect")
        curl_easy_setopt(easy, CURLOPT_LOGIN_OPTIONS, mechanism.c_str());
    const std::string from = "<" + settings.from_address + ">";
    curl_easy_setopt(easy, CURLOPT_MAIL_FROM, from.c_str());
    handle.list = curl_slist_append(handle.list, ("<" + recipient + ">").c_str());
    curl_easy_setopt(easy, CURLOPT_MAIL_RCPT, handle.list);
    upload data{message};
    curl_easy_setopt(easy, CURLOPT_READFUNCTION, read_upload);
    curl_easy_setopt(easy, CURLOPT_READDATA, &data);
    curl_easy_setopt(easy, CURLOPT_UPLOAD, 1L);
    return perform(handle, error);
}

}  // namespace platform::sim
