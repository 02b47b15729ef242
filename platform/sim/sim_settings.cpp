#include "platform/sim/sim_settings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <boost/property_tree/ini_parser.hpp>
#include <sstream>

#include "base/bmc_root.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

namespace pt = boost::property_tree;

namespace platform {
namespace sim {

bool read_ini(const std::string& path, pt::ptree& tree) {
    tree.clear();
    std::string text;
    if (!read_file(path, text)) return false;
    std::istringstream stream(text);
    try {
        pt::read_ini(stream, tree);
        return true;
    } catch (const pt::ptree_error& error) {
        console_log("[ERROR] %s: %s\n", path.c_str(), error.what());
        tree.clear();
        return false;
    }
}

long long ini_number(const std::string& path, const std::string& key, long long fallback) {
    pt::ptree tree;
    if (!read_ini(path, tree)) return fallback;
    return tree.get_optional<long long>(key).value_or(fallback);
}

bool ini_text(const std::string& path, const pt::ptree& tree, std::string& text) {
    std::ostringstream stream;
    try {
        pt::write_ini(stream, tree);
    } catch (const pt::ptree_error& error) {
        console_log("[ERROR] %s: %s\n", path.c_str(), error.what());
        return false;
    }
    text = stream.str();
    return true;
}

bool write_ini(const std::string& path, const pt::ptree& tree, mode_t new_mode) {
    std::string text;
    if (!ini_text(path, tree, text)) return false;
    struct stat status;
    mode_t mode = ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : new_mode;
    return replace_file(path, text, mode);
}

}  // namespace sim

namespace {

const std::string& settings_lock_file() {
    static fixed_bmc_path path("/var/bmc/settings.lock");
    return path.get();
}

}  // namespace

const std::string& sim_settings_file() {
    static fixed_bmc_path path("/var/bmc/settings.ini");
    return path.get();
}

long long sim_setting_number(const std::string& key, long long fallback) {
    return sim::ini_number(sim_settings_file(), key, fallback);
}

std::string sim_setting_text(const std::string& key, const std::string& fallback) {
    pt::ptree tree;
    if (!sim::read_ini(sim_settings_file(), tree)) return fallback;
    return tree.get_optional<std::string>(key).value_or(fallback);
}

bool update_sim_settings(const std::function<bool(pt::ptree&)>& change) {
    std::string lock_path = settings_lock_file();
    if (!sim::make_parent_dirs(lock_path)) return false;
    sim::unique_fd fd(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!fd.valid()) return false;
    sim::file_lock lock(fd.get(), LOCK_EX);
    if (!lock.locked()) return false;
    pt::ptree tree;
    sim::read_ini(sim_settings_file(), tree);
    if (!change(tree)) return false;
    return sim::write_ini(sim_settings_file(), tree, 0600);
}

bool set_sim_setting(const std::string& key, const std::string& value) {
    return update_sim_settings([&](pt::ptree& tree) {
        tree.put(key, value);
        return true;
    });
}

}  // namespace platform
