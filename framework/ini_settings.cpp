#include "framework/ini_settings.h"

#include <boost/property_tree/ini_parser.hpp>
#include <fstream>
#include <sstream>

#include "base/bmc_root.h"

namespace odata::redfish {
namespace {

// Settings may hold secrets (directory bind passwords).
constexpr mode_t settings_mode = 0600;

// Missing, unreadable and malformed files all read as no settings.
int parse(const std::string& path, boost::property_tree::ptree& settings) {
    std::ifstream file(path);
    if (!file) return PLT_OK;
    try {
        boost::property_tree::read_ini(file, settings);
    } catch (const boost::property_tree::ini_parser_error&) {
        settings.clear();
    }
    return PLT_OK;
}

}  // namespace

std::string ini_settings::file_path() const {
    std::lock_guard<std::mutex> hold(mutex_);
    return resolved_path_.get();
}

std::shared_ptr<const boost::property_tree::ptree> ini_settings::snapshot() const {
    std::lock_guard<std::mutex> hold(mutex_);
    std::shared_ptr<const boost::property_tree::ptree> settings;
    const std::string& path = resolved_path_.get();
    cache_.get(
        path, [&path](boost::property_tree::ptree& parsed) { return parse(path, parsed); },
        settings);
    return settings;
}

platform::record_lock ini_settings::lock() const {
    return platform::record_lock(file_path() + ".lock");
}

bool ini_settings::update(const std::function<void(boost::property_tree::ptree&)>& change) const {
    const platform::record_lock hold = lock();
    if (!hold.held()) return false;
    boost::property_tree::ptree settings = read();
    change(settings);
    settings_batch batch;
    return batch.put(*this, settings) && batch.commit();
}

settings_lock::settings_lock(std::initializer_list<const ini_settings*> files) {
    for (const ini_settings* file : files) locks_.push_back(file->lock());
}

bool settings_lock::held() const {
    for (const platform::record_lock& lock : locks_)
        if (!lock.held()) return false;
    return true;
}

bool settings_batch::put(const ini_settings& file, const boost::property_tree::ptree& settings) {
    std::ostringstream text;
    try {
        boost::property_tree::write_ini(text, settings);
    } catch (const boost::property_tree::ini_parser_error&) {
        complete_ = false;
        return false;
    }
    const std::string path = file.file_path();
    std::lock_guard<std::mutex> hold(file.mutex_);
    complete_ = files_.stage(path, text.str(), settings_mode) && complete_;
    return complete_;
}

bool settings_batch::commit() { return complete_ && files_.commit(); }

}  // namespace odata::redfish
