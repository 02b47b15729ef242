// FRU device images of the simulated BMC, <root>/nv/fru/fru<id>.bin. The
// board's (device 0) is generated on first use when it is missing.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

std::string fru_image_file(uint8_t fru_id);

// The board FRU of a fresh BMC: a two-socket rack server, always the same.
std::string generated_fru_image();

// The image of a FRU device: PLT_OK, PLT_ERR_NOT_FOUND when the device has
// none, PLT_ERR_IO when it cannot be read or generated.
int load_fru_image(uint8_t fru_id, std::string& bytes);

// Replaces a device's image as a whole.
bool write_fru_image(uint8_t fru_id, const std::string& bytes);

}  // namespace platform
