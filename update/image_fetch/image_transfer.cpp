#include "update/image_fetch/image_transfer.h"

#include <curl/curl.h>

#include <chrono>
#include <memory>

#include "platform/outbound_destinations.h"
#include "update/image_file.h"

namespace odata::redfish {
namespace {

using clock = std::chrono::steady_clock;

struct transfer {
    image_file& file;
    bool too_large = false;
    const std::function<bool()>& stop;
    clock::time_point started = clock::now();
    bool stalled = false;
};

size_t write_block(char* data, size_t size, size_t count, void* user) {
    auto& state = *static_cast<transfer*>(user);
    const size_t bytes = size * count;
    if (state.file.size() + static_cast<long long>(bytes) > max_image_bytes) {
        state.too_large = true;
        return 0;
    }
    return state.file.write(data, bytes) ? bytes : 0;
}

// The watchdog: libcurl calls it at least once a second. Only a server
// that has sent nothing yet is given up on; once data flows, a slow link
// may pause, and the deadline bounds the whole download.
int watch_progress(void* user, curl_off_t, curl_off_t received, curl_off_t, curl_off_t) {
    auto& state = *static_cast<transfer*>(user);
    if (received == 0 &&
        clock::now() - state.started >= std::chrono::seconds(stall_limit_seconds)) {
        state.stalled = true;
        return 1;
    }
    return state.stop() ? 1 : 0;
}

// Every address a name resolves to is judged as the connection is made.
curl_socket_t open_allowed_socket(void*, curlsocktype, curl_sockaddr* address) {
    return platform::allowed_socket(address->family, address->socktype, address->protocol,
                                    &address->addr);
}

void set_options(CURL* curl, const image_source& source, transfer& state) {
    curl_easy_setopt(curl, CURLOPT_URL, source.url.c_str());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https,ftp");
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(curl, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, stall_limit_seconds);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, source.deadline_seconds);
    curl_easy_setopt(curl, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(max_image_bytes));
    if (!source.username.empty()) {
        curl_easy_setopt(curl, CURLOPT_USERNAME, source.username.c_str());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, source.password.c_str());
    }
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, write_block);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &state);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, watch_progress);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &state);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_OPENSOCKETFUNCTION, open_allowed_socket);
}

std::string failure_reason(CURLcode code, const transfer& state, const char* detail) {
    if (state.stalled) return "the server sent nothing for 2 seconds";
    if (state.too_large || code == CURLE_FILESIZE_EXCEEDED) return "the image is too large";
    if (code == CURLE_ABORTED_BY_CALLBACK) return "the download was cancelled";
    return std::string("the download failed: ") + (detail[0] ? detail : curl_easy_strerror(code));
}

}  // namespace

bool transfer_image(const image_source& source, const std::string& path,
                    const std::function<bool()>& stop, std::string& reason) {
    image_file file(path);
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(curl_easy_init(), curl_easy_cleanup);
    if (!file.valid() || !curl) {
        reason = "the image file cannot be created";
        return false;
    }
    transfer state{file, false, stop};
    char detail[CURL_ERROR_SIZE] = {};
    set_options(curl.get(), source, state);
    curl_easy_setopt(curl.get(), CURLOPT_ERRORBUFFER, detail);
    const CURLcode code = curl_easy_perform(curl.get());
    if (code == CURLE_OK && file.size() == 0) {
        reason = "the image is empty";
    } else if (code != CURLE_OK) {
        reason = failure_reason(code, state, detail);
    } else if (!file.commit()) {
        reason = "the image file cannot be written";
    } else {
        return true;
    }
    return false;
}

}  // namespace odata::redfish
