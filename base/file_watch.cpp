#include "base/file_watch.h"

#include <pthread.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "base/request_epoch.h"

namespace platform {
namespace {

// Every way a file in a directory can change: written in place, its mode or
// times set, created, removed or renamed over; and the directory itself
// going away.
constexpr uint32_t watched_events = IN_MODIFY | IN_ATTRIB | IN_CLOSE_WRITE | IN_CREATE | IN_DELETE |
                                    IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;

bool is_directory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

file_watch& file_watch::instance() {
    static file_watch watch;
    return watch;
}

file_watch::file_watch() : fd_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    // A forked child (a task worker) would read the parent's events away
    // from it; it starts a watch of its own instead.
    ::pthread_atfork(nullptr, nullptr, [] { instance().start_again(); });
}

void file_watch::start_again() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    directories_.clear();
    everything_changed_ = ++sequence_;
}

file_watch::~file_watch() {
    if (fd_ >= 0) ::close(fd_);
}

// "<directory>/<name>" for the nearest existing directory on the way to
// path, which is what that directory's events name.
std::optional<std::string> file_watch::watch_key(const std::string& path) {
    std::string key = path;
    for (size_t slash = key.rfind('/'); slash != std::string::npos && slash > 0;
         slash = key.rfind('/')) {
        const std::string directory = key.substr(0, slash);
        if (is_directory(directory)) {
            const int descriptor = ::inotify_add_watch(fd_, directory.c_str(), watched_events);
            if (descriptor < 0) return std::nullopt;
            directories_[descriptor] = directory;
            return key;
        }
        key = directory;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> file_watch::watch(const std::vector<std::string>& paths,
                                               std::vector<const std::uint64_t*>& changes) {
    if (fd_ < 0) return std::nullopt;
    catch_up();
    changes.clear();
    if (last_change_.size() + paths.size() > max_keys) {
        last_change_.clear();
        everything_changed_ = ++sequence_;
    }
    for (const std::string& path : paths) {
        std::optional<std::string> key = watch_key(path);
        if (!key) return std::nullopt;
        changes.push_back(&last_change_.emplace(std::move(*key), 0).first->second);
    }
    return sequence_;
}

bool file_watch::changed_since(const std::vector<const std::uint64_t*>& changes,
                               std::uint64_t since) {
    catch_up();
    // Checked first: past a clear the values of changes are gone.
    if (everything_changed_ > since) return true;
    return std::any_of(changes.begin(), changes.end(),
                       [since](const std::uint64_t* change) { return *change > since; });
}

void file_watch::catch_up() {
    const std::uint64_t epoch = request_epoch();
    if (epoch != 0 && epoch == caught_up_epoch_) return;
    read_events();
    caught_up_epoch_ = epoch;
}

void file_watch::read_events() {
    alignas(inotify_event) char buffer[4096];
    // Bounded: every round drains up to a buffer's worth of what is queued.
    for (int round = 0; round < 64; ++round) {
        const ssize_t got = ::read(fd_, buffer, sizeof buffer);
        if (got <= 0) {
            if (got < 0 && errno == EAGAIN) return;
            break;
        }
        for (ssize_t at = 0; at < got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            ++sequence_;
            auto directory = directories_.find(event->wd);
            if ((event->mask & (IN_Q_OVERFLOW | IN_IGNORED | IN_DELETE_SELF | IN_MOVE_SELF)) ||
                directory == directories_.end()) {
                everything_changed_ = sequence_;
                if (event->mask & IN_IGNORED) directories_.erase(event->wd);
                continue;
            }
            if (event->len == 0) continue;
            auto key = last_change_.find(directory->second + "/" + event->name);
            if (key != last_change_.end()) key->second = sequence_;
        }
    }
    // Too much to read, or the descriptor failed: assume anything changed.
    everything_changed_ = ++sequence_;
}

bool watched_files::watch(const std::vector<std::string>& paths) {
    since_ = file_watch::instance().watch(paths, changes_);
    return watching();
}

bool watched_files::watch_also(const std::vector<std::string>& paths) {
    std::vector<const std::uint64_t*> more;
    if (watching() && file_watch::instance().watch(paths, more)) {
        changes_.insert(changes_.end(), more.begin(), more.end());
        return true;
    }
    forget();
    return false;
}

bool watched_files::unchanged() const {
    return watching() && !file_watch::instance().changed_since(changes_, *since_);
}

}  // namespace platform
