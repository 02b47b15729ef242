#include "security/session_store.h"

#include <dirent.h>
#include <fcntl.h>
#include <openssl/crypto.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <boost/filesystem.hpp>
#include <boost/random/random_device.hpp>
#include <boost/random/uniform_int_distribution.hpp>
#include <cstring>

#include "platform/bmc_root.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "security/session_settings.h"

namespace odata::redfish {
namespace {

namespace fs = boost::filesystem;

constexpr char token_alphabet[] = "abcdefghijklmnopqrstuvwxyz1234567890";
constexpr char record_prefix[] = "redfish_";
constexpr const char* sessions_uri = "/redfish/v1/SessionService/Sessions/";
constexpr int event_login = 146;
constexpr int event_logout = 147;

// Holds the fcntl lock on /tmp/redfish.lock for its lifetime.
class store_lock {
public:
    store_lock()
        : fd_(open(platform::bmc_path("/tmp/redfish.lock").c_str(), O_RDWR | O_CREAT, 0600)) {
        struct flock whole {};
        whole.l_type = F_WRLCK;
        whole.l_whence = SEEK_SET;
        while (fd_ >= 0 && fcntl(fd_, F_SETLKW, &whole) != 0 && errno == EINTR) {
        }
    }
    ~store_lock() {
        if (fd_ >= 0) close(fd_);
    }
    store_lock(const store_lock&) = delete;
    store_lock& operator=(const store_lock&) = delete;

private:
    int fd_;
};

std::string record_path(const std::string& token) {
    return platform::bmc_path("/tmp/" + std::string(record_prefix) + token);
}

fs::path session_directory(int id) {
    return platform::bmc_path("/tmp/www/redfish/v1/SessionService/Sessions/" + std::to_string(id));
}

bool well_formed_token(const std::string& token) {
    return token.size() == SESSION_TOKEN_LEN &&
           token.find_first_not_of(token_alphabet) == std::string::npos;
}

std::string draw_token() {
    boost::random::random_device device;
    boost::random::uniform_int_distribution<int> pick(0, 35);
    std::string token;
    for (int i = 0; i < SESSION_TOKEN_LEN; ++i) token += token_alphabet[pick(device)];
    return token;
}

std::optional<St_RedfishSession> read_record(const std::string& path) {
    St_RedfishSession record{};
    int fd = open(path.c_str(), O_RDONLY);
    if (fd < 0) return std::nullopt;
    ssize_t got = read(fd, &record, sizeof record);
    close(fd);
    if (got != static_cast<ssize_t>(sizeof record)) return std::nullopt;
    record.token[SESSION_TOKEN_LEN] = '\0';
    record.user_name[sizeof record.user_name - 1] = '\0';
    record.last_use[sizeof record.last_use - 1] = '\0';
    return record;
}

// Replaces the record through a temporary file, readable by the owner only.
bool write_record(const St_RedfishSession& record) {
    const std::string path = record_path(record.token);
    const std::string temporary = path + ".tmp";
    int fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (fd < 0) return false;
    bool written = write(fd, &record, sizeof record) == static_cast<ssize_t>(sizeof record);
    written = close(fd) == 0 && written;
    if (written && rename(temporary.c_str(), path.c_str()) == 0) return true;
    unlink(temporary.c_str());
    return false;
}

void set_last_use(St_RedfishSession& record, long now) {
    std::snprintf(record.last_use, sizeof record.last_use, "%ld", now);
}

bool expired(const St_RedfishSession& record, long now, long timeout) {
    return now - std::strtol(record.last_use, nullptr, 10) > timeout;
}

// Every session record in /tmp, whatever its state.
std::vector<St_RedfishSession> all_records() {
    std::vector<St_RedfishSession> records;
    const std::string tmp = platform::bmc_path("/tmp");
    DIR* directory = opendir(tmp.c_str());
    if (!directory) return records;
    while (dirent* entry = readdir(directory)) {
        if (std::strncmp(entry->d_name, record_prefix, 8) != 0) continue;
        if (!well_formed_token(entry->d_name + 8)) continue;
        if (auto record = read_record(tmp + "/" + entry->d_name)) records.push_back(*record);
    }
    closedir(directory);
    return records;
}

// Removes the session's files; the caller holds the store lock.
void remove_locked(const St_RedfishSession& record) {
    const std::string record_file = record_path(record.token);
    const std::string marker =
        platform::bmc_path("/tmp/rf_launch_ikvm_uid_" + std::to_string(record.session_id));
    const fs::path directory = session_directory(record.session_id);
    boost::system::error_code ignored;
    console_log("delete %s\n", session_uri(record.session_id).c_str());
    unlink(record_file.c_str());
    unlink(marker.c_str());
    fs::remove_all(directory, ignored);
    LibSaveSysEvtLog(event_logout, 0, session_uri(record.session_id).c_str());
}

bool make_served_directory(int id) {
    boost::system::error_code error;
    const fs::path directory = session_directory(id);
    fs::create_directories(directory, error);
    if (error) return false;
    fs::create_symlink(platform::bmc_path("/tmp/web/bin/index.fcgi"), directory / "index.fcgi",
                       error);
    return !error;
}

std::string client_address() {
    char address[513] = {};
    if (get_cgi_env("REMOTE_ADDR", address, 512) < 0) return "127.0.0.1";
    return address;
}

}  // namespace

std::string session_uri(int id) { return sessions_uri + std::to_string(id); }

std::optional<opened_session> open_session(const std::string& user_name, int privilege,
                                           uint8_t source) {
    St_RedfishSession record{};
    {
        store_lock hold;
        int id = 1;
        while (id <= max_sessions && fs::exists(session_directory(id))) ++id;
        if (id > max_sessions || !make_served_directory(id)) return std::nullopt;
        const std::string token = draw_token();
        set_last_use(record, lx_time_get());
        std::strncpy(record.user_name, user_name.c_str(), sizeof record.user_name - 1);
        std::strncpy(record.client_ip, client_address().c_str(), sizeof record.client_ip - 1);
        record.session_id = id;
        record.privilege = privilege;
        std::memcpy(record.token, token.c_str(), SESSION_TOKEN_LEN + 1);
        record.source = source;
        if (!write_record(record)) {
            boost::system::error_code ignored;
            fs::remove_all(session_directory(id), ignored);
            return std::nullopt;
        }
    }
    LibSaveSysEvtLog(event_login, 0, sessions_uri);
    return opened_session{record.session_id, record.token, session_uri(record.session_id)};
}

std::optional<St_RedfishSession> validate_token(const std::string& token) {
    if (!well_formed_token(token)) return std::nullopt;
    const long timeout = sessionserviceconfig::session_timeout();
    store_lock hold;
    std::optional<St_RedfishSession> record = read_record(record_path(token));
    if (!record || CRYPTO_memcmp(record->token, token.data(), SESSION_TOKEN_LEN) != 0)
        return std::nullopt;
    const long now = lx_time_get();
    if (expired(*record, now, timeout)) {
        remove_locked(*record);
        return std::nullopt;
    }
    set_last_use(*record, now);
    write_record(*record);
    return record;
}

void remove_expired_sessions() {
    const long timeout = sessionserviceconfig::session_timeout();
    store_lock hold;
    const long now = lx_time_get();
    for (const auto& record : all_records()) {
        if (expired(record, now, timeout)) remove_locked(record);
    }
}

bool remove_session(int id) {
    store_lock hold;
    for (const auto& record : all_records()) {
        if (record.session_id == id) {
            remove_locked(record);
            return true;
        }
    }
    return false;
}

std::optional<St_RedfishSession> find_session(int id) {
    for (const auto& record : all_records()) {
        if (record.session_id == id) return record;
    }
    return std::nullopt;
}

std::vector<int> session_ids() {
    std::vector<int> ids;
    boost::system::error_code error;
    fs::directory_iterator entries(session_directory(0).parent_path(), error);
    for (fs::directory_iterator end; !error && entries != end; entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        if (!name.empty() && name.size() <= 4 &&
            name.find_first_not_of("0123456789") == std::string::npos)
            ids.push_back(std::stoi(name));
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

}  // namespace odata::redfish
