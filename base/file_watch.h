// Tells whether files have changed since a moment without a system call per
// file: one inotify instance per process watches the directories that hold
// them (for a missing directory, the nearest one that exists).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace platform {

// Some files, watched by one reader from one moment on.
class watched_files {
public:
    // Watches paths from now on; false, with nothing watched, when one of
    // them cannot be watched.
    bool watch(const std::vector<std::string>& paths);
    // Adds paths to those watched; false, with nothing watched, when one of
    // them cannot be watched.
    bool watch_also(const std::vector<std::string>& paths);
    void forget() { since_.reset(); }

    bool watching() const { return since_.has_value(); }
    // True while watching and no event named one of the files since.
    bool unchanged() const;

private:
    // One per file: when its directory's events last named it. Read only
    // while nothing has cleared the table since, which counts as a change.
    std::vector<const std::uint64_t*> changes_;
    std::optional<std::uint64_t> since_;
};

class file_watch {
public:
    static file_watch& instance();

    file_watch(const file_watch&) = delete;
    file_watch& operator=(const file_watch&) = delete;

    // Files tracked at once: the settings and tables a process reads, the
    // session record of the last token, what its cached answers read.
    // Session records come and go by the thousand, so past the bound the
    // tracking starts afresh and every watcher takes its files as changed.
    static constexpr std::size_t max_keys = 512;
    std::size_t watched_keys() const { return last_change_.size(); }

private:
    friend class watched_files;

    file_watch();
    // Watches the files from now on; returns the moment to ask about later
    // and fills changes (one per file, for changed_since), or returns none
    // when one of them cannot be watched.
    std::optional<std::uint64_t> watch(const std::vector<std::string>& paths,
                                       std::vector<const std::uint64_t*>& changes);
    // Whether a file of changes was (or may have been) changed after since.
    bool changed_since(const std::vector<const std::uint64_t*>& changes, std::uint64_t since);

    ~file_watch();
    void start_again();
    // Reads the events once per request epoch: another process's change
    // reaches the next request, and this process's own writes start a new
    // epoch. Outside the service loop, on every call.
    void catch_up();
    void read_events();
    std::optional<std::string> watch_key(const std::string& path);

    int fd_;
    std::uint64_t sequence_ = 0;  // counts the changes seen
    std::uint64_t everything_changed_ = 0;
    std::uint64_t caught_up_epoch_ = 0;
    std::unordered_map<int, std::string> directories_;  // by watch descriptor
    // By key: 0 for none yet. Its values stay in place until it is cleared,
    // which makes every watcher's moment count as changed.
    std::unordered_map<std::string, std::uint64_t> last_change_;
};

}  // namespace platform
