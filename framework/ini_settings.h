// A settings file in INI form: read whole, written whole through a
// temporary file and a rename, each file guarded by its own mutex.
#pragma once

#include <boost/property_tree/ptree.hpp>
#include <mutex>
#include <string>

namespace odata::redfish {

class ini_settings {
public:
    // path is a BMC path such as "/nv/redfish/sessionservice.ini".
    explicit ini_settings(std::string path) : path_(std::move(path)) {}

    // The file's settings; empty when the file is missing or unreadable.
    boost::property_tree::ptree read() const;
    // Replaces the file; false when it could not be written.
    bool write(const boost::property_tree::ptree& settings) const;

    // One value, or fallback when the key is missing or not of type T.
    template <class T>
    T get(const std::string& key, T fallback) const {
        return read().get<T>(key, fallback);
    }

private:
    std::string path_;
    mutable std::mutex mutex_;
};

}  // namespace odata::redfish
