// Redfish events over HTTP and e-mail over SMTP, with libcurl.
#include <curl/curl.h>

#include <cstring>
#include <memory>

#include "platform/sim/alert_send/alert_transports.h"

namespace platform::sim {
namespace {

struct curl_handle {
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy{curl_easy_init(), curl_easy_cleanup};
    curl_slist* list = nullptr;
    char error[CURL_ERROR_SIZE] = {};
    ~curl_handle() { curl_slist_free_all(list); }
};

// Bounded, quiet, and never redirected or handed to another protocol.
void set_common_options(curl_handle& handle, const std::string& url, const char* protocols) {
    CURL* easy = handle.easy.get();
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, protocols);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, alert_attempt_seconds / 2);
    curl_easy_setopt(easy, CURLOPT_TIMEOUT, alert_attempt_seconds);
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, handle.error);
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
    if (settings.connection_protocol == "StartTLS")
        curl_easy_setopt(easy, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    else if (settings.connection_protocol == "AutoDetect")
        curl_easy_setopt(easy, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_TRY));
    if (settings.authentication != "None") {
        curl_easy_setopt(easy, CURLOPT_USERNAME, settings.username.c_str());
        curl_easy_setopt(easy, CURLOPT_PASSWORD, settings.password.c_str());
    }
    // AutoDetect leaves the mechanism to what the server offers.
    if (settings.authentication != "None" && settings.authentication != "AutoDetect") {
        const std::string mechanism =
            "AUTH=" + (settings.authentication == "CRAM_MD5" ? std::string("CRAM-MD5")
                                                             : settings.authentication);
        curl_easy_setopt(easy, CURLOPT_LOGIN_OPTIONS, mechanism.c_str());
    }
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
