// Files replaced in one step: a reader, or a process killed at any moment,
// sees the old file or the new one, never a part, and a secret is never
// readable by others on the way.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Replaces path with content: a private temporary file beside it, created
// with mode, written, synced, renamed over path, and the directory synced.
// False (and path untouched) when any step fails.
bool write_file_atomically(const std::string& path, std::string_view content, mode_t mode);

// Several files that change together: each is staged in a synced temporary
// file, and only when every one is staged are they renamed into place. A
// set that fails or is dropped before commit leaves every file as it was.
// Before the first rename, commit writes a journal of the set (under
// /var/bmc/commits, owner-only), removed after the last: a writer killed
// in between has its set finished by finish_interrupted_commits.
class staged_files {
public:
    staged_files() = default;
    staged_files(const staged_files&) = delete;
    staged_files& operator=(const staged_files&) = delete;
    ~staged_files();

    bool stage(const std::string& path, std::string_view content, mode_t mode);
    // False when a stage, the journal or a rename failed; the files
    // already renamed then get their old content back.
    bool commit();

private:
    struct staged {
        std::string path;
        std::string temporary;
        std::string previous;  // content before the change
        bool existed = false;
    };
    void discard_temporaries();
    std::string write_journal() const;
    void roll_back(std::size_t renamed);

    std::vector<staged> files_;
    bool failed_ = false;
};

// Removes the temporary files that killed writers left beside path, after
// finishing the commits that those writers had begun.
void remove_stale_temporaries(const std::string& path);

// Renames into place every file that a killed writer's journal still
// lists, then removes the journal; journals of living writers stay.
void finish_interrupted_commits();

}  // namespace platform
