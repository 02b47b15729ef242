// Where the simulated BMC keeps the files that it shares with the BIOS.
#include <iterator>

#include "platform/libbios.h"

extern "C" const char* BiosSharedFile(int file) {
    static constexpr const char* files[] = {
        "/tmp/attributes.json",        "/tmp/user_save_to_bios.json",
        "/tmp/user_save_to_bios.lock", "/tmp/user_saving_result.json",
        "/tmp/boot_save_to_bios.json", "/nv/bios/bios_setting",
        "/nv/bios/bios_feature_flag",  "/tmp/HII/bios_restore_setting",
        "/tmp/boot_restore_setting",   "/tmp/bios_restore_setting",
    };
    return file >= 0 && file < static_cast<int>(std::size(files)) ? files[file] : nullptr;
}
