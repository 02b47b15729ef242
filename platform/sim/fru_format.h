// FRU images in the IPMI Platform Management FRU Information Storage
// format: common header, internal use area, chassis, board and product info
// areas, multirecord area. Parsed into fields and encoded again with fresh
// lengths, padding and checksums.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sim/fru_text.h"

namespace platform::fru {

// One field as stored: its type/length byte type and its bytes.
struct field {
    uint8_t type = eight_bit;
    std::string data;
};

enum class area_kind { chassis, board, product };

// The fixed fields (chassis 2, board 5, product 7) come first in fields,
// then the custom fields.
std::size_t fixed_field_count(area_kind kind);

struct info_area {
    uint8_t code = 0;          // chassis: chassis type; board, product: language code
    uint32_t mfg_minutes = 0;  // board only: minutes since 1996-01-01
    std::vector<field> fields;
};

struct image {
    std::string internal_use;  // the whole area, kept as it is
    std::optional<info_area> chassis;
    std::optional<info_area> board;
    std::optional<info_area> product;
    std::string multirecord;  // every record, kept as they are

    std::optional<info_area>& area(area_kind kind);
    const std::optional<info_area>& area(area_kind kind) const;
};

// False when the image is truncated, has a bad checksum or version, an area
// or field past its end, or an area without its end-of-fields mark.
bool parse_image(std::string_view bytes, image& parsed);

// False when a field is longer than 63 bytes or an area longer than 2040.
bool encode_image(const image& source, std::string& bytes);

}  // namespace platform::fru
