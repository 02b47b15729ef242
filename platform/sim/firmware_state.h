// The simulated firmware: running versions in <root>/nv/firmware.ini
// ([BMC] Version=..., [BIOS] ..., [CPLD] ...), changed by fw_update.
#pragma once

#include <string>

namespace platform::sim {

// "BMC", "BIOS", "CPLD" for the fw_update devices; null for another.
const char* firmware_component(int device);
// The device of a component name; 0 for another.
int firmware_device(const std::string& component);

std::string firmware_version(int device);
bool store_firmware_version(int device, const std::string& version);

// Copies text into a caller's buffer of size bytes (size > 0), cut to fit.
void copy_out(const std::string& text, char* target, int size);

// Who holds the firmware-update lock or update mode: "task <id> <monitor
// id>" for a task ("" when there is no such task), "<pid> <start>" for a
// process. A holder is alive while its task is in progress or its process
// runs: one killed holds nothing back.
std::string task_holder(int task_id);
bool holder_alive(const std::string& holder);

// The marker that an evidence dump is being generated.
const std::string& evidence_marker_file();

}  // namespace platform::sim
