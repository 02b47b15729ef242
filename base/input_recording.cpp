#include "base/input_recording.h"

#include <cstring>

#include "base/file_watch.h"
#include "base/request_epoch.h"

namespace platform {
namespace {

struct recording_state {
    bool active = false;
    bool reusable = true;
    recorded_inputs inputs;
};

recording_state& current() {
    static recording_state state;
    return state;
}

St_GlobalVar global_block() { return at_p_St_GlobalVar ? *at_p_St_GlobalVar : St_GlobalVar{}; }

}  // namespace

// Looked up outside any recording, so the versions taken here note nothing.
bool recorded_inputs::files_unchanged() const {
    for (const file_input& input : files)
        if (version_of(input.path) != input.version) return false;
    return true;
}

bool recorded_inputs::start_watching() {
    std::vector<std::string> paths;
    for (const file_input& input : files) paths.push_back(input.path);
    watched_.watch(paths);
    // A change between the read and the watch shows in the versions.
    return files_unchanged();
}

bool recorded_inputs::unchanged() const {
    if (valid_until != 0 && lx_time_get() >= valid_until) return false;
    const St_GlobalVar now = global_block();
    if (std::memcmp(&now, &global, sizeof now) != 0) return false;
    if (watched_.watching()) return watched_.unchanged();
    return files_unchanged();
}

input_recording::input_recording() {
    // What was kept before the recording would go unnoted.
    renew_request_epoch();
    recording_state& state = current();
    state = recording_state();
    state.active = true;
    state.inputs.global = global_block();
}

input_recording::~input_recording() { current().active = false; }

std::optional<recorded_inputs> input_recording::finish() {
    recording_state& state = current();
    state.active = false;
    const St_GlobalVar now = global_block();
    if (!state.reusable || std::memcmp(&now, &state.inputs.global, sizeof now) != 0)
        return std::nullopt;
    return std::move(state.inputs);
}

void note_input(const std::string& path, const file_version& version) {
    recording_state& state = current();
    if (!state.active || !state.reusable) return;
    if (version.exists && !settled(version)) {
        state.reusable = false;
        return;
    }
    for (const file_input& input : state.inputs.files) {
        if (input.path != path) continue;
        if (input.version != version) state.reusable = false;
        return;
    }
    state.inputs.files.push_back({path, version});
}

void note_unversioned_input() { current().reusable = false; }

void note_input_expiry(long long when) {
    recording_state& state = current();
    if (!state.active) return;
    long long& until = state.inputs.valid_until;
    if (until == 0 || when < until) until = when;
}

void note_input_file(const std::string& path) {
    if (current().active) version_of(path);
}

}  // namespace platform
