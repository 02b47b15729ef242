// A settings file in INI form, readable by its owner only: read whole
// without a lock (every write replaces the file in one rename), changed by
// read-modify-write under the file's cross-process lock, "<file>.lock".
#pragma once

#include <boost/property_tree/ptree.hpp>
#include <functional>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/atomic_file.h"
#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "base/record_lock.h"

namespace odata::redfish {

class ini_settings {
public:
    // path is a BMC path such as "/nv/redfish/sessionservice.ini".
    explicit ini_settings(std::string path) : path_(std::move(path)), resolved_path_(path_) {}

    // The file's settings; empty when the file is missing or unreadable.
    boost::property_tree::ptree read() const { return *snapshot(); }

    // The same, parsed once per version of the file in this process.
    std::shared_ptr<const boost::property_tree::ptree> snapshot() const;

    // One value, or fallback when the key is missing or not of type T.
    template <class T>
    T get(const std::string& key, T fallback) const {
        return snapshot()->get<T>(key, fallback);
    }

    // The file's cross-process lock; hold it from the read of a change to
    // its write so that no other process's change is lost in between.
    platform::record_lock lock() const;

    // Reads the file under its lock, lets change edit the settings and
    // writes them; false when the lock or the write fails.
    bool update(const std::function<void(boost::property_tree::ptree&)>& change) const;

private:
    friend class settings_batch;
    std::string file_path() const;

    std::string path_;
    // Resolved once under the root, for the reads of every request.
    mutable platform::fixed_bmc_path resolved_path_;
    mutable std::mutex mutex_;
    mutable platform::file_cache<boost::property_tree::ptree> cache_;
};

// One value of a settings file, converted once per version of the file:
// for the settings that every request reads.
template <class T>
class kept_setting {
public:
    kept_setting(const ini_settings& file, std::string key, T fallback)
        : file_(file), key_(std::move(key)), fallback_(std::move(fallback)) {}

    T get() const {
        std::shared_ptr<const boost::property_tree::ptree> settings = file_.snapshot();
        std::lock_guard<std::mutex> hold(mutex_);
        if (settings != read_from_) {
            value_ = settings->get<T>(key_, fallback_);
            read_from_ = std::move(settings);
        }
        return value_;
    }

private:
    const ini_settings& file_;
    std::string key_;
    T fallback_;
    mutable std::mutex mutex_;
    mutable std::shared_ptr<const boost::property_tree::ptree> read_from_;
    mutable T value_{};
};

// Holds the locks of several settings files, taken in the order given
// (callers list files in one fixed order, so that no two wait on each other).
class settings_lock {
public:
    explicit settings_lock(std::initializer_list<const ini_settings*> files);
    bool held() const;

private:
    std::vector<platform::record_lock> locks_;
};

// New settings for several files, written together or not at all. The
// caller holds their locks.
class settings_batch {
public:
    bool put(const ini_settings& file, const boost::property_tree::ptree& settings);
    bool commit();

private:
    platform::staged_files files_;
    bool complete_ = true;
};

}  // namespace odata::redfish
