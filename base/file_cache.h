// Per-process caches of parsed files that the BMC's programs share: a file
// is parsed again as soon as another process changes it.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "base/file_version.h"
#include "base/file_watch.h"
#include "base/input_recording.h"
#include "platform/plt_result.h"

namespace platform {

// The parsed content of one file. load(Parsed&) reads and parses it and
// returns a PLT_ result; it runs again only when the file changed since.
template <typename Parsed>
class file_cache {
public:
    template <typename Load>
    int get(const std::string& path, Load&& load, std::shared_ptr<const Parsed>& parsed) {
        // While the file is watched and no event named it, it needs no stat.
        if (cached_ && path == path_ && watched_.unchanged()) {
            note_input(path, version_);
            parsed = cached_;
            return PLT_OK;
        }
        // The version comes before the read: a change in between shows as
        // a new version next time.
        const file_version version = version_of(path);
        if (cached_ && path == path_ && version == version_) {
            parsed = cached_;
            return PLT_OK;
        }
        auto fresh = std::make_shared<Parsed>();
        const int result = std::forward<Load>(load)(*fresh);
        if (result != PLT_OK) return result;
        path_ = path;
        version_ = version;
        // A missing file is a version too: whatever creates it changes it.
        cached_ = !version.exists || settled(version) ? fresh : nullptr;
        if (cached_) watch();
        parsed = std::move(fresh);
        return PLT_OK;
    }

private:
    // A change between the read and the watch shows in the version.
    void watch() {
        if (watched_.watch({path_}) && version_of(path_) != version_) cached_ = nullptr;
    }

    std::string path_;
    file_version version_;
    std::shared_ptr<const Parsed> cached_;
    watched_files watched_;
};

}  // namespace platform
