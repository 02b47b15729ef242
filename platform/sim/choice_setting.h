// A setting that is one of a few numbered choices, kept as "Section.Key" of
// its own INI file under the BMC root.
#pragma once

#include <string>

namespace platform::sim {

struct choice_setting {
    const char* file;  // absolute BMC path: "/nv/bmc/fan.ini"
    const char* key;   // "Fan.Mode"
    int count;         // choices are 0..count-1
    int fallback;      // a BMC as shipped (missing file or key)
};

std::string choice_setting_file(const choice_setting& setting);

// The stored choice; the fallback when it is missing or out of range.
int read_choice(const choice_setting& setting);

// PLT_OK, PLT_ERR_ARGUMENT for a value out of range, PLT_ERR_IO.
int write_choice(const choice_setting& setting, int value);

}  // namespace platform::sim
