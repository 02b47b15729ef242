#include "platform/sim/smbios_records.h"

#include <cstdio>

namespace platform::smbios {
namespace {

constexpr std::size_t uuid_offset = 0x08;

// SMBIOS 2.6 and later store the UUID's first three fields little-endian.
void format_uuid(const uint8_t (&uuid)[16], char (&text)[37]) {
    bool all_zero = true;
    bool all_ones = true;
    for (uint8_t byte : uuid) {
        all_zero = all_zero && byte == 0x00;
        all_ones = all_ones && byte == 0xFF;
    }
    text[0] = '\0';
    if (all_zero || all_ones) return;
    std::snprintf(text, sizeof text,
                  "%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x", uuid[3],
                  uuid[2], uuid[1], uuid[0], uuid[5], uuid[4], uuid[7], uuid[6], uuid[8], uuid[9],
                  uuid[10], uuid[11], uuid[12], uuid[13], uuid[14], uuid[15]);
}

// A count whose 8-bit field reads 0xFF when the 16-bit field holds it.
uint16_t count(const structure& processor, std::size_t short_offset, std::size_t long_offset) {
    uint8_t value = processor.byte(short_offset);
    return value == 0xFF && processor.formatted.size() >= long_offset + 2
               ? processor.word(long_offset)
               : value;
}

uint32_t module_size_mib(const structure& device) {
    uint16_t size = device.word(0x0C);
    if (size == 0xFFFF) return SMBIOS_MEMORY_SIZE_UNKNOWN;
    if (size == 0x7FFF)
        return device.formatted.size() >= 0x20 ? device.dword(0x1C) & 0x7FFFFFFF
                                               : SMBIOS_MEMORY_SIZE_UNKNOWN;
    return size & 0x8000 ? (size & 0x7FFF) / 1024u : size;
}

// A speed whose 16-bit field reads 0xFFFF when the 32-bit field holds it.
uint32_t speed(const structure& device, std::size_t short_offset, std::size_t long_offset) {
    uint16_t value = device.word(short_offset);
    return value == 0xFFFF ? device.dword(long_offset) : value;
}

}  // namespace

const char* bios_version(const structure& bios) { return bios.text(0x05); }

St_SMBiosType1 decode_system(const structure& system) {
    St_SMBiosType1 record{};
    record.handle = system.handle;
    record.manufacturer = system.text(0x04);
    record.product_name = system.text(0x05);
    record.version = system.text(0x06);
    record.serial_number = system.text(0x07);
    if (system.formatted.size() >= uuid_offset + sizeof record.uuid) {
        for (std::size_t i = 0; i < sizeof record.uuid; ++i)
            record.uuid[i] = system.byte(uuid_offset + i);
        format_uuid(record.uuid, record.uuid_text);
    }
    record.wake_up_type = system.byte(0x18);
    record.sku_number = system.text(0x19);
    record.family = system.text(0x1A);
    return record;
}

St_SMBiosType4 decode_processor(const structure& processor) {
    St_SMBiosType4 record{};
    record.handle = processor.handle;
    record.socket_designation = processor.text(0x04);
    record.processor_type = processor.byte(0x05);
    record.processor_family =
        processor.byte(0x06) == 0xFE ? processor.word(0x28) : processor.byte(0x06);
    record.manufacturer = processor.text(0x07);
    record.processor_id = processor.qword(0x08);
    record.version = processor.text(0x10);
    record.max_speed_mhz = processor.word(0x14);
    record.current_speed_mhz = processor.word(0x16);
    record.status = processor.byte(0x18);
    record.serial_number = processor.text(0x20);
    record.asset_tag = processor.text(0x21);
    record.part_number = processor.text(0x22);
    record.core_count = count(processor, 0x23, 0x2A);
    record.core_enabled = count(processor, 0x24, 0x2C);
    record.thread_count = count(processor, 0x25, 0x2E);
    return record;
}

St_SMBiosType17 decode_memory_device(const structure& device) {
    St_SMBiosType17 record{};
    record.handle = device.handle;
    record.array_handle = device.word(0x04);
    record.total_width_bits = device.word(0x08);
    record.data_width_bits = device.word(0x0A);
    record.size_mib = module_size_mib(device);
    record.form_factor = device.byte(0x0E);
    record.device_locator = device.text(0x10);
    record.bank_locator = device.text(0x11);
    record.memory_type = device.byte(0x12);
    record.speed_mts = speed(device, 0x15, 0x54);
    record.manufacturer = device.text(0x17);
    record.serial_number = device.text(0x18);
    record.asset_tag = device.text(0x19);
    record.part_number = device.text(0x1A);
    record.rank = device.byte(0x1B) & 0x0F;
    record.configured_speed_mts = speed(device, 0x20, 0x58);
    return record;
}

}  // namespace platform::smbios
