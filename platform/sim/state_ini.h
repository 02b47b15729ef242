// State files of the simulated host hardware: INI files under the root,
// changed under an flock on "<file>.lock" and replaced through a temporary
// file, so that readers need no lock.
#pragma once

#include <sys/types.h>
#include <boost/property_tree/ptree.hpp>
#include <functional>
#include <memory>
#include <string>

namespace platform::sim {

// Runs body while holding the exclusive lock of path ("<path>.lock");
// false when the lock cannot be taken, else what body returns.
bool with_file_lock(const std::string& path, const std::function<bool()>& body);

// The state in path; an empty tree when the file is missing or malformed.
boost::property_tree::ptree read_state_ini(const std::string& path);

// The same, parsed once per version of the file in this process.
std::shared_ptr<const boost::property_tree::ptree> stored_state_ini(const std::string& path);

// One locked read-modify-write: change returns whether it changed the tree,
// and only then is the file written, with mode. False when locking or
// writing fails.
bool update_state_ini(const std::string& path,
                      const std::function<bool(boost::property_tree::ptree&)>& change,
                      mode_t mode = 0644);

}  // namespace platform::sim
