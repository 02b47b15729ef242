// The SMBIOS table of a fresh simulated BMC's host (SMBIOS 3.0 layouts).
#include <string>
#include <vector>

#include "platform/sim/smbios_records.h"
#include "platform/sim/smbios_store.h"

namespace {

namespace smbios = platform::smbios;

// Builds one structure: formatted area field by field, strings numbered
// in the order they are added.
class structure_writer {
public:
    structure_writer(uint8_t type, uint16_t handle) : area_{static_cast<char>(type), 0} {
        word(handle);
    }

    structure_writer& byte(uint8_t value) {
        area_ += static_cast<char>(value);
        return *this;
    }
    structure_writer& word(uint16_t value) { return little_endian(value, 2); }
    structure_writer& dword(uint32_t value) { return little_endian(value, 4); }
    structure_writer& qword(uint64_t value) { return little_endian(value, 8); }

    // An empty text is "no string" (number 0).
    structure_writer& text(const std::string& value) {
        if (value.empty()) return byte(0);
        strings_.push_back(value);
        return byte(static_cast<uint8_t>(strings_.size()));
    }

    std::string finish() const {
        std::string bytes = area_;
        bytes[1] = static_cast<char>(area_.size());
        for (const std::string& each : strings_) bytes += each + '\0';
        bytes += strings_.empty() ? std::string(2, '\0') : std::string(1, '\0');
        return bytes;
    }

private:
    structure_writer& little_endian(uint64_t value, int size) {
        for (int i = 0; i < size; ++i) area_ += static_cast<char>((value >> (8 * i)) & 0xFF);
        return *this;
    }

    std::string area_;
    std::vector<std::string> strings_;
};

constexpr int sockets = 2;
constexpr int slots_per_socket = 8;
constexpr int modules_per_socket = 4;
constexpr uint32_t module_mib = 32 * 1024;
constexpr uint16_t memory_array_handle = 0x1000;
constexpr uint16_t no_error_information = 0xFFFE;
constexpr uint16_t no_cache = 0xFFFF;

std::string bios_structure() {
    return structure_writer(smbios::bios_information, 0x0000)
        .text("Tarnwright")
        .text("2.1.0")
        .word(0xF000)
        .text("06/15/2024")
        .byte(0xFF)
        .qword(0x0000000000010880)
        .byte(0x03)
        .byte(0x0D)
        .byte(2)
        .byte(1)
        .byte(0xFF)
        .byte(0xFF)
        .word(0x0020)
        .finish();
}

std::string system_structure() {
    static constexpr uint8_t uuid[16] = {0x3e, 0x2c, 0x1d, 0x4b, 0x60, 0x5f, 0x7b, 0x4a,
                                         0x8c, 0x9d, 0x0e, 0x1f, 0x2a, 0x3b, 0x4c, 0x5d};
    structure_writer writer(smbios::system_information, 0x0001);
    writer.text("Tarnwright").text("TW-2U-R2400").text("1.0").text("SSN2403010007");
    for (uint8_t byte : uuid) writer.byte(byte);
    return writer.byte(0x06).text("SKU-TW2U-STD").text("Rack Server").finish();
}

std::string processor_structure(int socket) {
    std::string number = std::to_string(socket + 1);
    return structure_writer(smbios::processor_information, static_cast<uint16_t>(0x0040 + socket))
        .text("CPU" + number)
        .byte(0x03)
        .byte(0xFE)
        .text("Example Silicon")
        .qword(0xBFEBFBFF000606A6)
        .text("Example Server Processor 24C @ 2.40GHz")
        .byte(0x8B)
        .word(100)
        .word(4000)
        .word(2400)
        .byte(0x41)
        .byte(0x40)
        .word(no_cache)
        .word(no_cache)
        .word(no_cache)
        .text("CPU-SN-000" + number)
        .text("")
        .text("ESP-24C-240")
        .byte(24)
        .byte(24)
        .byte(48)
        .word(0x00FC)
        .word(0x00B3)
        .word(24)
        .word(24)
        .word(48)
        .finish();
}

std::string memory_array_structure() {
    return structure_writer(smbios::physical_memory_array, memory_array_handle)
        .byte(0x03)
        .byte(0x03)
        .byte(0x06)
        .dword(0x80000000)
        .word(no_error_information)
        .word(sockets * slots_per_socket)
        .qword(0x20000000000)
        .finish();
}

std::string memory_device_structure(int socket, int slot) {
    bool populated = slot < modules_per_socket;
    std::string socket_name = "CPU" + std::to_string(socket + 1);
    std::string channel(1, static_cast<char>('A' + slot));
    std::string absent = populated ? "" : "NO DIMM";
    uint16_t handle = static_cast<uint16_t>(0x1100 + socket * slots_per_socket + slot);
    int serial = socket * slots_per_socket + slot + 1;
    return structure_writer(smbios::memory_device, handle)
        .word(memory_array_handle)
        .word(no_error_information)
        .word(72)
        .word(64)
        .word(populated ? 0x7FFF : 0)
        .byte(0x09)
        .byte(0)
        .text(socket_name + "_DIMM_" + channel + "1")
        .text(socket_name + "_CHANNEL_" + channel)
        .byte(populated ? 0x1A : 0x02)
        .word(populated ? 0x0080 : 0x0004)
        .word(populated ? 3200 : 0)
        .text(populated ? "Example Memory" : absent)
        .text(populated ? "EM" + std::to_string(24030100 + serial) : absent)
        .text("")
        .text(populated ? "EM-32G-3200R" : absent)
        .byte(populated ? 0x02 : 0)
        .dword(populated ? module_mib : 0)
        .word(populated ? 3200 : 0)
        .word(populated ? 1200 : 0)
        .word(populated ? 1200 : 0)
        .word(populated ? 1200 : 0)
        .finish();
}

std::string end_structure() { return structure_writer(smbios::end_of_table, 0xFEFF).finish(); }

}  // namespace

namespace platform {

std::string generated_smbios_table() {
    std::string table = bios_structure() + system_structure();
    for (int socket = 0; socket < sockets; ++socket) table += processor_structure(socket);
    table += memory_array_structure();
    for (int socket = 0; socket < sockets; ++socket)
        for (int slot = 0; slot < slots_per_socket; ++slot)
            table += memory_device_structure(socket, slot);
    return table + end_structure();
}

}  // namespace platform
