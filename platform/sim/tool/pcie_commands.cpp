// bmcsim pcie: the host's PCIe devices.
#include <cstdio>
#include <ostream>
#include <string>

#include "platform/libpcie.h"
#include "platform/sim/pcie_devices.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace pcie_commands {

std::string hex(unsigned value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*x", digits, value);
    return text;
}

std::string link_text(int generation, int lanes) {
    return generation ? "Gen" + std::to_string(generation) + " x" + std::to_string(lanes) : "down";
}

int show(std::ostream& out) {
    for (int i = 0; i < PcieGetDeviceCount(); ++i) {
        St_PcieDevice d{};
        if (PcieGetDevice(i, &d) != PLT_OK) continue;
        out << platform::pcie_kind_prefix(d.kind) << int(d.number) << ": "
            << (d.bay ? "bay " + std::to_string(d.bay) : "slot " + std::to_string(d.slot)) << " | "
            << hex(d.vendor_id, 4) << ':' << hex(d.device_id, 4) << " subsystem "
            << hex(d.subsystem_vendor_id, 4) << ':' << hex(d.subsystem_id, 4) << " | class "
            << hex(d.class_code, 6) << " | link " << link_text(d.generation, d.lanes) << " of "
            << link_text(d.max_generation, d.max_lanes) << " | functions " << int(d.function_count)
            << " | firmware " << d.firmware_version << " | serial " << d.serial_number << '\n';
    }
    return exit_ok;
}

int answer(platform::pcie_change result, const area& self, std::ostream& err) {
    switch (result) {
        case platform::pcie_change::done:
            return exit_ok;
        case platform::pcie_change::bad_argument:
            return usage(self, err);
        case platform::pcie_change::place_taken:
            err << "bmcsim: that place is taken\n";
            break;
        case platform::pcie_change::full:
            err << "bmcsim: no room for another device\n";
            break;
        case platform::pcie_change::not_found:
            err << "bmcsim: no such stored device\n";
            break;
        case platform::pcie_change::io_error:
            err << "bmcsim: cannot write " << platform::pcie_devices_file() << '\n';
            break;
    }
    return exit_failed;
}

// "add GPU|NVMeSSD|PCIeSSD SLOT|BAY SERIAL": prints the new device's name.
int add(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const int kind = platform::pcie_kind_of(words[1]);
    long long place = 0;
    if (kind <= PCIE_KIND_NIC || !parse_number(words[2], 1, 255, place)) return usage(self, err);
    std::string name;
    const int status =
        answer(platform::add_pcie_device(kind, static_cast<int>(place), words[3], name), self, err);
    if (status == exit_ok) out << name << '\n';
    return status;
}

// "link NAME GEN LANES" or "link NAME down".
int link(const area& self, const arguments& words, std::ostream& err) {
    long long generation = 0;
    long long lanes = 0;
    const bool down = words.size() == 3 && words[2] == "down";
    if (!down && (words.size() != 4 || !parse_number(words[2], 1, 9, generation) ||
                  !parse_number(words[3], 1, 32, lanes)))
        return usage(self, err);
    return answer(
        platform::set_pcie_link(words[1], static_cast<int>(generation), static_cast<int>(lanes)),
        self, err);
}

int run_pcie(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "add" && words.size() == 4) return add(self, words, out, err);
    if (command == "remove" && words.size() == 2)
        return answer(platform::remove_pcie_device(words[1]), self, err);
    if (command == "link" && words.size() >= 3) return link(self, words, err);
    return usage(self, err);
}

}  // namespace pcie_commands

const area pcie_area = {
    "pcie",
    "show | add GPU|NVMeSSD|PCIeSSD SLOT|BAY SERIAL | remove NAME | link NAME GEN LANES|down",
    pcie_commands::run_pcie};

}  // namespace bmcsim
