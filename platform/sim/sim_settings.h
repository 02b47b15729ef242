// INI files of the simulated BMC, read and written with Boost.PropertyTree's
// INI parser, and the simulator's own settings in <root>/var/bmc/settings.ini:
//
//   [Users]         PasswordComplexity=0|1
//   [HostInterface] Enabled=0|1   (requests count as coming over it)
//                   FirmwareUser=<name>
//                   FirmwarePassword=<salted hash, see password_hash.h>
//   [Lockdown]      Enabled=0|1
//   [SNMP]          DaemonRestarts=<count>, LastOperation=<code>
//
// Changes are made under an flock on <root>/var/bmc/settings.lock and
// written to a temporary file that is renamed over settings.ini.
#pragma once

#include <boost/property_tree/ptree.hpp>
#include <functional>
#include <string>

namespace platform {

const std::string& sim_settings_file();

// The value of "Section.Key", fallback when the file, the key or a number
// is missing or malformed.
long long sim_setting_number(const std::string& key, long long fallback);
std::string sim_setting_text(const std::string& key, const std::string& fallback = {});

// Changes the settings in one locked read-modify-write; false when the file
// cannot be written (or change returns false: nothing is written then).
bool update_sim_settings(const std::function<bool(boost::property_tree::ptree&)>& change);
bool set_sim_setting(const std::string& key, const std::string& value);

namespace sim {

// Reads an INI file; false (and an empty tree) when missing or malformed.
bool read_ini(const std::string& path, boost::property_tree::ptree& tree);

// "Section.Key" of an INI file as an integer, fallback as above.
long long ini_number(const std::string& path, const std::string& key, long long fallback);

// The INI text of a tree meant for path (named in the log when the tree
// cannot be written as INI).
bool ini_text(const std::string& path, const boost::property_tree::ptree& tree, std::string& text);

// Writes the tree to path through a temporary file and rename; an existing
// file keeps its mode, a new one gets new_mode.
bool write_ini(const std::string& path, const boost::property_tree::ptree& tree, mode_t new_mode);

}  // namespace sim
}  // namespace platform
