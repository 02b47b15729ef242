// bmcsim boot: the boot-device tables and the boot override in force.
#include <iomanip>
#include <ostream>

#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace boot_commands {

void show_row(const St_BootFlagEntry& row, std::ostream& out) {
    out << std::left << std::setw(12) << row.name << std::right << std::hex << std::setfill('0')
        << " 0x" << std::setw(2) << static_cast<unsigned>(row.byte1) << " 0x" << std::setw(2)
        << static_cast<unsigned>(row.byte2) << std::dec << std::setfill(' ') << '\n';
}

const char* override_target(uint8_t selector) {
    if (selector == 0) return boot_flags[0].name;
    for (int i = 1; i < ChassisBootTableSize && boot_flags[i].name; ++i)
        if ((boot_flags[i].byte2 & BOOT_DEVICE_SELECTOR_MASK) == selector)
            return boot_flags[i].name;
    for (int i = 0; i < ChassisBootTableExtSize && boot_flags_ext[i].name; ++i)
        if ((boot_flags_ext[i].byte2 & BOOT_DEVICE_SELECTOR_MASK) == selector)
            return boot_flags_ext[i].name;
    return "?";
}

int show(std::ostream& out, std::ostream& err) {
    if (!attach_shared_state(err)) return exit_failed;
    uint8_t byte1 = at_p_St_GlobalVar->boot_flags[0];
    uint8_t byte2 = at_p_St_GlobalVar->boot_flags[1];
    const char* enabled = (byte1 & 0x80) == 0 ? "disabled" : (byte1 & 0x40) ? "continuous" : "once";
    out << "override=" << enabled << '\n'
        << "mode=" << ((byte1 & 0x20) ? "uefi" : "legacy") << '\n'
        << "target=" << override_target(byte2 & BOOT_DEVICE_SELECTOR_MASK) << '\n';
    for (int i = 0; i < ChassisBootTableSize && boot_flags[i].name; ++i)
        show_row(boot_flags[i], out);
    for (int i = 0; i < ChassisBootTableExtSize && boot_flags_ext[i].name; ++i)
        show_row(boot_flags_ext[i], out);
    return exit_ok;
}

int run_boot(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.front() == "show" && words.size() == 1) return show(out, err);
    return usage(self, err);
}

}  // namespace boot_commands

const area boot_area = {"boot", "show", boot_commands::run_boot};

}  // namespace bmcsim
