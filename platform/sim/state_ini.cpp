#include "platform/sim/state_ini.h"

#include <fcntl.h>
#include <sys/file.h>

#include <map>

#include "base/file_cache.h"
#include "base/input_recording.h"

#include "platform/sim/sim_file.h"
#include "platform/sim/sim_settings.h"

namespace pt = boost::property_tree;

namespace platform::sim {
namespace {

// One cache per state file; the simulator has a fixed set of them, and
// paths past this bound are parsed on every read.
constexpr std::size_t cached_files_max = 64;

pt::ptree parsed_state_ini(const std::string& path) {
    pt::ptree tree;
    read_ini(path, tree);
    return tree;
}

}  // namespace

bool with_file_lock(const std::string& path, const std::function<bool()>& body) {
    std::string lock_path = path + ".lock";
    if (!make_parent_dirs(lock_path)) return false;
    unique_fd fd(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!fd.valid()) return false;
    file_lock lock(fd.get(), LOCK_EX);
    return lock.locked() && body();
}

pt::ptree read_state_ini(const std::string& path) { return *stored_state_ini(path); }

std::shared_ptr<const pt::ptree> stored_state_ini(const std::string& path) {
    static std::map<std::string, file_cache<pt::ptree>> caches;
    auto cache = caches.find(path);
    if (cache == caches.end()) {
        if (caches.size() >= cached_files_max) {
            platform::note_input_file(path);
            return std::make_shared<const pt::ptree>(parsed_state_ini(path));
        }
        cache = caches.try_emplace(path).first;
    }
    std::shared_ptr<const pt::ptree> state;
    cache->second.get(
        path,
        [&path](pt::ptree& parsed) {
            parsed = parsed_state_ini(path);
            return PLT_OK;
        },
        state);
    return state;
}

bool update_state_ini(const std::string& path, const std::function<bool(pt::ptree&)>& change,
                      mode_t mode) {
    return with_file_lock(path, [&] {
        pt::ptree tree = read_state_ini(path);
        return !change(tree) || write_ini(path, tree, mode);
    });
}

}  // namespace platform::sim
