// The board FRU of a fresh simulated BMC.
#include <string>

#include "platform/sim/fru_format.h"
#include "platform/sim/fru_store.h"

namespace {

using platform::fru::field;

constexpr uint8_t rack_mount_chassis = 0x17;
constexpr uint8_t english = 25;
constexpr uint32_t made_2024_03_01 = 14813280;   // minutes since 1996-01-01
constexpr char board_id_bytes[] = {0x5C, 0x0A};  // 0x0A5C, least significant byte first

field text(const char* value) { return {platform::fru::eight_bit, value}; }

// One OEM record (type 0xC0, last of the list) with its two checksums.
std::string oem_record(const std::string& data) {
    unsigned data_sum = 0;
    for (char c : data) data_sum += static_cast<uint8_t>(c);
    std::string record{'\xC0', '\x82', static_cast<char>(data.size()),
                       static_cast<char>(-data_sum & 0xFF)};
    unsigned header_sum = 0;
    for (char c : record) header_sum += static_cast<uint8_t>(c);
    record += static_cast<char>(-header_sum & 0xFF);
    return record + data;
}

platform::fru::image board_image() {
    platform::fru::image image;
    image.internal_use = std::string(
        "\x01"
        "SIMBMC\0",
        8);
    image.chassis = {rack_mount_chassis, 0, {text("CH-2U-0412"), text("TWC2U2403010001")}};
    image.board = {english,
                   made_2024_03_01,
                   {text("Tarnwright"),
                    text("TW-MB-X12D"),
                    text("BSN2403010042"),
                    text("MB-X12D-0001"),
                    text("fru-1.0"),
                    {platform::fru::binary, std::string(board_id_bytes, sizeof board_id_bytes)}}};
    image.product = {english,
                     0,
                     {text("Tarnwright"), text("TW-2U-R2400"), text("TW-2U-R2400-A1"), text("1.0"),
                      text("SSN2403010007"), text(""), text("fru-1.0"), text("SKU-TW2U-STD"),
                      text("4b1d2c3e-5f60-4a7b-8c9d-0e1f2a3b4c5d")}};
    image.multirecord =
        oem_record(std::string("\x00\xA0\xB0"
                               "SIM-BMC",
                               10));
    return image;
}

}  // namespace

namespace platform {

std::string generated_fru_image() {
    std::string bytes;
    fru::encode_image(board_image(), bytes);
    return bytes;
}

}  // namespace platform
