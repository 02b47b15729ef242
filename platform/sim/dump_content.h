// What a simulated dump holds: sections of text collected from the
// simulator's own state (event log, sensor readings, firmware and BIOS
// configuration, the drives' SMART data, the processors' machine-check
// banks), each written in turn.
#pragma once

#include <string>
#include <vector>

namespace platform::sim {

using dump_collector = std::string (*)();

struct dump_section {
    const char* title;
    dump_collector collect;
};

// The sections of kind's dump, in order; empty for an unknown kind.
std::vector<dump_section> dump_sections(int kind);

}  // namespace platform::sim
