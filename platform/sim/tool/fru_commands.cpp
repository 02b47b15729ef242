// bmcsim fru: the board's FRU image.
#include <ostream>
#include <string>

#include "platform/libfru.h"
#include "platform/sim/fru_store.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace fru_commands {

struct shown_text {
    const char* name;
    char (St_FRUInfo::*text)[FRU_TEXT_SIZE];
};

constexpr shown_text shown_texts[] = {
    {"chassis_part_number", &St_FRUInfo::chassis_part_number},
    {"chassis_serial_number", &St_FRUInfo::chassis_serial_number},
    {"board_manufacturer", &St_FRUInfo::board_manufacturer},
    {"board_product_name", &St_FRUInfo::board_product_name},
    {"board_serial_number", &St_FRUInfo::board_serial_number},
    {"board_part_number", &St_FRUInfo::board_part_number},
    {"product_manufacturer", &St_FRUInfo::product_manufacturer},
    {"product_name", &St_FRUInfo::product_name},
    {"product_part_number", &St_FRUInfo::product_part_number},
    {"product_version", &St_FRUInfo::product_version},
    {"product_serial_number", &St_FRUInfo::product_serial_number},
    {"product_asset_tag", &St_FRUInfo::product_asset_tag},
    {"product_sku", &St_FRUInfo::product_sku},
    {"product_guid", &St_FRUInfo::product_guid},
};

int show(std::ostream& out, std::ostream& err) {
    St_FRUInfo info{};
    int result = ReadFRUInfo(FRU_BOARD_DEVICE, &info);
    if (result != PLT_OK) {
        err << "bmcsim: cannot parse " << platform::fru_image_file(FRU_BOARD_DEVICE) << " ("
            << result << ")\n";
        return exit_failed;
    }
    out << "chassis_type=" << static_cast<unsigned>(info.chassis_type) << '\n'
        << "board_mfg_minutes=" << info.board_mfg_minutes << '\n'
        << "board_id=0x" << std::hex << info.board_id << std::dec << '\n';
    for (const shown_text& each : shown_texts) out << each.name << '=' << info.*each.text << '\n';
    return exit_ok;
}

int write_image(const std::string& bytes, std::ostream& err) {
    if (platform::write_fru_image(FRU_BOARD_DEVICE, bytes)) return exit_ok;
    err << "bmcsim: cannot write " << platform::fru_image_file(FRU_BOARD_DEVICE) << '\n';
    return exit_failed;
}

// Spoils the common header's checksum.
int corrupt(std::ostream& err) {
    std::string bytes;
    if (platform::load_fru_image(FRU_BOARD_DEVICE, bytes) != PLT_OK || bytes.size() < 8) {
        err << "bmcsim: cannot read " << platform::fru_image_file(FRU_BOARD_DEVICE) << '\n';
        return exit_failed;
    }
    bytes[7] = static_cast<char>(bytes[7] ^ 0xFF);
    return write_image(bytes, err);
}

int set_asset_tag(const std::string& tag, std::ostream& err) {
    int result = SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, tag.c_str());
    if (result == PLT_OK) return exit_ok;
    err << "bmcsim: cannot set the asset tag (" << result << ")\n";
    return exit_failed;
}

int run_fru(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out, err);
    if (command == "regenerate" && words.size() == 1)
        return write_image(platform::generated_fru_image(), err);
    if (command == "corrupt" && words.size() == 1) return corrupt(err);
    if (command == "asset-tag" && words.size() == 2) return set_asset_tag(words[1], err);
    return usage(self, err);
}

}  // namespace fru_commands

const area fru_area = {"fru", "show | regenerate | corrupt | asset-tag TEXT",
                       fru_commands::run_fru};

}  // namespace bmcsim
