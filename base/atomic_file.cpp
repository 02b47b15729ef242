#include "base/atomic_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <system_error>

#include "base/bmc_root.h"
#include "base/request_epoch.h"
#include "platform/libweb.h"

namespace platform {
namespace {

constexpr std::string_view temporary_marker = ".tmp.";

std::string directory_of(const std::string& path) {
    std::string parent = std::filesystem::path(path).parent_path().string();
    return parent.empty() ? "." : parent;
}

std::string name_of(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

// "<pid>.<n>", unique within the process.
std::string writer_unique_name() {
    static std::atomic<unsigned> counter{0};
    return std::to_string(::getpid()) + "." + std::to_string(counter++);
}

// "<path>.tmp.<pid>.<n>": the writer's pid tells a sweep whether it lives.
std::string temporary_name(const std::string& path) {
    return path + std::string(temporary_marker) + writer_unique_name();
}

// The pid that a name begins with ("<pid>.<...>"), or 0.
pid_t writer_of(const char* name) {
    if (!std::isdigit(static_cast<unsigned char>(name[0]))) return 0;
    char* end = nullptr;
    long writer = std::strtol(name, &end, 10);
    return *end == '.' && writer <= std::numeric_limits<pid_t>::max() ? static_cast<pid_t>(writer)
                                                                      : 0;
}

bool has_died(pid_t writer) { return writer > 0 && ::kill(writer, 0) != 0 && errno == ESRCH; }

// The names in directory made of prefix and "<pid>.<...>" of a writer that
// has died. Listed whole before anyone acts on them.
std::vector<std::string> left_by_dead_writers(const std::string& directory, std::string_view prefix,
                                              bool own_pid_is_dead = false) {
    std::vector<std::string> names;
    DIR* listing = ::opendir(directory.c_str());
    if (!listing) return names;
    while (const dirent* entry = ::readdir(listing)) {
        const std::string_view name = entry->d_name;
        if (name.substr(0, prefix.size()) != prefix) continue;
        const pid_t writer = writer_of(entry->d_name + prefix.size());
        if (has_died(writer) || (own_pid_is_dead && writer == ::getpid())) names.emplace_back(name);
    }
    ::closedir(listing);
    return names;
}

bool write_all(int fd, std::string_view content) {
    while (!content.empty()) {
        ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool read_whole(const std::string& path, std::string& content) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    char buffer[8192];
    ssize_t got;
    content.clear();
    while ((got = ::read(fd, buffer, sizeof buffer)) != 0) {
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) break;
        content.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(fd);
    return got == 0;
}

bool sync_directory(const std::string& path) {
    int fd = ::open(directory_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return false;
    bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

// Creates the directories above path and a synced temporary file beside it
// holding content; "" on failure, with nothing left behind.
std::string write_temporary(const std::string& path, std::string_view content, mode_t mode) {
    std::error_code ignored;
    std::filesystem::create_directories(directory_of(path), ignored);
    remove_stale_temporaries(path);
    std::string temporary = temporary_name(path);
    // Created private; the umask cannot widen it, fchmod sets the exact mode.
    int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode & 0600);
    if (fd < 0) return {};
    bool written = ::fchmod(fd, mode) == 0 && write_all(fd, content) && ::fsync(fd) == 0;
    written = ::close(fd) == 0 && written;
    if (written) return temporary;
    ::unlink(temporary.c_str());
    return {};
}

struct journal_entry {
    std::string temporary;
    std::string target;
};

// A journal only renames "<target>.tmp.<name>" over target, both absolute,
// so that a damaged one cannot move other files.
bool is_journal_entry(const journal_entry& entry) {
    const std::string_view temporary = entry.temporary;
    const std::string_view target = entry.target;
    const std::size_t name_start = target.size() + temporary_marker.size();
    return !target.empty() && target.front() == '/' &&
           target.find_first_of("\t\n") == std::string_view::npos &&
           temporary.size() > name_start && temporary.substr(0, target.size()) == target &&
           temporary.substr(target.size(), temporary_marker.size()) == temporary_marker &&
           temporary.find_first_of("/\t\n", name_start) == std::string_view::npos;
}

// One "<temporary>\t<target>\n" line per file; false for anything else.
bool parse_journal(std::string_view text, std::vector<journal_entry>& entries) {
    if (text.empty() || text.back() != '\n') return false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        const std::size_t tab = line.find('\t');
        if (tab == std::string_view::npos) return false;
        journal_entry entry{std::string(line.substr(0, tab)), std::string(line.substr(tab + 1))};
        if (!is_journal_entry(entry)) return false;
        entries.push_back(std::move(entry));
    }
    return true;
}

constexpr std::string_view journal_directory_path = "/var/bmc/commits";

std::string journal_directory() { return bmc_path(journal_directory_path); }

// Owner-only: the journals name files that hold password hashes.
bool make_private_directory(const std::string& directory) {
    std::error_code ignored;
    std::filesystem::create_directories(directory_of(directory), ignored);
    if (::mkdir(directory.c_str(), 0700) == 0) return sync_directory(directory);
    struct stat status;
    return errno == EEXIST && ::stat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           ((status.st_mode & 077) == 0 || ::chmod(directory.c_str(), 0700) == 0);
}

void remove_journal(const std::string& journal) {
    ::unlink(journal.c_str());
    sync_directory(journal);
}

// Renames what a killed writer's journal still lists. The journal stays
// when it is damaged or a rename fails, for a later attempt.
void roll_forward(const std::string& journal) {
    std::string text;
    std::vector<journal_entry> entries;
    if (!read_whole(journal, text)) return;  // another process finished it
    if (!parse_journal(text, entries)) {
        console_log("[ERROR] %s: damaged commit journal left in place\n", journal.c_str());
        return;
    }
    bool finished = true;
    for (const journal_entry& entry : entries) {
        if (::rename(entry.temporary.c_str(), entry.target.c_str()) == 0)
            finished = sync_directory(entry.target) && finished;
        else if (errno != ENOENT)  // ENOENT: renamed before the writer died
            finished = false;
    }
    if (finished)
        remove_journal(journal);
    else
        console_log("[ERROR] %s: commit could not be finished\n", journal.c_str());
}

}  // namespace

bool write_file_atomically(const std::string& path, std::string_view content, mode_t mode) {
    renew_request_epoch();
    std::string temporary = write_temporary(path, content, mode);
    if (temporary.empty()) return false;
    const bool renamed = ::rename(temporary.c_str(), path.c_str()) == 0;
    // Again once the file is in place: what was read meanwhile is stale.
    renew_request_epoch();
    if (!renamed) {
        ::unlink(temporary.c_str());
        return false;
    }
    return sync_directory(path);
}

staged_files::~staged_files() { discard_temporaries(); }

void staged_files::discard_temporaries() {
    for (staged& file : files_) {
        if (!file.temporary.empty()) ::unlink(file.temporary.c_str());
        file.temporary.clear();
    }
}

bool staged_files::stage(const std::string& path, std::string_view content, mode_t mode) {
    staged file;
    file.path = path;
    file.temporary = failed_ ? std::string() : write_temporary(path, content, mode);
    failed_ = failed_ || file.temporary.empty();
    // Read after the sweep in write_temporary, which may finish a killed
    // writer's commit of path.
    file.existed = !failed_ && read_whole(path, file.previous);
    if (!failed_ && !file.existed && errno != ENOENT) failed_ = true;
    files_.push_back(std::move(file));
    return !failed_;
}

bool staged_files::commit() {
    if (failed_ || files_.empty()) {
        discard_temporaries();
        return !failed_;
    }
    finish_interrupted_commits();
    renew_request_epoch();
    const std::string journal = write_journal();
    std::size_t renamed = 0;
    for (; !journal.empty() && renamed < files_.size(); ++renamed) {
        staged& file = files_[renamed];
        if (::rename(file.temporary.c_str(), file.path.c_str()) != 0) break;
        file.temporary.clear();
    }
    renew_request_epoch();
    bool complete = renamed == files_.size();
    if (!complete) roll_back(renamed);
    for (const staged& file : files_) complete = sync_directory(file.path) && complete;
    if (!journal.empty()) remove_journal(journal);
    failed_ = !complete;
    return complete;
}

// The set's journal, written whole before the first rename; "" on failure.
std::string staged_files::write_journal() const {
    std::string text;
    for (const staged& file : files_) {
        std::error_code error;
        const std::string target = std::filesystem::absolute(file.path, error).string();
        const journal_entry entry{target + file.temporary.substr(file.path.size()), target};
        if (error || !is_journal_entry(entry)) return {};
        text += entry.temporary + '\t' + entry.target + '\n';
    }
    const std::string directory = journal_directory();
    const std::string journal = directory + "/" + writer_unique_name();
    return make_private_directory(directory) && write_file_atomically(journal, text, 0600)
               ? journal
               : std::string();
}

// Puts back the old contents of the files renamed before a rename failed.
// The other temporaries go first, so that the journal lists nothing left
// to finish.
void staged_files::roll_back(std::size_t renamed) {
    discard_temporaries();
    for (std::size_t i = 0; i < renamed; ++i) {
        struct stat status;
        const staged& file = files_[i];
        if (!file.existed) {
            ::unlink(file.path.c_str());
        } else if (::stat(file.path.c_str(), &status) == 0) {
            write_file_atomically(file.path, file.previous, status.st_mode & 07777);
        }
    }
}

void remove_stale_temporaries(const std::string& path) {
    const std::string directory = directory_of(path);
    const std::vector<std::string> stale =
        left_by_dead_writers(directory, name_of(path) + std::string(temporary_marker));
    // Some may be part of commits their writers began: those are finished
    // first (which renames them), only the rest is removed.
    if (!stale.empty()) finish_interrupted_commits();
    for (const std::string& name : stale) ::unlink((directory + "/" + name).c_str());
}

void finish_interrupted_commits() {
    const std::string directory = journal_directory();
    // A commit removes its journal before it returns, so a journal under
    // this process's own pid is an earlier process's that had the same pid.
    for (const std::string& name : left_by_dead_writers(directory, "", true)) {
        const std::string path = directory + "/" + name;
        // A journal's own temporary: its writer died before any rename.
        if (name.find(temporary_marker) != std::string::npos)
            ::unlink(path.c_str());
        else
            roll_forward(path);
    }
}

}  // namespace platform
