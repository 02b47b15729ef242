#include "framework/ini_settings.h"

#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <boost/property_tree/ini_parser.hpp>
#include <fstream>

#include "platform/bmc_root.h"

namespace odata::redfish {

boost::property_tree::ptree ini_settings::read() const {
    std::lock_guard<std::mutex> hold(mutex_);
    boost::property_tree::ptree settings;
    std::ifstream file(platform::bmc_path(path_));
    if (!file) return settings;
    try {
        boost::property_tree::read_ini(file, settings);
    } catch (const boost::property_tree::ini_parser_error&) {
        settings.clear();
    }
    return settings;
}

bool ini_settings::write(const boost::property_tree::ptree& settings) const {
    std::lock_guard<std::mutex> hold(mutex_);
    const std::string path = platform::bmc_path(path_);
    const std::string temporary = path + ".tmp." + std::to_string(getpid());
    boost::system::error_code ignored;
    boost::filesystem::create_directories(boost::filesystem::path(path).parent_path(), ignored);
    {
        std::ofstream file(temporary, std::ios::trunc);
        if (!file) return false;
        chmod(temporary.c_str(), S_IRUSR | S_IWUSR);
        try {
            boost::property_tree::write_ini(file, settings);
        } catch (const boost::property_tree::ini_parser_error&) {
            file.close();
            unlink(temporary.c_str());
            return false;
        }
        file.flush();
        if (!file) {
            unlink(temporary.c_str());
            return false;
        }
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        unlink(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace odata::redfish
