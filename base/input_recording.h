// What a piece of work read of the BMC's state: the versions of the files
// and the shared parameter block as they were. Its result may be used again
// for as long as they stay the same.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/file_version.h"
#include "base/file_watch.h"
#include "platform/libipmi.h"

namespace platform {

struct file_input {
    std::string path;
    file_version version;
};

struct recorded_inputs {
    std::vector<file_input> files;
    St_GlobalVar global{};
    long long valid_until = 0;  // lx_time_get() seconds; 0: no step is scheduled

    // Has the files watched from now on, so that unchanged() need not look
    // at each; false when they already changed since they were read.
    bool start_watching();
    // Every file still at its version and the block alike.
    bool unchanged() const;

private:
    bool files_unchanged() const;

    watched_files watched_;  // not watching: looked at one by one
};

// Notes the inputs read between its construction and finish(); one at a
// time per process.
class input_recording {
public:
    input_recording();
    ~input_recording();
    input_recording(const input_recording&) = delete;
    input_recording& operator=(const input_recording&) = delete;

    // The inputs noted; none when one of them could not tell a later
    // change (just written, read twice at different versions, or read
    // without a version).
    std::optional<recorded_inputs> finish();
};

// The duty of every platform function that reads the BMC's state while a
// recording is on: note what it read, a file at its version (note_input,
// note_input_file) or state that changes at a known time
// (note_input_expiry); one that reads state that has no version (a live
// reading, the clock as part of an answer) calls note_unversioned_input, and
// what was built from it is not used again.

// Called with every version taken of a file that holds state.
void note_input(const std::string& path, const file_version& version);
void note_unversioned_input();
// For state that changes by itself at a known time (a scheduled power
// step): what was read holds until then (lx_time_get() seconds).
void note_input_expiry(long long when);
// For readers that do not keep a cache of their own: notes path at its
// present version while a recording is on.
void note_input_file(const std::string& path);

}  // namespace platform
