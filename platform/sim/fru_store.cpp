#include "platform/sim/fru_store.h"

#include <cerrno>

#include "base/bmc_root.h"
#include "platform/libfru.h"
#include "platform/sim/generated_file.h"
#include "platform/sim/sim_file.h"

namespace platform {

std::string fru_image_file(uint8_t fru_id) {
    return bmc_path("/nv/fru/fru" + std::to_string(fru_id) + ".bin");
}

int load_fru_image(uint8_t fru_id, std::string& bytes) {
    std::string path = fru_image_file(fru_id);
    if (fru_id == FRU_BOARD_DEVICE) return sim::read_or_generate(path, generated_fru_image, bytes);
    if (sim::read_file(path, bytes)) return PLT_OK;
    return errno == ENOENT ? PLT_ERR_NOT_FOUND : PLT_ERR_IO;
}

bool write_fru_image(uint8_t fru_id, const std::string& bytes) {
    return sim::replace_file(fru_image_file(fru_id), bytes, 0644);
}

}  // namespace platform
