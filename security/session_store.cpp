#include "security/session_store.h"

#include <dirent.h>
#include <fcntl.h>
#include <openssl/crypto.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
#include "base/file_watch.h"
#include "frontend/request_parameters.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "security/roles.h"
#include "security/session_settings.h"

namespace odata::redfish {
namespace {

namespace fs = std::filesystem;

constexpr char token_alphabet[] = "abcdefghijklmnopqrstuvwxyz1234567890";
constexpr std::string_view record_prefix = "redfish_";
constexpr const char* sessions_uri = "/redfish/v1/SessionService/Sessions/";
constexpr const char* scratch_prefix = ".scratch-";
// Beginning of the atomic writer's temporary names; under the store lock
// every one of a record is a killed writer's.
constexpr const char* temporary_marker = ".tmp.";
constexpr int event_login = 146;
constexpr int event_logout = 147;

// Holds the fcntl lock on /tmp/redfish.lock for its lifetime.
class store_lock {
public:
    store_lock() : fd_(open_lock_file()) {
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
    // A store whose directory is missing yet is made, not left unlocked.
    static int open_lock_file() {
        const std::string path = platform::bmc_path("/tmp/redfish.lock");
        std::error_code ignored;
        std::filesystem::create_directories(platform::bmc_path("/tmp"), ignored);
        return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    }

    int fd_;
};

std::string record_path(std::string_view token) {
    static platform::fixed_bmc_path directory("/tmp/");
    std::string path;
    path.reserve(directory.get().size() + record_prefix.size() + token.size());
    return path.append(directory.get()).append(record_prefix).append(token);
}

const std::string& sessions_directory() {
    static platform::fixed_bmc_path directory("/tmp/www/redfish/v1/SessionService/Sessions");
    return directory.get();
}

std::string session_directory(int id) { return sessions_directory() + "/" + std::to_string(id); }

// Where a session's directory is built before it is renamed into place, and
// where it goes on removal before it is deleted. Only numeric names are
// sessions, so the collection never lists these.
std::string scratch_directory(int id) {
    return sessions_directory() + "/" + scratch_prefix + std::to_string(id);
}

// The characters of token_alphabet, checked without a search of it (and,
// as a lambda, inlined into the check of every request's token).
constexpr auto token_character = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
};

bool well_formed_token(std::string_view token) {
    return token.size() == SESSION_TOKEN_LEN &&
           std::all_of(token.begin(), token.end(), token_character);
}

std::string draw_token() {
    std::random_device device("/dev/urandom");
    std::uniform_int_distribution<int> pick(0, 35);
    std::string token;
    for (int i = 0; i < SESSION_TOKEN_LEN; ++i) token += token_alphabet[pick(device)];
    return token;
}

std::optional<St_RedfishSession> read_record(const std::string& path) {
    St_RedfishSession record{};
    int fd = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0) return std::nullopt;
    ssize_t got = read(fd, &record, sizeof record);
    close(fd);
    if (got != static_cast<ssize_t>(sizeof record)) return std::nullopt;
    record.token[SESSION_TOKEN_LEN] = '\0';
    record.last_use[sizeof record.last_use - 1] = '\0';
    record.client_ip[sizeof record.client_ip - 1] = '\0';
    return record;
}

bool write_record(const St_RedfishSession& record) {
    return platform::write_file_atomically(
        record_path(record.token),
        std::string_view(reinterpret_cast<const char*>(&record), sizeof record), 0600);
}

// Read on every request: from_chars, without strtoll's locale.
long long last_use(const St_RedfishSession& record) {
    long long value = 0;
    std::from_chars(record.last_use, record.last_use + std::strlen(record.last_use), value);
    return value;
}

void set_last_use(St_RedfishSession& record, long long now) {
    std::snprintf(record.last_use, sizeof record.last_use, "%lld", now);
}

bool expired(const St_RedfishSession& record, long long now, long timeout) {
    return now - last_use(record) > timeout;
}

bool valid_id(int id) { return id >= 1 && id <= max_sessions; }

// Calls visit with the name of every entry of a directory.
template <typename Visit>
void for_each_entry(const std::string& path, Visit visit) {
    DIR* directory = opendir(path.c_str());
    if (!directory) return;
    while (dirent* entry = readdir(directory)) visit(std::string(entry->d_name));
    closedir(directory);
}

// Every session record in /tmp, whatever its state.
std::vector<St_RedfishSession> all_records() {
    std::vector<St_RedfishSession> records;
    const std::string tmp = platform::bmc_path("/tmp");
    for_each_entry(tmp, [&](const std::string& name) {
        if (name.compare(0, record_prefix.size(), record_prefix) != 0 ||
            !well_formed_token(name.substr(record_prefix.size())))
            return;
        if (auto record = read_record(tmp + "/" + name)) records.push_back(*record);
    });
    return records;
}

void remove_directory(const fs::path& directory) {
    std::error_code ignored;
    fs::remove_all(directory, ignored);
}

// Removes the session's files; the caller holds the store lock. The rename
// ends the session in one step; what follows only tidies up.
void remove_locked(const St_RedfishSession& record) {
    const int id = record.session_id;
    console_log("delete %s\n", session_uri(id).c_str());
    if (valid_id(id)) {
        remove_directory(scratch_directory(id));
        std::error_code ignored;
        fs::rename(session_directory(id), scratch_directory(id), ignored);
        remove_directory(scratch_directory(id));
        unlink(platform::bmc_path("/tmp/rf_launch_ikvm_uid_" + std::to_string(id)).c_str());
    }
    unlink(record_path(record.token).c_str());
    LibSaveSysEvtLog(event_logout, 0, session_uri(id).c_str());
}

// A record of a session that is not in place: its process was killed
// before the rename, or its id is out of range.
bool half_made(const St_RedfishSession& record) {
    return !valid_id(record.session_id) || !fs::is_directory(session_directory(record.session_id));
}

// The record at path while its session is in place.
std::optional<St_RedfishSession> read_whole_record(const std::string& path) {
    std::optional<St_RedfishSession> record = read_record(path);
    if (record && half_made(*record)) return std::nullopt;
    return record;
}

// The whole record of the last token, kept while neither the record nor its
// session's directory changes: most requests bring the token of the one
// before.
struct remembered_record {
    std::string token;
    std::optional<St_RedfishSession> record;
    platform::watched_files watched;

    // Each is watched before it is looked at, so that a change made while
    // reading shows next time.
    void read(std::string_view new_token) {
        token = new_token;
        const std::string path = record_path(token);
        watched.watch({path});
        record = read_record(path);
        if (!record || !valid_id(record->session_id) ||
            !watched.watch_also({session_directory(record->session_id)}))
            watched.forget();
        if (record && half_made(*record)) record.reset();
    }

    // What this process just wrote under the store lock, which every
    // writer of records takes: nothing can change it before the watch.
    void written(const St_RedfishSession& whole) {
        token = whole.token;
        record = whole;
        if (!watched.watch({record_path(token)}) ||
            !watched.watch_also({session_directory(whole.session_id)}))
            watched.forget();
    }
};

remembered_record& last_record() {
    static remembered_record last;
    return last;
}

// In constant time, as every comparison with a token.
bool same_token(std::string_view one, std::string_view other) {
    return one.size() == other.size() && CRYPTO_memcmp(one.data(), other.data(), one.size()) == 0;
}

std::optional<St_RedfishSession> remembered_whole_record(std::string_view token) {
    remembered_record& last = last_record();
    if (!same_token(last.token, token) || !last.watched.unchanged()) last.read(token);
    return last.record;
}

enum class record_check { unknown, ended, usable };

// Whether a whole record lets its token in; follows the account's privilege.
record_check check_record(std::optional<St_RedfishSession>& record, std::string_view token,
                          long long now, long timeout) {
    if (!record || CRYPTO_memcmp(record->token, token.data(), SESSION_TOKEN_LEN) != 0)
        return record_check::unknown;
    if (expired(*record, now, timeout) || !follow_account(*record)) return record_check::ended;
    return usable_over_this_channel(*record) ? record_check::usable : record_check::unknown;
}

// Removes the temporary records and scratch directories that a killed
// process left; the caller holds the store lock.
void remove_litter() {
    const std::string tmp = platform::bmc_path("/tmp");
    const size_t token_end = record_prefix.size() + SESSION_TOKEN_LEN;
    for_each_entry(tmp, [&](const std::string& name) {
        if (name.size() > token_end && name.compare(0, record_prefix.size(), record_prefix) == 0 &&
            well_formed_token(name.substr(record_prefix.size(), SESSION_TOKEN_LEN)) &&
            name.compare(token_end, std::strlen(temporary_marker), temporary_marker) == 0)
            unlink((tmp + "/" + name).c_str());
    });
    for_each_entry(sessions_directory(), [](const std::string& name) {
        if (name.compare(0, std::strlen(scratch_prefix), scratch_prefix) == 0)
            remove_directory(sessions_directory() + "/" + name);
    });
}

// Frees the ids whose directory has no record.
void remove_unrecorded_directories(const std::vector<St_RedfishSession>& records) {
    for (int id : session_ids()) {
        bool recorded =
            std::any_of(records.begin(), records.end(),
                        [id](const St_RedfishSession& r) { return r.session_id == id; });
        if (!recorded) {
            console_log("delete %s\n", session_uri(id).c_str());
            remove_directory(session_directory(id));
        }
    }
}

void sweep_locked(long timeout) {
    const long long now = lx_time_get();
    remove_litter();
    std::vector<St_RedfishSession> kept;
    for (St_RedfishSession& record : all_records()) {
        if (half_made(record) || expired(record, now, timeout) || !follow_account(record))
            remove_locked(record);
        else
            kept.push_back(record);
    }
    remove_unrecorded_directories(kept);
}

bool make_scratch_directory(int id) {
    std::error_code error;
    const fs::path directory = scratch_directory(id);
    remove_directory(directory);
    fs::create_directories(directory, error);
    // Only the web server's and the service's user looks into it.
    if (!error) fs::permissions(directory, fs::perms::owner_all, error);
    if (error) return false;
    fs::create_symlink(platform::bmc_path("/tmp/web/bin/index.fcgi"), directory / "index.fcgi",
                       error);
    return !error;
}

std::string client_address() {
    constexpr std::size_t max_address_length = 512;
    return std::string(request_parameter(cgi_parameter::remote_addr)
                           .value_or("127.0.0.1")
                           .substr(0, max_address_length));
}

St_RedfishSession new_record(const session_owner& owner, int id) {
    St_RedfishSession record{};
    set_last_use(record, lx_time_get());
    std::memcpy(record.user_name, owner.user_name.data(),
                std::min(owner.user_name.size(), sizeof record.user_name));
    std::strncpy(record.client_ip, client_address().c_str(), sizeof record.client_ip - 1);
    record.session_id = id;
    record.privilege = owner.privilege;
    const std::string token = draw_token();
    std::memcpy(record.token, token.c_str(), SESSION_TOKEN_LEN + 1);
    record.source = owner.source;
    record.account_slot = static_cast<int8_t>(owner.account_slot);
    record.account_key = owner.account_key;
    return record;
}

// Record first, then the directory renamed into place: a process killed
// before the rename leaves a half-made session that the sweep removes.
bool create_locked(const St_RedfishSession& record) {
    const int id = record.session_id;
    std::error_code error;
    if (make_scratch_directory(id) && write_record(record)) {
        fs::rename(scratch_directory(id), session_directory(id), error);
        if (!error) return true;
    }
    unlink(record_path(record.token).c_str());
    remove_directory(scratch_directory(id));
    return false;
}

bool configures_manager(int level) {
    const role_definition* role = role_of_level(level);
    return role && (role->privileges & privilege_configure_manager) != 0;
}

// Whether a new session of this privilege level would take one of the
// places kept for those who may configure the manager.
bool share_used(int level) {
    if (configures_manager(level)) return false;
    const std::vector<St_RedfishSession> records = all_records();
    return std::count_if(records.begin(), records.end(), [](const St_RedfishSession& record) {
               return !configures_manager(record.privilege);
           }) >= max_sessions_without_configure_manager;
}

}  // namespace

std::string session_uri(int id) { return sessions_uri + std::to_string(id); }

std::optional<opened_session> open_session(const session_owner& owner, session_refusal* refusal) {
    session_refusal ignored;
    session_refusal& why = refusal ? *refusal : ignored;
    why = session_refusal::table_full;
    if (owner.user_name.size() > sizeof St_RedfishSession::user_name) return std::nullopt;
    const long timeout = sessionserviceconfig::session_timeout();
    St_RedfishSession record{};
    {
        store_lock hold;
        sweep_locked(timeout);
        int id = 1;
        while (id <= max_sessions && fs::exists(session_directory(id))) ++id;
        if (id > max_sessions) return std::nullopt;
        if (share_used(owner.privilege)) {
            why = session_refusal::share_used;
            return std::nullopt;
        }
        record = new_record(owner, id);
        if (!create_locked(record)) return std::nullopt;
    }
    LibSaveSysEvtLog(event_login, 0, sessions_uri);
    return opened_session{record.session_id, record.token, session_uri(record.session_id)};
}

std::optional<St_RedfishSession> validate_token(std::string_view token) {
    if (!well_formed_token(token)) return std::nullopt;
    const long timeout = sessionserviceconfig::session_timeout();
    const long long now = lx_time_get();
    // Records are replaced by a rename, so a reader sees a whole one without
    // the lock; only a change (the last use, once a second, or the end of
    // the session) takes it.
    std::optional<St_RedfishSession> record = remembered_whole_record(token);
    if (check_record(record, token, now, timeout) == record_check::usable &&
        last_use(*record) == now)
        return record;
    const std::string path = record_path(token);
    store_lock hold;
    record = read_whole_record(path);
    switch (check_record(record, token, now, timeout)) {
        case record_check::unknown:
            return std::nullopt;
        case record_check::ended:
            remove_locked(*record);
            return std::nullopt;
        case record_check::usable:
            break;
    }
    if (last_use(*record) != now) {
        set_last_use(*record, now);
        if (write_record(*record)) last_record().written(*record);
    }
    return record;
}

void remove_expired_sessions() {
    const long timeout = sessionserviceconfig::session_timeout();
    store_lock hold;
    sweep_locked(timeout);
}

void remove_account_sessions(int slot, int kept) {
    store_lock hold;
    for (const auto& record : all_records()) {
        if (record.account_slot == slot && record.session_id != kept) remove_locked(record);
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
    std::error_code error;
    fs::directory_iterator entries(sessions_directory(), error);
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
