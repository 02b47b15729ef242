// bmcsim smbios: the host's SMBIOS table.
#include <ostream>
#include <string>

#include "platform/libsmbios.h"
#include "platform/sim/memory_modules.h"
#include "platform/sim/smbios_store.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace smbios_commands {

const char* or_dash(const char* text) { return text ? text : "-"; }

void show_system(const St_SMBiosData& data, std::ostream& out) {
    for (int i = 0; i < data.type1_count; ++i) {
        const St_SMBiosType1& system = data.type1[i];
        out << "system: " << or_dash(system.manufacturer) << " | " << or_dash(system.product_name)
            << " | " << or_dash(system.serial_number) << " | " << or_dash(system.sku_number)
            << " | " << system.uuid_text << '\n';
    }
}

void show_processors(const St_SMBiosData& data, std::ostream& out) {
    for (int i = 0; i < data.type4_count; ++i) {
        const St_SMBiosType4& processor = data.type4[i];
        out << "processor: " << or_dash(processor.socket_designation) << " | "
            << or_dash(processor.version) << " | " << processor.core_count << " cores | "
            << processor.thread_count << " threads | " << processor.max_speed_mhz << " MHz\n";
    }
}

void show_memory(const St_SMBiosData& data, std::ostream& out) {
    for (int i = 0; i < data.type17_count; ++i) {
        const St_SMBiosType17& device = data.type17[i];
        out << "memory: " << or_dash(device.device_locator) << " | " << device.size_mib << " MiB | "
            << device.speed_mts << " MT/s | " << or_dash(device.part_number) << '\n';
    }
}

int show(std::ostream& out, std::ostream& err) {
    St_SMBiosData data{};
    int result = GetType1List(&data);
    result = result == PLT_OK ? GetType4List(&data) : result;
    result = result == PLT_OK ? GetType17List(&data) : result;
    if (result == PLT_OK) {
        show_system(data, out);
        show_processors(data, out);
        show_memory(data, out);
    } else {
        err << "bmcsim: cannot parse " << platform::smbios_table_file() << " (" << result << ")\n";
    }
    FreeSMBiosData(&data);
    return result == PLT_OK ? exit_ok : exit_failed;
}

int write_table(const std::string& table, std::ostream& err) {
    if (platform::write_smbios_table(table)) return exit_ok;
    err << "bmcsim: cannot write " << platform::smbios_table_file() << '\n';
    return exit_failed;
}

// Cuts the table in half: the end-of-table structure is lost.
int corrupt(std::ostream& err) {
    std::string table;
    if (platform::load_smbios_table(table) != PLT_OK) {
        err << "bmcsim: cannot read " << platform::smbios_table_file() << '\n';
        return exit_failed;
    }
    return write_table(table.substr(0, table.size() / 2), err);
}

int remove_dimm(const std::string& device_locator, std::ostream& err) {
    switch (platform::remove_memory_module(device_locator)) {
        case platform::module_removal::removed:
            return exit_ok;
        case platform::module_removal::no_such_module:
            err << "bmcsim: no memory module in slot " << device_locator << '\n';
            return exit_failed;
        case platform::module_removal::table_unreadable:
            err << "bmcsim: cannot parse " << platform::smbios_table_file() << '\n';
            return exit_failed;
        case platform::module_removal::not_stored:
            break;
    }
    err << "bmcsim: cannot write " << platform::smbios_table_file() << '\n';
    return exit_failed;
}

int run_smbios(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "remove-dimm" && words.size() == 2) return remove_dimm(words[1], err);
    if (words.size() != 1) return usage(self, err);
    if (command == "show") return show(out, err);
    if (command == "regenerate") return write_table(platform::generated_smbios_table(), err);
    if (command == "corrupt") return corrupt(err);
    return usage(self, err);
}

}  // namespace smbios_commands

const area smbios_area = {"smbios", "show | regenerate | corrupt | remove-dimm LOCATOR",
                          smbios_commands::run_smbios};

}  // namespace bmcsim
