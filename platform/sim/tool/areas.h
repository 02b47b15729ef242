// bmcsim shows and changes the state of the simulated BMC. Each area has its
// commands in <area>_commands.cpp and one entry in the table in areas.cpp.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace bmcsim {

using arguments = std::vector<std::string>;

enum exit_status : int { exit_ok = 0, exit_failed = 1, exit_usage = 2 };

struct area {
    const char* name;
    const char* usage;  // the commands that follow the area's name
    // words: the command and its arguments, after the area's name
    int (*run)(const area& self, const arguments& words, std::ostream& out, std::ostream& err);
};

extern const area eventlog_area;
extern const area state_area;
extern const area crashdump_area;
extern const area dumps_area;
extern const area users_area;
extern const area directory_area;
extern const area lockdown_area;
extern const area hostif_area;
extern const area snmp_area;
extern const area power_area;
extern const area sensors_area;
extern const area fru_area;
extern const area smbios_area;
extern const area bios_area;
extern const area boot_area;
extern const area storage_area;
extern const area board_area;
extern const area alerts_area;
extern const area bmc_area;
extern const area lan_area;
extern const area vmedia_area;
extern const area serial_area;
extern const area nics_area;
extern const area tasks_area;
extern const area firmware_area;
extern const area pcie_area;
extern const area telemetry_area;
extern const area ntp_area;
extern const area syslog_area;
extern const area ipfilter_area;
extern const area kcs_area;
extern const area memory_area;
extern const area vlans_area;
extern const area nodemanager_area;

// "storage raid ...": words from "raid" on (raid_commands.cpp).
int run_raid(const area& self, const arguments& words, std::ostream& out, std::ostream& err);
extern const area console_area;
extern const area fans_area;
extern const area postcodes_area;
extern const area clock_area;

// Runs "<area> <command> [args]" (the words after the options).
int run(const arguments& words, std::ostream& out, std::ostream& err);

// Prints the usage line of the whole tool or of one area; returns exit_usage.
int usage(std::ostream& err);
int usage(const area& self, std::ostream& err);

// exit_ok when a change was stored, else exit_failed after naming the file.
int written(bool stored, const std::string& file, std::ostream& err);

// A privilege level: 1 to 4, or Administrator, Operator, ReadOnly (or
// User), Callback; and the role name of a level (users_commands.cpp).
bool parse_privilege(const std::string& text, int& level);
const char* role_name(int level);

// Attaches the shared BMC state record; false (with a message) when it
// cannot be attached.
bool attach_shared_state(std::ostream& err);

// Decimal, or hexadecimal after "0x"; false when not a number in [min, max].
bool parse_number(const std::string& text, long long min, long long max, long long& value);

}  // namespace bmcsim
