#include "platform/sim/state_ini.h"

#include "base/input_recording.h"

#include <fcntl.h>
#include <sys/file.h>

#include "platform/sim/sim_file.h"
#include "platform/sim/sim_settings.h"

namespace pt = boost::property_tree;

namespace platform::sim {

bool with_file_lock(const std::string& path, const std::function<bool()>& body) {
    std::string lock_path = path + ".lock";
    if (!make_parent_dirs(lock_path)) return false;
    unique_fd fd(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!fd.valid()) return false;
    file_lock lock(fd.get(), LOCK_EX);
    return lock.locked() && body();
}

pt::ptree read_state_ini(const std::string& path) {
    pt::ptree tree;
    platform::note_input_file(path);
    read_ini(path, tree);
    return tree;
}

bool update_state_ini(const std::string& path, const std::function<bool(pt::ptree&)>& change,
                      mode_t mode) {
    return with_file_lock(path, [&] {
        pt::ptree tree = read_state_ini(path);
        return !change(tree) || write_ini(path, tree, mode);
    });
}

}  // namespace platform::sim
